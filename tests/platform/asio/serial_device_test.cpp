#include <doctest/doctest.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "platform/asio/serial_device.h"
#include "platform/pseudo_terminal.h"
#include "platform/temporary_directory.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

struct SerialFixture {
  AsioLoop loop;
  PseudoTerminal box;
  std::unique_ptr<Connection> line;
  std::string received;
  std::optional<ConnectionEnd> end;

  void open(const std::string& device) {
    line = open_serial_device(loop, device);
    line->on_bytes = [this](std::string_view bytes) { received += bytes; };
    line->on_end = [this](ConnectionEnd reason) { end = reason; };
  }
};

}  // namespace

TEST_CASE_FIXTURE(SerialFixture, "A serial line carries every byte both ways, as it is") {
  open(box.device());
  CHECK(line->peer() == box.device());
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  box.write(all);
  REQUIRE(wait_until(loop, [&] { return received.size() == all.size(); }));
  CHECK(received == all);

  line->send(all);
  std::string got;
  REQUIRE(wait_until(loop, [&] {
    got += box.read();
    return got.size() >= all.size();
  }));
  CHECK(got == all);
}

TEST_CASE_FIXTURE(SerialFixture, "A serial line is found through a link, and belongs to one") {
  const TemporaryDirectory directory;
  const std::filesystem::path link = directory.path() / "box";
  std::filesystem::create_symlink(box.device(), link);
  open(link);
  // Whom the terminal itself keeps out depends on the account; the lock keeps out everybody.
  const std::string why =
      ::geteuid() == 0 ? "Resource temporarily unavailable" : "Device or resource busy";
  CHECK_THROWS_WITH(open_serial_device(loop, box.device()),
                    ("Can't open " + box.device() + ": " + why).c_str());
  line.reset();
  open(box.device());
  box.write("again");
  CHECK(wait_until(loop, [&] { return received == "again"; }));
}

TEST_CASE_FIXTURE(SerialFixture, "A serial line whose other end goes has ended") {
  open(box.device());
  box.hang_up();
  REQUIRE(wait_until(loop, [&] { return end.has_value(); }));
  CHECK(*end == ConnectionEnd::Gone);
}

TEST_CASE_FIXTURE(SerialFixture, "What is queued for a serial line goes out before it is closed") {
  open(box.device());
  line->send("N05");
  line->close_when_sent();
  line.reset();
  std::string got;
  CHECK(wait_until(loop, [&] {
    got += box.read();
    return got == "N05";
  }));
}

TEST_CASE("What is no serial port is refused in a sentence") {
  AsioLoop loop;
  CHECK_THROWS_WITH(open_serial_device(loop, "/dev/none"),
                    "Can't open /dev/none: No such file or directory");
  CHECK_THROWS_WITH(open_serial_device(loop, "/dev/null"),
                    "Can't open /dev/null: it is no serial port");
}

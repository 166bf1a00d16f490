#include "wire/frame_trace.h"

#include <doctest/doctest.h>

#include <array>

#include "support/bytes.h"

namespace lineweir::test {
namespace {

const ServerPacket traced_command{4, 5, 1, 0, 255, 9, {1, 44}, "N\xFF"};

TEST_SUITE("wire/frame_trace") {
  TEST_CASE("the whole frame, each field in decimal, the buffer and an empty line") {
    CHECK(frame_trace("whole", traced_command) ==
          std::vector<std::string>{"whole", "CMD 4", "LineNo 5", "GroupNo 1", "AltInfo 0",
                                   "Console 255", "Bank 9", "Size 1 44", "Buffer N\xFF", ""});
  }

  TEST_CASE("a received frame has three tabs in front of each line") {
    CHECK(received_frame_trace("body", traced_command) ==
          std::vector<std::string>{"\t\t\tbody", "\t\t\tCMD 4", "\t\t\tLineNo 5", "\t\t\tGroupNo 1",
                                   "\t\t\tAltInfo 0", "\t\t\tConsole 255", "\t\t\tBank 9",
                                   "\t\t\tSize 1 44", "\t\t\tBuffer N\xFF", ""});
  }

  TEST_CASE("a login's password is told by its length alone") {
    for (const std::uint8_t login : std::to_array<std::uint8_t>({1, 21, 24, 25})) {
      CAPTURE(login);
      // A buffer of one byte's length and one of two.
      for (const std::string& name : {std::string("<name"), std::string(300, 'n')}) {
        ServerPacket packet = traced_command;
        packet.CMD = login;
        packet.set_buffer(login_buffer(name, "<\x9b\x9c\x9d"));
        const std::string whole = "head" + packet.Buffer + "\xFFtail";
        packet.Buffer += '\xFF';
        const auto trace = frame_trace(whole, packet);
        CHECK(trace[0] == "head" + name + "\3(3 characters)\xFFtail");
        CHECK(trace[8] == "Buffer " + name + "\3(3 characters)\xFF");
      }
    }
    ServerPacket other = traced_command;
    other.set_buffer("a\3b");
    CHECK(frame_trace("a\3b", other)[0] == "a\3b");
  }
}

}  // namespace
}  // namespace lineweir::test

#include <doctest/doctest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "serial_client.h"
#include "studio_process.h"
#include "temporary_folder.h"

namespace fs = std::filesystem;

namespace {

std::string content(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The transcript without its times.
std::string next_record(StudioProcess& studio) {
  const auto line = studio.line();
  return line ? line->substr(std::min(line->find(' ') + 1, line->size())) : "nothing";
}

}  // namespace

TEST_CASE("the program names its device, answers on it and logs what passes") {
  StudioProcess studio({"--call-every", "0", "--log", "-"});
  const std::string device = studio.device();
  CHECK(device.starts_with("/dev/"));
  SerialClient console(device);
  console.send("M");
  CHECK(console.receive(15) == "Line monitor ON");
  console.send("Q05");
  CHECK(console.receive(3) == "F05");
  console.send("N05Q05");
  CHECK(console.receive(6) == "N05N05");
  for (const char* record : {"word M", "text Line monitor ON", "word Q05", "item F05", "word N05",
                             "item N05", "word Q05", "item N05"}) {
    CHECK(next_record(studio) == record);
  }
}

TEST_CASE("items leave the program no faster than the serial line") {
  StudioProcess studio({"--call-every", "0"});
  SerialClient console(studio.device());
  const auto start = std::chrono::steady_clock::now();
  console.send("Q00Q01Q02Q03Q04Q05Q06Q07Q08Q09");
  CHECK(console.receive(30) == "F00F01F02F03F04F05F06F07F08F09");
  CHECK(std::chrono::steady_clock::now() - start >= std::chrono::milliseconds(249));
}

TEST_CASE("the box stays up when the console goes and comes back") {
  StudioProcess studio({"--call-every", "0"});
  const std::string device = studio.device();
  SerialClient(device).send("N03");
  SerialClient console(device);
  console.send("MQ03");
  CHECK(console.receive_until("Line monitor ONN03").ends_with("Line monitor ONN03"));
}

TEST_CASE("a request to end removes the link and leaves a whole log") {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const TemporaryFolder folder;
    StudioProcess studio(
        {"--call-every", "0", "--link", folder.path("box"), "--log", folder.path("log")});
    const std::string device = studio.device();
    CHECK(fs::read_symlink(folder.path("box")) == device);
    SerialClient console(folder.path("box"));
    console.send("N07");
    CHECK(console.receive(3) == "N07");
    studio.signal(signal);
    CHECK(studio.wait() == 0);
    CHECK_FALSE(fs::is_symlink(folder.path("box")));
    CHECK(content(folder.path("log")).find(" item N07\n") != std::string::npos);
  }
}

TEST_CASE("a script runs to its end, and two runs give the same transcript") {
  const TemporaryFolder folder;
  std::ofstream(folder.path("show.txt")) << "0 call 3\n0.01 word P03\n0.02 call 4\n0.05 quit\n";
  for (const char* log : {"first", "second"}) {
    StudioProcess studio({"--script", folder.path("show.txt"), "--log", folder.path(log)});
    CHECK(studio.wait() == 0);
  }
  CHECK(content(folder.path("first")) ==
        "0.000 call 3\n0.000 item R03\n0.010 seat P03\n0.010 item P03\n"
        "0.020 call 4\n0.020 item R04\n0.050 quit\n");
  CHECK(content(folder.path("second")) == content(folder.path("first")));
}

TEST_CASE("the program ends after its duration, with nobody ever reading") {
  StudioProcess studio({"--auto", "--call-every", "0.001", "--duration", "0.3"});
  CHECK(studio.wait() == 0);
}

TEST_CASE("what stands in the way of the link is told and kept") {
  const TemporaryFolder folder;
  std::ofstream(folder.path("box")) << "kept";
  StudioProcess studio({"--link", folder.path("box")});
  CHECK(studio.wait() == 1);
  CHECK(content(folder.path("box")) == "kept");
}

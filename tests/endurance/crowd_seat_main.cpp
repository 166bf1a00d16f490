// One of many seats at a server on this machine, by TLS:
//
//   endurance_seat PORT FINGERPRINT USER GROUP screener|host|nobody SEED < PASSWORD-AND-WORDS
//
// The first line of the input is the password. Each further one is "rest" or "work", as whoever
// sits there is to do, or "tell", which prints a line of JSON: whether the seat is in, and its
// rows. It ends with its input.

#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "endurance/crowd_seat.h"

namespace {

using lineweir::endurance::CrowdSeat;

// A line of the standard input, which is read behind no buffer; false at its end.
bool read_line(std::string& line) {
  line.clear();
  for (char letter = 0;;) {
    if (::read(STDIN_FILENO, &letter, 1) != 1) return false;
    if (letter == '\n') return true;
    line += letter;
  }
}

CrowdSeat::Work work_of(const std::string& name) {
  if (name == "screener") return CrowdSeat::Work::Screen;
  return name == "host" ? CrowdSeat::Work::Host : CrowdSeat::Work::None;
}

void tell(CrowdSeat& seat) {
  std::printf("%s\n", nlohmann::json{{"in", seat.is_in()}, {"rows", seat.rows()}}.dump().c_str());
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char* argv[]) {
  using namespace lineweir;
  if (argc != 7) {
    std::fputs("usage: endurance_seat PORT FINGERPRINT USER GROUP screener|host|nobody SEED\n",
               stderr);
    return 2;
  }
  QCoreApplication application(argc, argv);
  platform::QtEventLoop loop;
  std::string line;
  read_line(line);
  CrowdSeat seat(loop, {.login = {"tls:127.0.0.1", std::atoi(argv[1]), argv[3], line},
                        .fingerprint = argv[2],
                        .group = std::atoi(argv[4]),
                        .work = work_of(argv[5]),
                        .seed = static_cast<std::uint64_t>(std::atoi(argv[6]))});
  bool goes_on = true;
  const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, [&] {
    goes_on = read_line(line);
    if (line == "rest") seat.rest();
    if (line == "work") seat.work();
    if (line == "tell") tell(seat);
  });
  while (goes_on) loop.yield();
  return 0;
}

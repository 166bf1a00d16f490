// A console at work in the folder in which it is started, to be killed:
//
//   endurance_console SEED FIRST-NUMBER [end]
//
// With "end" it does nothing but what an earlier run has left to do, and ends.

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "endurance/kill_work.h"

int main(int argc, char* argv[]) {
  using namespace lineweir;
  if (argc < 3) {
    std::fputs("usage: endurance_console SEED FIRST-NUMBER [end]\n", stderr);
    return 2;
  }
  QCoreApplication application(argc, argv);
  endurance::WorkedConsole desk;
  endurance::KillWork work(desk, static_cast<std::uint32_t>(std::atoi(argv[1])),
                           std::atoi(argv[2]));
  work.tell_found();
  if (argc > 3 && std::string_view(argv[3]) == "end") {
    work.let_wait_end();
    return 0;
  }
  work.work();
}

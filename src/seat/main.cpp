#include <QCoreApplication>
#include <iostream>

#include "core/console.h"
#include "platform/process/memory_dump.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "seat/options.h"
#include "seat/seat_work.h"

int main(int argc, char* argv[]) {
  using namespace lineweir;
  platform::keep_memory_out_of_dumps();
  int status = 0;
  const auto options = seat::parse_options(argc, argv, std::cin, std::cout, std::cerr, status);
  if (!options) return status;
  QCoreApplication application(argc, argv);
  platform::QtEventLoop loop;
  platform::QtClientSocket socket(loop);
  platform::QtSystemClock clock;
  // Nothing is kept on disk, and nothing is heard.
  platform::ScriptedPlatform workstation;
  Console console(platform::services_with(workstation.services(),
                                          {.loop = &loop, .clock = &clock, .winsock1 = &socket}));
  seat::SeatWork work(console, loop, *options);
  while (!work.is_refused()) loop.yield();
  std::cerr << "the server refuses the user \"" + options->login.user + "\" with this password\n";
  return 1;
}

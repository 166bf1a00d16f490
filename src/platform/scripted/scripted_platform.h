#pragma once

#include "platform/scripted/memory_databases.h"
#include "platform/scripted/memory_files.h"
#include "platform/scripted/scripted_client_socket.h"
#include "platform/scripted/scripted_dialogs.h"
#include "platform/scripted/scripted_random_numbers.h"
#include "platform/scripted/scripted_remote_objects.h"
#include "platform/scripted/scripted_serial_port.h"
#include "platform/scripted/scripted_system_clock.h"
#include "platform/scripted/scripted_table_printer.h"
#include "platform/scripted/virtual_event_loop.h"
#include "platform/services.h"

namespace lineweir::platform {

// A workstation with nothing real in it. Several consoles may run on it one after the other.
struct ScriptedPlatform {
  VirtualEventLoop loop;
  ScriptedSystemClock clock{loop};
  ScriptedRandomNumbers random;
  MemoryFiles files;
  ScriptedDialogs dialogs;
  MemoryDatabases databases;
  ScriptedTablePrinter printer;
  ScriptedSerialPort comm1{loop};
  ScriptedSerialPort comm2{loop, 2};
  ScriptedClientSocket winsock1{loop};
  ScriptedRemoteObjects remote_objects{loop};
  // Set when the console has ended the program.
  bool ended = false;

  // All services, with the files and databases of this workstation or with others.
  Services services() { return services(files, databases); }
  Services services(Files& other_files, DatabaseEngine& other_databases) {
    return {
        loop,  clock, random,   other_files,    dialogs,        other_databases,         printer,
        comm1, comm2, winsock1, remote_objects, process_number, [this] { ended = true; }};
  }

  // The console has gone: ports and connections are as before a program's start.
  void restart() {
    comm1.restart();
    comm2.restart();
    winsock1.restart();
    remote_objects.restart();
    random.restart();
    ended = false;
  }

  static constexpr int process_number = 4711;
};

}  // namespace lineweir::platform

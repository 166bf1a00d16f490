#pragma once

#include <memory>

#include "letters/code_page_letters.h"
#include "platform/journal/loop_call_journal.h"
#include "platform/scripted/failing_databases.h"
#include "platform/scripted/memory_databases.h"
#include "platform/scripted/memory_files.h"
#include "platform/scripted/scripted_attention_sound.h"
#include "platform/scripted/scripted_client_socket.h"
#include "platform/scripted/scripted_dialogs.h"
#include "platform/scripted/scripted_random_numbers.h"
#include "platform/scripted/scripted_remote_objects.h"
#include "platform/scripted/scripted_serial_port.h"
#include "platform/scripted/scripted_system_clock.h"
#include "platform/scripted/scripted_table_printer.h"
#include "platform/scripted/scripted_user_files.h"
#include "platform/scripted/virtual_event_loop.h"
#include "platform/services.h"

namespace lineweir::platform {

// A workstation with nothing real in it. Several consoles may run on it one after the other.
struct ScriptedPlatform {
  ScriptedPlatform();
  // With letters of that set.
  explicit ScriptedPlatform(const CodePage& page, const Transliterator* transliterator = nullptr);
  // One of several workstations that have the same time; the loop outlives them.
  explicit ScriptedPlatform(VirtualEventLoop& shared_loop);
  ~ScriptedPlatform();

 private:
  std::unique_ptr<VirtualEventLoop> own_loop_;

 public:
  VirtualEventLoop& loop;
  ScriptedSystemClock clock{loop};
  ScriptedRandomNumbers random;
  MemoryFiles files;
  ScriptedDialogs dialogs;
  MemoryDatabases databases;
  // What the console sees of them, or of other databases.
  FailingDatabases failing_databases{databases};
  ScriptedUserFiles user_files{files, failing_databases};
  LoopCallJournal journal{loop, failing_databases};
  ScriptedTablePrinter printer;
  ScriptedAttentionSound attention_sound;
  CodePageLetters letters;
  ScriptedSerialPort comm1{loop};
  ScriptedSerialPort comm2{loop, 2};
  ScriptedClientSocket winsock1{loop};
  ScriptedRemoteObjects remote_objects{loop};
  // What the console has in their place, if anything.
  RemoteObjects* other_remote_objects = nullptr;
  // Set when the console has ended the program.
  bool ended = false;

  // All services, with the files, databases and letters of this workstation or with others.
  Services services();
  Services services(StreamedFiles& other_files, DatabaseEngine& other_databases);
  Services services(StreamedFiles& other_files, DatabaseEngine& other_databases,
                    const Letters& other_letters);

  // The console has gone: ports and connections are as before a program's start.
  void restart();

  static constexpr int process_number = 4711;
};

}  // namespace lineweir::platform

#pragma once

#include <functional>

#include "letters/letters.h"
#include "platform/attention_sound.h"
#include "platform/call_journal.h"
#include "platform/client_socket.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/random_numbers.h"
#include "platform/remote_objects.h"
#include "platform/serial_port.h"
#include "platform/system_clock.h"
#include "platform/table_printer.h"
#include "platform/user_files.h"

namespace lineweir::platform {

// All that a console uses of the world. Each service outlives the console.
struct Services {
  EventLoop& loop;
  SystemClock& clock;
  RandomNumbers& random;
  Files& files;
  UserFiles& user_files;
  Dialogs& dialogs;
  DatabaseEngine& databases;
  CallJournal& journal;
  TablePrinter& printer;
  AttentionSound& attention_sound;
  // Those of the console's texts.
  const Letters& letters;
  // 1200 bits per second.
  SerialPort& comm1;
  // 9600 bits per second.
  SerialPort& comm2;
  ClientSocket& winsock1;
  RemoteObjects& remote_objects;
  // A number that no other process of the workstation has at the same time.
  int process_number = 0;
  // Ends the program once the handlers now running have returned.
  std::function<void()> end_program;
};

}  // namespace lineweir::platform

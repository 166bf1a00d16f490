#pragma once

#include <array>
#include <memory>
#include <string>

#include "server/caller_data.h"
#include "server/context.h"
#include "server/group_lines.h"
#include "server/known_callers.h"
#include "server/next_call.h"
#include "server/relay.h"
#include "server/server_options.h"

namespace lineweir::server {

// A studio group: its lines, who sits at them, and what all of these are told.
class Group {
 public:
  Group(const Context& context, GroupOptions options, std::unique_ptr<exchange::Exchange> exchange,
        const platform::GroupMemory* memory);
  Group(const Group&) = delete;
  Group& operator=(const Group&) = delete;

  const GroupOptions& options() const { return options_; }
  int number() const { return options_.number; }
  // Names, missing lines and what there is to work with; all seats are told. The number of lines,
  // the kind and the exchange stay as they are while the server runs.
  void change(const GroupOptions& options);
  // The configuration doesn't have it any more, and no seat is in it: its calls are over.
  void end();
  // What a group of this number begins with the next time.
  platform::GroupMemory memory() const;
  // The message and the texts of a backup, for all seats.
  void take_restored(const platform::GroupMemory& memory);
  // What persons are told while the exchange can't be reached, in UTF-8.
  std::string exchange_is_away() const;
  // The exchange has told all its letters: what is remembered of lines that are free is over.
  void letters_known();

  GroupLines& lines() { return lines_; }
  const GroupLines& lines() const { return lines_; }
  CallerData& caller_data() { return caller_data_; }
  const CallerData& caller_data() const { return caller_data_; }
  KnownCallers& known_callers() { return known_callers_; }
  NextCall& next_call() { return next_call_; }
  const Relay& seats() const { return relay_; }

  // The seat is told what the group has that it doesn't ask for, but for what hangs on the letters
  // of the lines.
  void join(Seat& seat);
  void leave(Seat& seat) { relay_.leave(seat); }
  // The caller data of all lines and the next call: for one who has the letters.
  void tell_callers(Seat& seat) const;

  // Passed on to all seats, the sender among them. False for a text that is none.
  bool take_message(std::string_view buffer);
  // A sentence of the server's or an administrator's, in UTF-8, for everybody.
  void tell_persons(const std::string& text) const;
  // The last event, the next one, and its name, in UTF-8.
  void set_show_times(const std::array<std::string, 3>& times);
  const std::array<std::string, 3>& show_times_texts() const { return show_times_; }
  void choose_next(Seat& seat, int line);

  // The answers to what a seat asks.
  ServerPacket studio_status() const;
  ServerPacket times() const;
  ServerPacket line_numbers() const;
  ServerPacket phone_kind() const;
  ServerPacket phone_names() const;

 private:
  void forget_line(int line);
  // What is remembered and wasn't found on its line is over, and so is its choice as the next call.
  void close_forgotten();
  void remember() const;
  std::string in_letters(const std::string& utf8) const;
  ServerPacket show_times() const;
  ServerPacket packet(ServerCommand command, std::string buffer) const;

  const Context& context_;
  GroupOptions options_;
  Relay relay_;
  GroupLines lines_;
  NextCall next_call_;
  CallerData caller_data_;
  KnownCallers known_callers_;
  // As it is passed on; empty where there was none.
  std::string message_;
  std::array<std::string, 3> show_times_;
};

}  // namespace lineweir::server

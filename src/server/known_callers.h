#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "server/context.h"
#include "server/group_lines.h"
#include "server/relay.h"
#include "server/server_options.h"
#include "wire/caller_known.h"

namespace lineweir::server {

// What the caller memory knows of the callers on a group's lines, and tells all seats.
class KnownCallers {
 public:
  KnownCallers(const Context& context, const GroupOptions& options, Relay& relay,
               const GroupLines& lines);

  // The line has another caller or none, or the caller another number; both are in the consoles'
  // letters.
  void look_up(int line, const std::string& told_number);
  // What is noted of a caller has changed.
  void flag_changed(const std::string& key);
  // Another call of this caller has ended.
  void history_changed(const std::string& key);

  // What it knows of each line.
  void tell_all_lines(Seat& seat) const;
  // What is known of a number that somebody has typed, for that seat alone. Of a seat that asks
  // faster than the store answers only the last question is answered, so that it holds up nobody.
  void answer(Seat& seat, const std::string& number);
  // What couldn't be read is asked for again.
  void store_is_back();

 private:
  struct Line {
    // Of the number that was told, or else of the exchange's; and of the exchange's.
    std::string key;
    std::string exchange_key;
    std::string number;
    platform::CallerHistory history;
    // What the seats were told last; nothing is known where it is as new.
    CallerKnown told;
    // Counts the callers, so that an answer of the store comes to the one it was asked for.
    int generation = 0;
    bool waits_for_store = false;
  };

  // The number of which the seat wants to know, while that is asked for.
  struct Question {
    std::string number = {};
    bool waits_for_store = false;
  };

  void ask(int line);
  void ask(std::uint64_t seat);
  void answered(std::uint64_t seat, const std::string& number,
                const std::optional<platform::CallerHistory>& history);
  void tell(Seat& seat, const std::string& number, const platform::CallerHistory& history) const;
  void tell_changes(int line);
  // The sterner one where both numbers are flagged.
  const platform::FlaggedCaller* flag(const Line& line) const;
  CallerKnown known(const std::string& number, const platform::CallerHistory& history,
                    const platform::FlaggedCaller* flag) const;
  ServerPacket packet(int line, const CallerKnown& known) const;
  Line& at(int line) { return line_[static_cast<std::size_t>(line)]; }
  const Line& at(int line) const { return line_[static_cast<std::size_t>(line)]; }

  const Context& context_;
  const GroupOptions& options_;
  Relay& relay_;
  const GroupLines& lines_;
  std::vector<Line> line_;
  std::map<std::uint64_t, Question> questions_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server

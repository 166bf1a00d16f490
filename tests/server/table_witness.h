#pragma once

#include <map>
#include <optional>
#include <string>

#include "server/server_room.h"

namespace lineweir::server {

// What a console knows of its group by the frames that it was sent, and whether all of them could
// be for it.
class TableWitness {
 public:
  // Whatever has come since the last look; false where something came that must not.
  bool look_at(FrameConsole& console);
  // The console has sent something that may take it out of its group; it is known again when it
  // comes into one.
  void may_have_left() { sure_ = false; }

  // 0 while it is in none.
  int group() const { return group_; }
  bool is_let_in() const { return let_in_; }
  bool knows_lines() const { return sure_ && !letters_.empty(); }
  // How often it has come into a group.
  int registrations() const { return registrations_; }
  // As far as it was told.
  char letter(int line) const;
  int line_count() const { return static_cast<int>(letters_.size()); }
  // By line, without the name of who entered them; a line that was cleared isn't there.
  const std::map<int, std::string>& caller_data() const { return caller_data_; }
  // What is known of each line's caller, as told.
  const std::map<int, std::string>& known_callers() const { return known_callers_; }
  std::optional<int> next_call() const { return next_call_; }
  const std::string& message() const { return message_; }

 private:
  bool take(const ServerPacket& packet);
  bool take_group_frame(const ServerPacket& packet);

  int group_ = 0;
  int registrations_ = 0;
  bool let_in_ = false;
  bool sure_ = false;
  std::string letters_;
  std::map<int, std::string> caller_data_;
  std::map<int, std::string> known_callers_;
  std::optional<int> next_call_;
  std::string message_;
};

}  // namespace lineweir::server

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "server/caller_text.h"
#include "server/context.h"
#include "server/group_lines.h"
#include "server/relay.h"

namespace lineweir::server {

// The caller data of a group's lines as last told, kept until the line's call ends.
class CallerData {
 public:
  CallerData(const Context& context, const GroupOptions& options, Relay& relay, GroupLines& lines);

  // The line's caller has a number, as he is known to have it now; set by the group.
  std::function<void(int line, const std::string& number)> on_number = [](int, const auto&) {};

  // From a seat. Consoles clear a line's data by themselves when they see it ring or end, which may
  // be late; so an empty text clears only a line without a caller, and a seat that sends one for
  // another line is told the data again.
  void take(Seat& seat, int line, std::string_view buffer);

  void call_ended(int line);
  // The number of a new caller is his first datum; one who was on the line already when the server
  // began has those that were stored.
  void call_begun(int line, const std::string& number);

  void tell_all_lines(Seat& seat) const;
  // Nothing for a line without data.
  const std::optional<CallerDetails>& data(int line) const {
    return data_[static_cast<std::size_t>(line)];
  }

 private:
  // Whose console would take the data for its own, since it sends its own under the same name.
  bool seems_own(const Seat& seat, int line) const;
  void clear(int line);
  void tell(Seat& seat, int line) const;
  ServerPacket packet(int line, std::string buffer) const;
  std::optional<CallerDetails>& at(int line) { return data_[static_cast<std::size_t>(line)]; }

  const Context& context_;
  const GroupOptions& options_;
  Relay& relay_;
  GroupLines& lines_;
  std::vector<std::optional<CallerDetails>> data_;
};

}  // namespace lineweir::server

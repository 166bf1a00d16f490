#pragma once

#include <optional>
#include <string>
#include <vector>

namespace lineweir {

class AccessRights;
class GroupChoice;
class ServerLink;
struct ConsoleState;
struct ServerPacket;

// The studio groups as the server tells them: their names, which of them are open to the user, and
// the one into which it sends him.
class StudioGroups {
 public:
  StudioGroups(ConsoleState& state, ServerLink& server, AccessRights& rights,
               GroupChoice& group_choice);

  // The names of all groups, in their order from group 1: entries and items are those, and no more.
  void show_names(const std::vector<std::string>& names);

 private:
  void SrvGroupNames(const ServerPacket& packet);
  void SrvAllowedGroups(const ServerPacket& packet);
  void SrvFirstUnblocked(const ServerPacket& packet);
  void timForceGroupChange_Timer();
  void enable_open_groups();

  ConsoleState& state_;
  AccessRights& rights_;
  GroupChoice& group_choice_;
  // What the server has told last; nothing before it has told any.
  std::optional<std::vector<std::string>> open_groups_;
};

}  // namespace lineweir

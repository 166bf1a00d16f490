#include "server/table_witness.h"

#include "lines/equipment_kinds.h"
#include "lines/line_table.h"
#include "wire/caller_known.h"
#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

using enum ServerCommand;

constexpr std::size_t status_item_length = 3;

std::string without_sender(const std::string& buffer) {
  return buffer.substr(buffer.find(field_end) + 1);
}

}  // namespace

bool TableWitness::look_at(FrameConsole& console) {
  bool sound = true;
  for (const ServerPacket& packet : console.take()) sound = take(packet) && sound;
  return sound && console.cut_as_sent();
}

bool TableWitness::take(const ServerPacket& packet) {
  switch (static_cast<ServerCommand>(packet.CMD)) {
    case SrvPasswordResult:
    case SrvLoginCheckResult: {
      const bool is_password = packet.CMD == static_cast<std::uint8_t>(SrvPasswordResult);
      if (packet.AltInfo != (is_password ? 'T' : 'F')) return true;
      let_in_ = true;
      // It may be another user.
      sure_ = false;
      return true;
    }
    case SrvTime:
    case SrvFirstUnblocked:
      return true;
    case SrvRights:
      // Who has none is taken out of the group.
      if (packet.Buffer == no_rights) sure_ = false;
      return true;
    case SrvGroupNames:
    case SrvAllowedGroups:
    case SrvMessage:
    case SrvShutdownNotice:
    case SrvStudioStatus:
    // Of the group that was asked for, which it isn't in.
    case SrvGroupElsewhere:
      return let_in_;
    // What a console is told as soon as it is in a group.
    case SrvPhoneType:
      group_ = packet.GroupNo;
      ++registrations_;
      sure_ = true;
      letters_.clear();
      caller_data_.clear();
      known_callers_.clear();
      next_call_.reset();
      message_.clear();
      return let_in_;
    default:
      return let_in_ && group_ != 0 && packet.GroupNo == group_ && take_group_frame(packet);
  }
}

bool TableWitness::take_group_frame(const ServerPacket& packet) {
  switch (static_cast<ServerCommand>(packet.CMD)) {
    case SrvFullStatus:
      letters_.clear();
      for (std::size_t i = 0; i + status_item_length <= packet.Buffer.size();
           i += status_item_length) {
        letters_ += packet.Buffer[i];
      }
      return true;
    // A change of what was told whole, or ahead of that one that is in it.
    case SrvLineStatus: {
      if (packet.Buffer.size() != 1) return false;
      if (letters_.empty()) return packet.LineNo < lines_of_large_layout;
      if (packet.LineNo >= letters_.size()) return false;
      const bool numbered = packet.Buffer == "P" && packet.AltInfo < first_position_code;
      letters_[packet.LineNo] = numbered ? static_cast<char>(first_position_code + packet.AltInfo)
                                         : packet.Buffer.front();
      return true;
    }
    case SrvCallerData:
      caller_data_.erase(packet.LineNo);
      if (packet.Buffer.empty()) return true;
      // Data of which all is blank show as none.
      if (const std::string shown = without_sender(packet.Buffer); !shown.empty()) {
        caller_data_[packet.LineNo] = shown;
      }
      return decode_caller_data(packet.Buffer).has_value();
    case SrvCallerKnown:
      if (packet.LineNo == no_value)
        return decode_caller_known(packet.AltInfo, packet.Buffer).has_value();
      known_callers_.erase(packet.LineNo);
      if (packet.Buffer.empty()) return true;
      known_callers_[packet.LineNo] = static_cast<char>(packet.AltInfo) + packet.Buffer;
      return decode_caller_known(packet.AltInfo, packet.Buffer).has_value();
    case SrvNextCall:
      next_call_ = packet.LineNo;
      return true;
    case SrvFlashMessage:
      message_ = packet.Buffer;
      return decode_text_message(packet.Buffer).has_value();
    case SrvTimes:
    case SrvLineNumbers:
    case SrvPhoneNames:
    case SrvShowTimes:
      return true;
    default:
      return false;
  }
}

char TableWitness::letter(int line) const {
  const auto place = static_cast<std::size_t>(line);
  return place < letters_.size() ? letters_[place] : '\0';
}

}  // namespace lineweir::server

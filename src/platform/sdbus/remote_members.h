#pragma once

#include <array>
#include <string_view>

namespace lineweir::platform {

// A method of a published object, with the types of D-Bus.
struct RemoteMember {
  std::string_view object;
  std::string_view name;
  std::string_view arguments;
  // As many as there are arguments.
  std::array<std::string_view, 4> argument_names;
  // No type where nothing comes back.
  std::string_view result = {};
  std::string_view result_name = {};
};

inline constexpr std::array remote_members = {
    RemoteMember{"SerialInput", "InputSerialPort", "is", {"group", "command"}},
    RemoteMember{"SerialInput", "OutputSerialPort", "i", {"group"}, "s", "status"},
    RemoteMember{"SerialInput", "GetDimType", "i", {"group"}, "i", "equipment_kind"},
    RemoteMember{"SerialInput", "GetLineNumbers", "i", {"group"}, "s", "numbers"},
    RemoteMember{"SerialInput", "GetStudioNames", "", {}, "s", "names"},
    RemoteMember{"SerialInput", "GetStudioStatus", "i", {"group"}, "s", "status"},
    RemoteMember{"SerialInput", "gettimes", "i", {"group"}, "s", "times"},
    RemoteMember{"SerialInput", "SetNextCall", "ii", {"line", "group"}},
    RemoteMember{"SerialInput", "CallerDataServer", "iis", {"line", "group", "data"}},
    RemoteMember{"SerialInput",
                 "MessageGroupData",
                 "iiis",
                 {"group", "back_color", "fore_color", "message"}},
    RemoteMember{"CBServerClass", "AddObjectReference", "oi", {"client", "group"}, "b", "taken"},
    RemoteMember{"CBServerClass", "DropObjectReference", "oi", {"client", "group"}, "b", "dropped"},
};

}  // namespace lineweir::platform

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

// The rights of a user: twelve characters of eight flags each, of which some are used.
inline constexpr std::size_t rights_length = 12;

// By the items that they enable, in the order of their places.
enum class Right {
  AboutLineweir,
  SaveSettingsMenu,
  DatabasePathMenuItem,
  ShowData,
  ShowDatabaseMenuItem,
  GreyScreenOption,
  FontMenuItem,
  ExitMenu,
  Com1,
  Com2,
  Com3,
  Com4,
  NetworkConnectionOption,
  WinsockMenu,
  PortOn,
  Off,
  RemoteCom1,
  RemoteCom2,
  RemoteCom3,
  RemoteCom4,
  RemoteOn,
  RemoteOff,
  Line20Mode,
  LogDataOptionsMenu,
  DisplayDataOptionsMenu,
  AutoDataEntry,
  PassiveMode,
  // These two allow nothing: the user's console is put out of passive mode, or into it.
  ForcePassiveOff,
  ForcePassiveOn,
  ModeMenuItem,
  StudioMode,
  ScreenerMode,
  MitelOption,
  MitelPhone1,
  MitelPhone2,
  RemoteNext,
  NextBarDisable,
  DimLineNumMenu,
  StudioLinNumMenu,
  CallerDataAllowed,
  MessagesAllowed,
  OptionsButton,
  Dial,
  CallerFlagAllowed,
};

struct RightPlace {
  Right right;
  std::string_view name;
  // Both from 1; bit 1 is the least significant.
  std::size_t character;
  int bit;
};

inline constexpr auto rights_layout = [] {
  using enum Right;
  return std::to_array<RightPlace>({
      {AboutLineweir, "AboutLineweir", 1, 1},
      {SaveSettingsMenu, "SaveSettingsMenu", 1, 2},
      {DatabasePathMenuItem, "DatabasePathMenuItem", 1, 3},
      {ShowData, "ShowData", 1, 4},
      {ShowDatabaseMenuItem, "ShowDatabaseMenuItem", 1, 5},
      {GreyScreenOption, "GreyScreenOption", 1, 6},
      {FontMenuItem, "FontMenuItem", 1, 7},
      {ExitMenu, "ExitMenu", 1, 8},
      {Com1, "Com1", 3, 1},
      {Com2, "Com2", 3, 2},
      {Com3, "Com3", 3, 3},
      {Com4, "Com4", 3, 4},
      {NetworkConnectionOption, "NetworkConnectionOption", 3, 5},
      {WinsockMenu, "WinsockMenu", 3, 6},
      {PortOn, "PortOn", 3, 7},
      {Off, "Off", 3, 8},
      {RemoteCom1, "RemoteCom1", 5, 1},
      {RemoteCom2, "RemoteCom2", 5, 2},
      {RemoteCom3, "RemoteCom3", 5, 3},
      {RemoteCom4, "RemoteCom4", 5, 4},
      {RemoteOn, "RemoteOn", 5, 5},
      {RemoteOff, "RemoteOff", 5, 6},
      {Line20Mode, "Line20Mode", 5, 7},
      {LogDataOptionsMenu, "LogDataOptionsMenu", 7, 1},
      {DisplayDataOptionsMenu, "DisplayDataOptionsMenu", 7, 2},
      {AutoDataEntry, "AutoDataEntry", 7, 3},
      {PassiveMode, "PassiveMode", 7, 4},
      {ForcePassiveOff, "ForcePassiveOff", 7, 5},
      {ForcePassiveOn, "ForcePassiveOn", 7, 6},
      {ModeMenuItem, "ModeMenuItem", 7, 7},
      {StudioMode, "StudioMode", 7, 8},
      {ScreenerMode, "ScreenerMode", 8, 1},
      {MitelOption, "MitelOption", 8, 2},
      {MitelPhone1, "MitelPhone1", 8, 3},
      {MitelPhone2, "MitelPhone2", 8, 4},
      {RemoteNext, "RemoteNext", 8, 5},
      {NextBarDisable, "NextBarDisable", 8, 6},
      {DimLineNumMenu, "DimLineNumMenu", 8, 7},
      {StudioLinNumMenu, "StudioLinNumMenu", 8, 8},
      {CallerDataAllowed, "CallerDataAllowed", 11, 1},
      {MessagesAllowed, "MessagesAllowed", 11, 2},
      {OptionsButton, "OptionsButton", 11, 3},
      {Dial, "Dial", 11, 4},
      {CallerFlagAllowed, "CallerFlagAllowed", 11, 5},
  });
}();

// In place of rights: the user has none in the group.
inline constexpr std::string_view no_rights = "AAAAAAAAAAAA";

// The place of a right that bears the name, in whatever case.
std::optional<Right> find_right(std::string_view name);

// False also where the rights end before the right's place.
bool allows(std::string_view rights, Right right);

// The rights with the flag set or cleared. Rights that are shorter than rights_length are filled up
// with characters that mean nothing, as are those of no flag at all.
std::string with_right(std::string_view rights, Right right, bool allowed);

// Why a frame can't carry these rights: two bytes 5 in a row would end it, a last byte 5 would be
// taken for a part of its end, and a last byte 255 for its pad. Empty for rights that it can.
std::string_view why_rights_cannot_travel(std::string_view rights);

}  // namespace lineweir

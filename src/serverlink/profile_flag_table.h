#pragma once

#include <array>
#include <cstddef>

#include "forms/main_form.h"

namespace lineweir {

// What becomes of a flag that is received.
enum class FlagUse {
  // Nothing: connection and handset belong to the seat and not to the user.
  OfSeat,
  // The item is clicked if the flag is set.
  ClickIfSet,
  // It is clicked if the flag isn't what its check mark shows, so that a click keeps its effects.
  ClickIfOther,
  // The same, and then the lock of passive mode is made true.
  ClickIfOtherAndLock,
  // The same as ClickIfOther while there is room for digits; without room the flag is written off.
  ClickWithRoom,
  // The check mark is set.
  CheckOnly,
  // The same, and behind the whole profile the console gets as many lines.
  CheckAndLineCount,
  // A field of the log's options is in use.
  LogField,
  // The message font, which the fields tell the rest of.
  FontBold,
  FontItalic,
};

struct ProfileFlag {
  FlagUse use;
  // None for a field of the log and the font.
  MenuItem MainForm::*item = nullptr;
  // Of a field of the log its place, from 0.
  std::size_t log_field = 0;
};

// The flags of a profile, each "1" or "0", in their order. Writing and reading both walk it.
inline constexpr auto profile_flags = [] {
  using F = MainForm;
  using enum FlagUse;
  return std::to_array<ProfileFlag>({
      {OfSeat, &F::Com1},
      {OfSeat, &F::Com2},
      {OfSeat, &F::Com3},
      {OfSeat, &F::Com4},
      {OfSeat, &F::NetworkConnectionOption},
      {OfSeat, &F::WinsockMenu},
      {OfSeat, &F::PortOn},
      {OfSeat, &F::Off},
      {ClickIfSet, &F::RemoteCom1},
      {ClickIfSet, &F::RemoteCom2},
      {ClickIfSet, &F::RemoteCom3},
      {ClickIfSet, &F::RemoteCom4},
      {ClickIfSet, &F::RemoteOn},
      {ClickIfSet, &F::RemoteOff},
      {LogField, nullptr, 0},
      {LogField, nullptr, 1},
      {LogField, nullptr, 2},
      {LogField, nullptr, 3},
      {LogField, nullptr, 4},
      {LogField, nullptr, 5},
      {LogField, nullptr, 6},
      {LogField, nullptr, 7},
      {LogField, nullptr, 8},
      {LogField, nullptr, 9},
      {ClickIfOtherAndLock, &F::PassiveMode},
      {ClickIfOther, &F::StudioMode},
      {ClickIfOther, &F::ScreenerMode},
      {ClickIfOther, &F::RemoteNext},
      {ClickIfOther, &F::EventClockMenu},
      {ClickIfOther, &F::TimeClockMenuItem},
      {CheckOnly, &F::AutoDataEntry},
      {OfSeat, &F::MitelPhone1},
      {OfSeat, &F::MitelPhone2},
      {ClickIfOther, &F::DimLineNumMenu},
      {ClickIfOther, &F::StudioLinNumMenu},
      {CheckOnly, &F::SyncTimeMenu},
      {ClickWithRoom, &F::DigiClock},
      {CheckAndLineCount, &F::Line20Mode},
      {ClickIfOther, &F::TextGrowToggle},
      {CheckOnly, &F::ServerShowData},
      {CheckOnly, &F::NextBarDisable},
      {FontBold},
      {FontItalic},
  });
}();

inline constexpr std::size_t profile_flag_count = profile_flags.size();
static_assert(profile_flag_count == 43);

}  // namespace lineweir

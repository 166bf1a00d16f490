#include "serverlink/profile_flags.h"

#include <algorithm>

#include "base/bits.h"
#include "callcontrol/modes.h"
#include "callcontrol/next_key.h"
#include "callerdata/caller_data.h"
#include "screen/fonts.h"
#include "state/console_state.h"

namespace lineweir {
namespace {

// The last field of the log that has a flag has the place 9.
static_assert(std::tuple_size_v<LogFieldFlags> > 9);

void click_if(bool wanted, MenuItem& item) {
  if (wanted) item.on_click();
}

}  // namespace

std::optional<bool> flag_in(std::string_view block, FlagUse use) {
  const auto flag = std::ranges::find(profile_flags, use, &ProfileFlag::use);
  const auto place = static_cast<std::size_t>(flag - profile_flags.begin());
  if (place >= block.size()) return std::nullopt;
  return num_to_bool(block.substr(place, 1));
}

ProfileFlags::ProfileFlags(ConsoleState& state, CallerDataEntry& caller_data, Modes& modes,
                           const Fonts& fonts)
    : state_(state), caller_data_(caller_data), modes_(modes), fonts_(fonts) {}

std::string ProfileFlags::write() const {
  std::string flags;
  for (const ProfileFlag& flag : profile_flags) flags += return_byte(value_of(flag));
  return flags;
}

bool ProfileFlags::value_of(const ProfileFlag& flag) const {
  switch (flag.use) {
    case FlagUse::LogField:
      return caller_data_.LogFieldOn[flag.log_field];
    case FlagUse::FontBold:
      return fonts_.present().bold;
    case FlagUse::FontItalic:
      return fonts_.present().italic;
    case FlagUse::ClickWithRoom:
      return (state_.Lineweir.*flag.item).checked && digits_have_room();
    default:
      return (state_.Lineweir.*flag.item).checked;
  }
}

bool ProfileFlags::apply(std::string_view block) {
  MenuItem& digits = state_.Lineweir.DigiClock;
  // The dials are chosen while they are shown; digits would hold one of them and come to lie under
  // the other.
  const bool had_digits = digits.checked && digits_have_room();
  click_if(had_digits, digits);
  const std::size_t count = std::min(block.size(), profile_flags.size());
  for (std::size_t i = 0; i < count; ++i) {
    apply(profile_flags[i], num_to_bool(block.substr(i, 1)));
  }
  const bool digits_were_told = flag_in(block, FlagUse::ClickWithRoom).has_value();
  click_if(had_digits && !digits_were_told, digits);
  // The modes behind it have opened its lock.
  if (state_.Lineweir.PassiveMode.checked) modes_.CheckPassiveState();
  return count == profile_flags.size();
}

void ProfileFlags::apply(const ProfileFlag& flag, bool set) {
  const auto item = [&]() -> MenuItem& { return state_.Lineweir.*flag.item; };
  const auto differs = [&] { return set != item().checked; };
  if (set && is_forbidden(flag)) return;
  switch (flag.use) {
    case FlagUse::OfSeat:
    case FlagUse::FontBold:
    case FlagUse::FontItalic:
      return;
    case FlagUse::ClickIfSet:
      return click_if(set, item());
    case FlagUse::ClickIfOther:
      return click_if(differs(), item());
    case FlagUse::ClickIfOtherAndLock:
      click_if(differs(), item());
      return modes_.CheckPassiveState();
    case FlagUse::ClickWithRoom:
      return click_if(differs() && digits_have_room(), item());
    case FlagUse::CheckOnly:
    case FlagUse::CheckAndLineCount:
      item().checked = set;
      // Where it is checked it can be unchecked.
      if (set && &item() == &state_.Lineweir.ServerShowData) item().visible = true;
      return;
    case FlagUse::LogField:
      caller_data_.LogFieldOn[flag.log_field] = set;
  }
}

bool ProfileFlags::is_forbidden(const ProfileFlag& flag) const {
  if (flag.item == &MainForm::RemoteNext) return !next_key_may_be_used(state_);
  return flag.item == &MainForm::AutoDataEntry && !state_.program.CallerDataAllowed;
}

bool ProfileFlags::digits_have_room() const {
  return state_.program.VisibleLines <= lines_of_small_layout;
}

}  // namespace lineweir

#include "serverlink/user_profile.h"

#include <array>

#include "base/bits.h"
#include "base/integer16.h"
#include "base/text.h"
#include "callerdata/call_log_file.h"
#include "callerdata/caller_data.h"
#include "clocks/show_plan_store.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/window_size.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

constexpr std::size_t flag_count = 43;
// A profile has room for so many fields that people enter, and for the columns up to this one.
constexpr std::size_t entry_fields_held = 10;
constexpr int columns_end = 13;
static_assert(entry_fields_held <= entry_fields.size() && columns_end <= column_count);
constexpr std::size_t group_field = 2;
constexpr int rows_with_room_for_digits = 11;

void append_field(std::string& block, std::string_view field) {
  block += trimmed(field);
  block += item_end;
}

void append_field(std::string& block, int number) { append_field(block, std::to_string(number)); }

}  // namespace

int group_of_profile(std::string_view block) {
  if (block.find(item_end) == std::string_view::npos || block.size() <= flag_count) return no_group;
  const auto fields = decode_list(block.substr(flag_count));
  if (fields.size() <= group_field) return no_group;
  return integer16(leading_number(fields[group_field]));
}

UserProfile::UserProfile(ConsoleState& state, ShowPlanStore& show_plan, DisplayOptions& display,
                         WindowSize& window, Fonts& fonts, CallLogFile& call_log_file,
                         CallerDataEntry& caller_data)
    : state_(state),
      show_plan_(show_plan),
      display_(display),
      window_(window),
      fonts_(fonts),
      call_log_file_(call_log_file),
      caller_data_(caller_data) {}

std::string UserProfile::PrepareUserData(std::string_view TheName) {
  std::string block;
  guard(state_.trace, "Lineweir_PrepareUserData", [&] {
    MainForm& form = state_.Lineweir;
    if (form.window_state == window_minimised) form.window_state = window_normal;
    if (!TheName.empty()) state_.login.UserName = TheName;

    append_field(block, TheName.empty() ? state_.login.UserName.trimmed() : TheName);
    block += flags();
    const WindowTarget target = window_.present();
    append_field(block, target.height);
    append_field(block, target.width);
    append_field(block, state_.program.GroupNumber);
    append_field(block, target.state);
    append_field(block, show_plan_.path_to_store());
    append_field(block, call_log_file_.path_to_store());
    append_field(block, state_.program.OperatorName);
    append_field(block, state_.program.GroupNumber);
    append_field(block, state_.clock_state.Warning1);
    append_field(block, state_.clock_state.Warning2);
    append_field(block, state_.program.MessageFile);
    for (int column = first_optional_column; column < columns_end; ++column) {
      append_column(block, column);
    }
    const platform::FontChoice font = fonts_.present();
    append_field(block, font.name);
    append_field(block, font.size);
    append_field(block, state_.clock_state.DelayOffset);
  });
  return block;
}

void UserProfile::append_column(std::string& block, int column) const {
  const bool checked = state_.DisplayOptionForm.CheckItem(column).value == 1;
  const int listed = checked ? display_.listed_place(column) : -1;
  append_field(block, listed < 0 ? column_not_listed : listed);
  append_field(block, checked ? "T" : "F");
  append_field(block, checked ? display_.width_of(column) : 0);
}

std::string UserProfile::flags() const {
  const MainForm& form = state_.Lineweir;
  std::string flags;
  const auto add = [&flags](bool flag) { flags += return_byte(flag); };
  for (const MenuItem* item :
       {&form.Com1, &form.Com2, &form.Com3, &form.Com4, &form.NetworkConnectionOption,
        &form.WinsockMenu, &form.PortOn, &form.Off, &form.RemoteCom1, &form.RemoteCom2,
        &form.RemoteCom3, &form.RemoteCom4, &form.RemoteOn, &form.RemoteOff}) {
    add(item->checked);
  }
  for (std::size_t i = 0; i < entry_fields_held; ++i) add(caller_data_.LogFieldOn[i]);
  for (const MenuItem* item :
       {&form.PassiveMode, &form.StudioMode, &form.ScreenerMode, &form.RemoteNext,
        &form.EventClockMenu, &form.TimeClockMenuItem, &form.AutoDataEntry, &form.MitelPhone1,
        &form.MitelPhone2, &form.DimLineNumMenu, &form.StudioLinNumMenu, &form.SyncTimeMenu}) {
    add(item->checked);
  }
  add(form.DigiClock.checked && state_.program.VisibleLines < rows_with_room_for_digits);
  for (const MenuItem* item :
       {&form.Line20Mode, &form.TextGrowToggle, &form.ServerShowData, &form.NextBarDisable}) {
    add(item->checked);
  }
  const platform::FontChoice font = fonts_.present();
  add(font.bold);
  add(font.italic);
  return flags;
}

}  // namespace lineweir

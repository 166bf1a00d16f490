#include "serverlink/received_profile.h"

#include <string>

#include "base/text.h"
#include "clocks/time_offset.h"
#include "clocks/warning_threshold.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/profile_window.h"
#include "serverlink/line_count_change.h"
#include "serverlink/profile_fields.h"
#include "serverlink/profile_files.h"
#include "serverlink/profile_flags.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/stored_path.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto profile_handler = "Lineweir_SetUserProfile";
// A block of so many characters is none.
constexpr std::size_t longest_no_profile = 30;
constexpr std::size_t longest_operator_name = stored_width(&SettingsRecord::OperatorName);

void take_warning(int& warning, std::optional<int> wanted) {
  if (wanted && is_warning_time(*wanted)) warning = *wanted;
}

}  // namespace

ReceivedProfile::ReceivedProfile(ConsoleState& state, ProfileFlags& flags, ProfileFiles& files,
                                 DisplayOptions& display, ProfileWindow& window, Fonts& fonts,
                                 LineCountChange& line_count)
    : state_(state),
      flags_(flags),
      files_(files),
      display_(display),
      window_(window),
      fonts_(fonts),
      line_count_(line_count) {
  wire(state.Lineweir.UserProfileTimer.on_timer, state.trace, "Lineweir_UserProfileTimer_Timer",
       [this] { UserProfileTimer_Timer(); });
}

void ReceivedProfile::UserProfileTimer_Timer() {
  // What is clicked may wait for the socket: the next profile comes behind this one.
  if (applying_) return;
  state_.Lineweir.UserProfileTimer.enabled = false;
  if (state_.login.ProfileBlock.size() <= longest_no_profile) return;
  SetUserProfile(std::string(state_.login.ProfileBlock));
}

void ReceivedProfile::SetUserProfile(std::string_view ProfileBlock) {
  if (state_.login.SkipProfile) {
    state_.login.SkipProfile = false;
    return;
  }
  if (state_.DisplayOptionForm.visible) return;
  applying_ = true;
  std::optional<ProfileValues> window;
  guard(state_.trace, profile_handler, [&] { apply(ProfileBlock, window); });
  guard(state_.trace, profile_handler, [&] {
    const bool lines_are_told = flag_in(ProfileBlock, FlagUse::CheckAndLineCount).has_value();
    if (lines_are_told && line_count_.follow_menu() && window) take_window(*window);
  });
  applying_ = false;
}

void ReceivedProfile::apply(std::string_view block, std::optional<ProfileValues>& window) {
  if (!flags_.apply(block)) return;
  read_profile_fields(block.substr(profile_flag_count),
                      [&](ProfileStep step, const ProfileValues& values) {
                        carry_out(step, values);
                        if (step == ProfileStep::Window) window = values;
                        if (step == ProfileStep::FontAndOffset) show_font(values, block);
                      });
}

void ReceivedProfile::carry_out(ProfileStep step, const ProfileValues& values) {
  switch (step) {
    case ProfileStep::Window:
      return take_window(values);
    case ProfileStep::ShowPlan:
      return take_show_plan(values);
    case ProfileStep::Log:
      if (values.database) files_.take_call_log(*values.database, profile_handler);
      return;
    case ProfileStep::Operator:
      if (values.operator_name) {
        state_.program.OperatorName = left_part(*values.operator_name, longest_operator_name);
      }
      return;
    case ProfileStep::ClocksAndColumns:
      return take_clocks_and_widths(values);
    case ProfileStep::FontAndOffset:
      take_offset(values);
      show_columns(values);
  }
}

void ReceivedProfile::take_window(const ProfileValues& values) {
  window_.take(values.height, values.width, values.window_state, values.group.value_or(no_group));
}

void ReceivedProfile::take_show_plan(const ProfileValues& values) {
  if (values.show_data_file) files_.take_show_plan(*values.show_data_file, profile_handler);
  // What was counted down to may be no event of this plan.
  state_.Lineweir.CountDownTime.caption = "";
  state_.Lineweir.RedClock.visible = false;
}

void ReceivedProfile::take_clocks_and_widths(const ProfileValues& values) {
  ClockState& clocks = state_.clock_state;
  take_warning(clocks.Warning1, values.warning1);
  take_warning(clocks.Warning2, values.warning2);
  if (values.hot_list) files_.take_hot_list(*values.hot_list);
  display_.ColumnWidth = widths(values);
}

void ReceivedProfile::take_offset(const ProfileValues& values) {
  const int offset = values.time_offset.value_or(largest_time_offset + 1);
  if (offset <= largest_time_offset) state_.clock_state.DelayOffset = offset;
}

void ReceivedProfile::show_columns(const ProfileValues& values) {
  display_.collect();
  ColumnNumbers shown = display_.ColumnShown;
  ColumnNumbers order = display_.ColumnOrder;
  for (std::size_t i = 0; i < profile_column_count; ++i) {
    const ProfileColumn& column = values.columns[i];
    if (column.shown) shown[i] = *column.shown ? -1 : 0;
    order[i] = column.place.value_or(order[i]);
  }
  display_.restore(shown, display_.ColumnWidth, order);
  display_.SetDisplayOptions();
}

void ReceivedProfile::show_font(const ProfileValues& values, std::string_view block) {
  platform::FontChoice font = fonts_.present();
  font.name = values.font_name.value_or(font.name);
  font.size = values.font_size.value_or(font.size);
  font.bold = flag_in(block, FlagUse::FontBold).value_or(font.bold);
  font.italic = flag_in(block, FlagUse::FontItalic).value_or(font.italic);
  fonts_.FontChange(font);
}

ColumnNumbers ReceivedProfile::widths(const ProfileValues& values) const {
  ColumnNumbers widths = display_.ColumnWidth;
  for (std::size_t i = 0; i < profile_column_count; ++i) {
    const ProfileColumn& column = values.columns[i];
    // A column that isn't shown is written with no width, and has its own when it is shown again.
    const bool has_width = column.width.value_or(0) > 0 || column.shown.value_or(false);
    if (has_width && column.width.value_or(-1) >= 0) widths[i] = *column.width;
  }
  return widths;
}

}  // namespace lineweir

#include "serverlink/user_profile.h"

#include "link/links.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/window_size.h"
#include "serverlink/profile_fields.h"
#include "serverlink/profile_files.h"
#include "serverlink/profile_flags.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

static_assert(profile_column_count <= optional_column_count);

UserProfile::UserProfile(ConsoleState& state, const Links& links, const ProfileFlags& flags,
                         const ProfileFiles& files, DisplayOptions& display,
                         const WindowSize& window, const Fonts& fonts)
    : state_(state),
      links_(links),
      flags_(flags),
      files_(files),
      display_(display),
      window_(window),
      fonts_(fonts) {}

std::string UserProfile::PrepareUserData(std::string_view TheName) {
  std::string block;
  guard(state_.trace, "Lineweir_PrepareUserData", [&] {
    MainForm& form = state_.Lineweir;
    if (form.window_state == window_minimised) form.window_state = window_normal;
    if (!TheName.empty()) state_.login.UserName = TheName;
    block = profile_field(TheName.empty() ? state_.login.UserName.trimmed() : TheName) +
            flags_.write() + write_profile_fields(values());
  });
  return block;
}

ProfileValues UserProfile::values() const {
  ProfileValues values;
  const WindowTarget window = window_.present();
  values.height = window.height;
  values.width = window.width;
  values.window_state = window.state;
  values.group = state_.program.GroupNumber;
  values.show_data_file = files_.show_plan();
  values.database = files_.call_log();
  values.operator_name = state_.program.OperatorName;
  values.warning1 = state_.clock_state.Warning1;
  values.warning2 = state_.clock_state.Warning2;
  values.hot_list = state_.program.MessageFile;
  for (std::size_t i = 0; i < profile_column_count; ++i) {
    const int column = first_optional_column + static_cast<int>(i);
    const bool checked = state_.DisplayOptionForm.CheckItem(column).value == 1;
    const int listed = checked ? display_.listed_place(column) : -1;
    values.columns[i] = {listed < 0 ? column_not_listed : listed, checked,
                         checked ? display_.width_of(column) : 0};
  }
  const platform::FontChoice font = fonts_.present();
  values.font_name = font.name;
  values.font_size = font.size;
  values.time_offset = state_.clock_state.DelayOffset;
  return values;
}

void UserProfile::SendUserProfile(std::string_view OldUseName) {
  guard(state_.trace, "Lineweir_SendUserProfile", [&] {
    StudioLink& link = links_.in_use();
    if (link.keeps_profiles()) link.keep_profile(PrepareUserData(OldUseName));
  });
}

}  // namespace lineweir

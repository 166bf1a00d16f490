#include "callerdata/user_field_title.h"

#include "base/text.h"
#include "callerdata/call_log.h"
#include "screen/display_options.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// The characters of SettingsRecord::UserFieldName.
constexpr std::size_t heading_length = 30;
constexpr const char* title_prompt = "Please input the new title for the user field!";
constexpr const char* database_question =
    "Do you wish to change the name of the field in the currently open database as well?";

}  // namespace

UserFieldTitle::UserFieldTitle(ConsoleState& state, DisplayOptions& display, CallLog& call_log)
    : state_(state), display_(display), call_log_(call_log) {
  wire(state.DisplayOptionForm.UserRename.on_click, state_.trace,
       "DisplayOptionForm_UserRename_Click", [this] { UserRename_Click(); });
}

void UserFieldTitle::UserRename_Click() {
  const std::string present = state_.DisplayOptionForm.CheckItem(user_column).caption;
  const auto reply = state_.services.dialogs.ask_input({title_prompt, present});
  if (!reply) return;
  // As the settings can hold it.
  const std::string title(trimmed(left_part(trimmed(*reply), heading_length)));
  if (title.empty() || title == present) return;
  const bool in_log = call_log_.chosen() && state_.services.dialogs.ask_yes_no(database_question);
  if (!in_log || rename_in_log(title)) display_.set_heading(user_column, title);
}

bool UserFieldTitle::rename_in_log(const std::string& title) {
  return attempt([&] { call_log_.rename_user_field(title); },
                 [&](const Failure& failure) {
                   report_failure(state_.trace, "DisplayOptionForm_UserRename_Click", failure);
                   state_.messages.ShowMessage(description_of(state_.services.letters, failure) +
                                               " The field keeps its title.");
                 });
}

}  // namespace lineweir

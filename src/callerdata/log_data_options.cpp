#include "callerdata/log_data_options.h"

#include "base/text.h"
#include "callerdata/caller_data.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

LogDataOptions::LogDataOptions(ConsoleState& state, CallerDataEntry& caller_data)
    : state_(state), caller_data_(caller_data) {
  LogDataWindow& form = state.LogDataForm;
  state.Lineweir.LogDataOptionsMenu.on_click = [this] { LogDataOptionsMenu_Click(); };
  form.on_load = [this] { Form_Load(); };
  form.ExitLayout.on_click = [this] { ExitLayout_Click(); };
  form.CancelLayout.on_click = [this] { CancelLayout_Click(); };
}

void LogDataOptions::LogDataOptionsMenu_Click() {
  guard(state_.trace, "Lineweir_LogDataOptionsMenu_Click", [&] { state_.LogDataForm.show(); });
}

void LogDataOptions::Form_Load() {
  guard(state_.trace, "LogDataForm_Form_Load", [&] {
    LogDataWindow& form = state_.LogDataForm;
    form.UserCheck.caption = trimmed(state_.Lineweir.CaptionLabel(user_column).caption);
    const LogFieldFlags& in_use = caller_data_.LogFieldOn;
    for (std::size_t field = 0; field < in_use.size(); ++field) {
      form.box(field).value = in_use[field] ? 1 : 0;
    }
  });
}

void LogDataOptions::ExitLayout_Click() {
  guard(state_.trace, "LogDataForm_ExitLayout_Click", [&] {
    LogFieldFlags& in_use = caller_data_.LogFieldOn;
    for (std::size_t field = 0; field < in_use.size(); ++field) {
      in_use[field] = state_.LogDataForm.box(field).value == 1;
    }
    state_.LogDataForm.unload();
  });
}

void LogDataOptions::CancelLayout_Click() {
  guard(state_.trace, "LogDataForm_CancelLayout_Click", [&] { state_.LogDataForm.unload(); });
}

}  // namespace lineweir

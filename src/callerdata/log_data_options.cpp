#include "callerdata/log_data_options.h"

#include "base/text.h"
#include "callerdata/caller_data.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

LogDataOptions::LogDataOptions(ConsoleState& state, CallerDataEntry& caller_data)
    : state_(state), caller_data_(caller_data) {
  LogOptionsForm& form = state.LogDataForm;
  wire(state.Lineweir.LogDataOptionsMenu.on_click, state_.trace,
       "Lineweir_LogDataOptionsMenu_Click", [this] { LogDataOptionsMenu_Click(); });
  wire(form.on_load, state_.trace, "LogDataForm_Form_Load", [this] { Form_Load(); });
  wire(form.ExitLayout.on_click, state_.trace, "LogDataForm_ExitLayout_Click",
       [this] { ExitLayout_Click(); });
  wire(form.CancelLayout.on_click, state_.trace, "LogDataForm_CancelLayout_Click",
       [this] { CancelLayout_Click(); });
}

void LogDataOptions::LogDataOptionsMenu_Click() { state_.LogDataForm.show(); }

void LogDataOptions::Form_Load() {
  LogOptionsForm& form = state_.LogDataForm;
  form.box(user_named_field).caption = trimmed(state_.Lineweir.CaptionLabel(user_column).caption);
  const LogFieldFlags& in_use = caller_data_.LogFieldOn;
  for (std::size_t i = 0; i < in_use.size(); ++i) form.boxes[i].value = in_use[i] ? 1 : 0;
}

void LogDataOptions::ExitLayout_Click() {
  LogFieldFlags& in_use = caller_data_.LogFieldOn;
  for (std::size_t i = 0; i < in_use.size(); ++i) {
    in_use[i] = state_.LogDataForm.boxes[i].value == 1;
  }
  state_.LogDataForm.unload();
}

void LogDataOptions::CancelLayout_Click() { state_.LogDataForm.unload(); }

}  // namespace lineweir

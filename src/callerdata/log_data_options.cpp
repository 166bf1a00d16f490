#include "callerdata/log_data_options.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"

namespace lineweir {

LogDataOptions::LogDataOptions(Console& console) : console_(console) {
  LogDataWindow& form = console.LogDataForm;
  console.Lineweir.LogDataOptionsMenu.on_click = [this] { LogDataOptionsMenu_Click(); };
  form.on_load = [this] { Form_Load(); };
  form.ExitLayout.on_click = [this] { ExitLayout_Click(); };
  form.CancelLayout.on_click = [this] { CancelLayout_Click(); };
}

void LogDataOptions::LogDataOptionsMenu_Click() {
  guard(console_, "Lineweir_LogDataOptionsMenu_Click", [&] { console_.LogDataForm.show(); });
}

void LogDataOptions::Form_Load() {
  guard(console_, "LogDataForm_Form_Load", [&] {
    LogDataWindow& form = console_.LogDataForm;
    form.UserCheck.caption = trimmed(console_.Lineweir.CaptionLabel(user_column).caption);
    const LogFieldFlags& in_use = console_.caller_data.LogFieldOn;
    for (std::size_t field = 0; field < in_use.size(); ++field) {
      form.box(field).value = in_use[field] ? 1 : 0;
    }
  });
}

void LogDataOptions::ExitLayout_Click() {
  guard(console_, "LogDataForm_ExitLayout_Click", [&] {
    LogFieldFlags& in_use = console_.caller_data.LogFieldOn;
    for (std::size_t field = 0; field < in_use.size(); ++field) {
      in_use[field] = console_.LogDataForm.box(field).value == 1;
    }
    console_.LogDataForm.unload();
  });
}

void LogDataOptions::CancelLayout_Click() {
  guard(console_, "LogDataForm_CancelLayout_Click", [&] { console_.LogDataForm.unload(); });
}

}  // namespace lineweir

#include "desktop/desktop.h"

#include "core/console.h"
#include "desktop/dialog_table.h"
#include "desktop/main_window.h"

namespace lineweir {

Desktop::Desktop(Console& console) : main_frame_(console) {
  for (const DialogRow& row : dialog_table()) {
    dialogs_.push_back(std::make_unique<DialogFrame>(row.form(console), row,
                                                     [this] { return main_frame_.window(); }));
  }
}

DialogFrame* Desktop::dialog(const Form& form) const {
  for (const auto& dialog : dialogs_) {
    if (&dialog->form() == &form) return dialog.get();
  }
  return nullptr;
}

void Desktop::flush() {
  main_frame_.flush();
  for (const auto& dialog : dialogs_) dialog->flush();
}

}  // namespace lineweir

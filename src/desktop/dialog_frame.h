#pragma once

#include <functional>
#include <memory>

#include "desktop/dialog_table.h"
#include "desktop/form_frame.h"

namespace lineweir {

class FormBinder;

// A dialog in its window, which is made when the dialog is first shown.
class DialogFrame final : public FormFrame {
 public:
  // `main_window` gives the window that a dialog stays in front of, or null while there is none.
  DialogFrame(Form& form, const DialogRow& row, std::function<QWidget*()> main_window);
  ~DialogFrame() override;

  FormBinder* binder() const { return binder_.get(); }

 protected:
  QWidget* make_window() override;
  void fit_window(QWidget& window) override;
  void form_changed() override;

 private:
  const DialogRow& row_;
  std::function<QWidget*()> main_window_;
  std::unique_ptr<FormBinder> binder_;
};

}  // namespace lineweir

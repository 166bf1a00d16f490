#pragma once

#include <functional>
#include <memory>

#include "desktop/dialog_table.h"
#include "desktop/form_frame.h"

namespace lineweir {

class FormBinder;
class MenuTree;

// A dialog in its window, which is made when the dialog is first shown.
class DialogFrame final : public FormFrame {
 public:
  // `main_window` gives the window that a dialog stays in front of, or null while there is none.
  DialogFrame(Form& form, const DialogRow& row, WindowFocus& focus,
              std::function<QWidget*()> main_window);
  ~DialogFrame() override;

  FormBinder* binder() const { return binder_.get(); }
  // Lays the window out anew after changes of the form, its labels and its buttons, for one that
  // does more about that than its layout.
  std::function<void(QWidget& window)> arrange;
  // Puts the window in its place each time before it is shown.
  std::function<void(QWidget& window)> place;

  // Null for a dialog without a menu bar.
  MenuTree* menus() const { return menus_.get(); }

 protected:
  QWidget* make_window() override;
  void fit_window(QWidget& window) override;
  QWidget* usual_owner() const override { return main_window_(); }
  QRect place_to_open() const override;
  bool takes_keyboard(bool awaited) const override;
  // A message is brought to the front each second.
  bool comes_for_user() const override { return row_.kind != DialogKind::Message; }
  bool shows_in_window(const Element& element) const override;
  void about_to_show() override;
  void form_changed() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The letters of dialogs have another size: what was measured by them is measured anew.
  void take_letters();
  // Enter in a field that doesn't take it for itself presses the default button.
  bool press_default();

  const DialogRow& row_;
  std::function<QWidget*()> main_window_;
  std::unique_ptr<FormBinder> binder_;
  std::unique_ptr<MenuTree> menus_;
  bool other_letters_ = false;
};

}  // namespace lineweir

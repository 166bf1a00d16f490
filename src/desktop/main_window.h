#pragma once

#include <QWidget>

#include "desktop/form_canvas.h"
#include "desktop/menu_tree.h"

class QMenuBar;

namespace lineweir {

// The main form's window: the menu bar, and below it the form.
class MainWindow final : public QWidget {
 public:
  explicit MainWindow(Form& form);

  FormCanvas& canvas() const { return *canvas_; }
  MenuTree& menus() { return menus_; }

  // Gives the form below the bar this size in pixels, or what it needs at least, which the user
  // can't make smaller either.
  void fit_content(QSize content, QSize least);

  // Shows or hides the bar as its entries say, in a window whose size stays.
  void fit_bar();

  // The user or the system gave the form another size.
  std::function<void(QSize content)> on_content_resized;
  // The window has come to a screen of another scale.
  std::function<void()> on_scale_changed;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void lay_out();

  QMenuBar* bar_;
  FormCanvas* canvas_;
  MenuTree menus_;
  double scale_ = 0;
  bool fitting_ = false;
};

}  // namespace lineweir

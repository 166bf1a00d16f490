#pragma once

#include <QPointer>
#include <QWidget>

#include "desktop/form_canvas.h"
#include "desktop/menu_tree.h"

class QMenuBar;

namespace lineweir {

// The main form's window: the menu bar, below it a band where there is one, and then the form.
class MainWindow final : public QWidget {
 public:
  explicit MainWindow(Form& form);

  FormCanvas& canvas() const { return *canvas_; }
  MenuTree& menus() { return menus_; }

  // Puts a band between the bar and the form, or takes it away where there is none. It belongs to
  // this window then.
  void set_band(QWidget* band);
  QWidget* band() const { return band_; }

  // Gives the form below the bar this size in pixels, or what it needs at least, which the user
  // can't make smaller either.
  void fit_content(QSize content, QSize least);

  // Shows or hides the bar as its entries say, in a window whose size stays.
  void fit_bar();

  // Gives the menus the letters that go with the window's present size; true where they are others
  // than before.
  bool fit_menu_letters();

  // The size of the menus' letters in a window of that size. It goes by the whole window, the bar
  // included: if the bar's height went by what the bar leaves, the two might chase each other.
  std::function<int(QSize window)> menu_letters;

  // The user or the system gave the form another size.
  std::function<void(QSize content)> on_content_resized;
  // The band needs another height.
  std::function<void()> on_band_changed;
  // The window has come to a screen of another scale.
  std::function<void()> on_scale_changed;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void lay_out();
  // The height of the bar in a window of that size; its letters are those of that size then.
  int bar_height(QSize window);
  // The height of bar and band in a window of that size.
  int head_height(QSize window);
  // The same for a window that is to have that content below them.
  int head_height_above(QSize content);

  QMenuBar* bar_;
  QPointer<QWidget> band_;
  FormCanvas* canvas_;
  MenuTree menus_;
  double scale_ = 0;
  bool fitting_ = false;
};

}  // namespace lineweir

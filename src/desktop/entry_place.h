#pragma once

#include <QPoint>
#include <functional>
#include <optional>

class QWidget;

namespace lineweir {

class MainWindow;

// Where the window opens in which a caller's data are typed: beside or below the rows, and off the
// keys that answer callers and mark them ready. A place that the user has given it stays.
class EntryPlace {
 public:
  // `main_window` gives the main form's window, or null while there is none.
  explicit EntryPlace(std::function<MainWindow*()> main_window)
      : main_window_(std::move(main_window)) {}

  // Puts the window, which isn't shown yet, in its place.
  void place(QWidget& window);

 private:
  bool moved_by_user(const QWidget& window) const;

  std::function<MainWindow*()> main_window_;
  // The place of its content that it was given last.
  std::optional<QPoint> given_;
};

}  // namespace lineweir

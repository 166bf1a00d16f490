#pragma once

#include <QObject>
#include <functional>
#include <string>

class QWindow;

namespace lineweir {

// F1 in any window of the console opens the manual for that window.
class ManualKey final : public QObject {
 public:
  ManualKey();

  // The name of the window's form; empty for a window of which none is known.
  std::function<std::string(const QWindow& window)> form_of;
  std::function<void(const std::string& form_name)> open;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace lineweir

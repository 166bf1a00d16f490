#pragma once

#include <QObject>

class QWidget;

namespace lineweir {

// For measurements: where the environment variable LINEWEIR_REPORT_PAINT is set, prints "painted"
// when the window has been painted for the first time.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(QWidget* window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* window_;
};

}  // namespace lineweir

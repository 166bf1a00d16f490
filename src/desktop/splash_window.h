#pragma once

#include <QWidget>

namespace lineweir {

// A window without a frame of the system's: it looks like a piece of the main form's face, with an
// edge that tells it from whatever it stands on.
class SplashWindow final : public QWidget {
 public:
  explicit SplashWindow(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace lineweir

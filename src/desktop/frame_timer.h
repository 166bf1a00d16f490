#pragma once

#include <QTimer>
#include <functional>

namespace lineweir {

// Gathers changes and shows them together, once a frame, however many there are.
class FrameTimer {
 public:
  static constexpr int frame_milliseconds = 16;

  explicit FrameTimer(std::function<void()> show) : show_(std::move(show)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { show_(); });
  }

  // Something changed: it is shown within a frame.
  void mark() {
    if (!timer_.isActive()) timer_.start(frame_milliseconds);
  }

  // Shows what has changed now.
  void flush() {
    timer_.stop();
    show_();
  }

 private:
  std::function<void()> show_;
  QTimer timer_;
};

}  // namespace lineweir

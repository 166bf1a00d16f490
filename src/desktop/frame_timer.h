#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <functional>

namespace lineweir {

// Gathers changes and shows them together, at most once a frame, however many there are. The first
// one after a quiet time is shown as soon as the handler that made it is through.
class FrameTimer {
 public:
  static constexpr int frame_milliseconds = 16;

  explicit FrameTimer(std::function<void()> show) : show_(std::move(show)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { show_now(); });
  }

  // Something changed: it is shown within a frame.
  void mark() {
    if (timer_.isActive()) return;
    const qint64 since = shown_.isValid() ? shown_.elapsed() : frame_milliseconds;
    timer_.start(
        static_cast<int>(std::clamp<qint64>(frame_milliseconds - since, 0, frame_milliseconds)));
  }

  // Shows what has changed now.
  void flush() {
    timer_.stop();
    show_now();
  }

 private:
  void show_now() {
    shown_.start();
    show_();
  }

  std::function<void()> show_;
  QTimer timer_;
  QElapsedTimer shown_;
};

}  // namespace lineweir

#pragma once

#include <QApplication>

#include "platform/attention_sound.h"

namespace lineweir {

// The bell of the display, which the desktop's own settings turn into a sound. It goes out with the
// next drawing, so no sound server is waited for.
class AlertBell final : public platform::AttentionSound {
 public:
  void play() override { QApplication::beep(); }
};

}  // namespace lineweir

#pragma once

#include "platform/attention_sound.h"

namespace lineweir::platform {

// Counts instead of sounding.
class ScriptedAttentionSound final : public AttentionSound {
 public:
  void play() override { ++played; }

  int played = 0;
};

}  // namespace lineweir::platform

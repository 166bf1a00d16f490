#pragma once

namespace lineweir::platform {

// The sound by which the workstation calls for its user's attention.
class AttentionSound {
 public:
  virtual ~AttentionSound() = default;

  // Begins the sound and returns at once.
  virtual void play() = 0;
};

}  // namespace lineweir::platform

#pragma once

#include "elements/form.h"

namespace lineweir {

struct ConsoleState;

// The window's state and size that a user's profile asks for while the main form isn't shown yet.
// SetStateTimer applies them once it is.
class ProfileWindow {
 public:
  explicit ProfileWindow(ConsoleState& state);

  int SetStateTo = window_normal;
  // Twips, of the window in its normal state; only for the group of the profile.
  int SetStateToHeight = 0;
  int SetStateToWidth = 0;
  int SetStateMessGroup = 0;

 private:
  void SetStateTimer_Timer();

  ConsoleState& state_;
};

}  // namespace lineweir

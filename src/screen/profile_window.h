#pragma once

#include <optional>

#include "elements/form.h"

namespace lineweir {

class WindowSize;
struct ConsoleState;
struct WindowTarget;

// The window's state and size that a user's profile asks for. While the main form isn't shown they
// wait, and SetStateTimer applies them once it is.
class ProfileWindow {
 public:
  ProfileWindow(ConsoleState& state, const WindowSize& window);

  // As a profile holds them, the height without the menu bar; what it doesn't hold stays. The size
  // is taken only for the profile of the present group and in the normal state, and only where it
  // isn't nearly the present one.
  void take(std::optional<int> height, std::optional<int> width, std::optional<int> window_state,
            int group);

  int SetStateTo = window_normal;
  // Twips, of the window in its normal state; only for the group of the profile.
  int SetStateToHeight = 0;
  int SetStateToWidth = 0;
  int SetStateMessGroup = 0;

 private:
  void SetStateTimer_Timer();
  void apply(const WindowTarget& wanted, int group);

  ConsoleState& state_;
  const WindowSize& window_;
};

}  // namespace lineweir

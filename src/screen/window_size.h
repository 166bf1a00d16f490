#pragma once

#include <optional>

namespace lineweir {

struct Console;

// A window's size and state as the settings keep them.
struct WindowTarget {
  int height;
  int width;
  int state;
};

// The main window's size: its resizing, its design size, its setup button.
class WindowSize {
 public:
  explicit WindowSize(Console& console);

  // The size that the next RedefineScreen gives the window; nothing where it has been given.
  std::optional<WindowTarget> target;

  // The present size as the settings keep it: without the menu bar, where that is shown.
  WindowTarget present() const;

  // Takes a stored size as the next target; the menu bar is added where it is shown.
  void restore(const WindowTarget& stored);

  // Gives the window its target size, if there is one.
  void apply_target();

  // Puts the form at its design size for that many rows, 0 for those now visible.
  void SetToRoot(int rows);

  void ResetLineweirSize_Click();
  void OptionsButton_Click();
  void timResize_Timer();

 private:
  Console& console_;
};

}  // namespace lineweir

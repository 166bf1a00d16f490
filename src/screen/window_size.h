#pragma once

#include <optional>

namespace lineweir {

struct ConsoleState;

// A window's size and state as the settings keep them.
struct WindowTarget {
  int height;
  int width;
  int state;
};

// The main window's size: the one that it is to have, the one that it has, that of its design.
class WindowSize {
 public:
  explicit WindowSize(ConsoleState& state) : state_(state) {}

  // The size and state that the next RedefineScreen gives the window; nothing where they have been
  // given.
  std::optional<WindowTarget> target;

  // Set while the socket is started anew: the next RedefineScreen leaves the window as the user has
  // it, and clears the flag.
  bool RestartingSocket = false;

  // The present size as the settings keep it: without the menu bar, where that is shown.
  WindowTarget present() const;

  // Takes a stored size as the next target; the menu bar is added where it is shown. A state that
  // isn't one is the normal one.
  void restore(const WindowTarget& stored);

  // A stored size and state as the window would have them.
  WindowTarget on_screen(const WindowTarget& stored) const;

  // RedefineScreen gives the window the target's size before the layout and its state behind it;
  // with that the target is used up.
  void give_target_size();
  void give_target_state();

  // Puts the form at its design size for that many rows, 0 for those now visible.
  void SetToRoot(int rows);

 private:
  ConsoleState& state_;
};

}  // namespace lineweir

#pragma once

namespace lineweir {

class DisplayOptions;
class Fonts;
class ScreenLayout;
class WindowSize;
struct ConsoleState;

// What the user does to the main window: sizes it, puts it back at its design size, hides and shows
// its menus.
class WindowHandling {
 public:
  WindowHandling(ConsoleState& state, WindowSize& window, DisplayOptions& display,
                 ScreenLayout& layout, Fonts& fonts);

 private:
  void ResetLineweirSize_Click();
  void OptionsButton_Click();
  void timResize_Timer();

  ConsoleState& state_;
  WindowSize& window_;
  DisplayOptions& display_;
  ScreenLayout& layout_;
  Fonts& fonts_;
};

}  // namespace lineweir

#pragma once

#include <array>

#include "elements/control_array.h"
#include "elements/label.h"
#include "elements/line.h"
#include "elements/picture.h"
#include "elements/text_box.h"

namespace lineweir {

// The place of RedClock on its dial, as designed.
inline constexpr int red_clock_left = 205;
inline constexpr int red_clock_top = 375;

// The two backgrounds; all else on the main form stands on them.
struct BackgroundElements {
  explicit BackgroundElements(Form& form);

  // Holders, never shown: the picture of each is the name of its file.
  Picture BlackScreenTop;
  Picture GreyScreenTop;
  Picture BlackScreenBottom;
  Picture GreyScreenBottom;

  Picture ScreenTop;
  Picture ScreenTopImage;
  Picture ScreenBottom;
  Picture ScreenBottomImage;
  Picture LowCover;
};

inline constexpr int most_caller_notes = 4;

// A picture button and what lies on it.
struct PanelButton {
  Picture& button;
  Picture& image;
  Label& label;
};

// The buttons, the lamp of the link and the message boxes below the rows.
struct PanelElements {
  explicit PanelElements(Form& form);

  Picture Drop2, Drop2Image;
  Label Drop2Label;
  Picture Hold2, Hold2Image;
  Label Hold2Label;
  // Above the two before, which they cover in producer mode.
  Picture Drop1, Drop1Image;
  Label Drop1Label;
  Picture Hold1, Hold1Image;
  Label Hold1Label;
  Picture NextButton, NextButtonImage;
  Label CenterLabel1;
  Picture NextToConfButton, NextToConfButtonImage;
  Label CenterLabel2;
  Picture Dial, DialImage;
  Label CenterLabel3;
  Picture OptionsButton, OptionsButtonImage;
  Label SetupLabel;

  Shape Shape1;
  Label Label1;
  TextBox Text1;
  TextBox Text2;
  Label LogWaiting;
  Label ServerSilence;
  // What the host has to know of the callers on air and of the next one, one caller each.
  ControlArray<Label> CallerNote;

  std::array<PanelButton, 8> panel_buttons();
};

// The time clock, the event clock and their digital twins.
struct ClockElements {
  explicit ClockElements(Form& form);

  Label lblTime;
  Picture picRealTimeClock;
  Picture imgTimeClock;
  Label RealTime;
  Line HourHand;
  Line MinuteHand;
  Line SecondHand;

  Picture picShowTimeClock;
  Picture imgShowClock;
  Label CountDownTime;
  Label StatusText;
  Line CounterHand;
  Picture RedClock;
  Picture RedClockImage;
  Line RedHand;

  TextBox RealTime2;
  TextBox CountDownTime2;
  TextBox StatusText2;
};

}  // namespace lineweir

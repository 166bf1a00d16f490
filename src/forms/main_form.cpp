#include "forms/main_form.h"

#include "forms/layout.h"
#include "lines/line_table.h"

namespace lineweir {
namespace {

// Lengths of the clocks' hands and the places of their near ends, in twips.
constexpr int hand_x = 848;
constexpr int hand_y = 1018;
constexpr int second_length = 560;
constexpr int minute_length = 480;
constexpr int hour_length = 330;
constexpr int counter_length = 560;
constexpr int red_hand_center = 643;
constexpr int dial_size = 1285;

void draw_down(Line& hand, int x, int y, int length) {
  hand.x1 = x;
  hand.x2 = x;
  hand.y1 = y;
  hand.y2 = y + length;
}

}  // namespace

MainForm::MainForm()
    : Form("Lineweir"),
      MenuElements(static_cast<Form&>(*this)),
      BackgroundElements(static_cast<Form&>(*this)),
      RowElements(static_cast<Form&>(*this)),
      PanelElements(static_cast<Form&>(*this)),
      ClockElements(static_cast<Form&>(*this)),
      TimerElements(static_cast<Form&>(*this)) {
  width = root_width(lines_of_small_layout);
  height = root_height(lines_of_small_layout, true);
  Label9.caption = "Conf";
  Label10.caption = "Main";
  // Each stands over the middle of its row buttons.
  Label9.alignment = align_center;
  Label10.alignment = align_center;
  DataRowImage(0).set_container(&DataRow(0));

  for (Control* on_panel :
       {static_cast<Control*>(&NextButton), static_cast<Control*>(&NextToConfButton),
        static_cast<Control*>(&Dial), static_cast<Control*>(&OptionsButton),
        static_cast<Control*>(&Shape1), static_cast<Control*>(&Label1),
        static_cast<Control*>(&Text1), static_cast<Control*>(&Text2),
        static_cast<Control*>(&LogWaiting), static_cast<Control*>(&ServerSilence),
        static_cast<Control*>(&picRealTimeClock), static_cast<Control*>(&picShowTimeClock),
        static_cast<Control*>(&RealTime2), static_cast<Control*>(&CountDownTime2),
        static_cast<Control*>(&StatusText2)}) {
    on_panel->set_container(&ScreenBottom);
  }
  for (int note = 0; note < most_caller_notes; ++note) {
    CallerNote(note).set_container(&ScreenBottom);
  }

  imgTimeClock.move(red_clock_left, red_clock_top, dial_size, dial_size);
  imgShowClock.move(red_clock_left, red_clock_top, dial_size, dial_size);
  RedClock.move(red_clock_left, red_clock_top, dial_size, dial_size);
  RedClockImage.move(0, 0, dial_size, dial_size);
  RealTime.move(0, 30, 1695, 330);
  CountDownTime.move(0, 15, 1695, 180);
  StatusText.move(0, 195, 1695, 180);
  draw_down(SecondHand, hand_x, hand_y, second_length);
  draw_down(MinuteHand, hand_x, hand_y, minute_length);
  draw_down(HourHand, hand_x, hand_y, hour_length);
  draw_down(CounterHand, hand_x, hand_y, counter_length);
  draw_down(RedHand, red_hand_center, red_hand_center, counter_length);
}

}  // namespace lineweir

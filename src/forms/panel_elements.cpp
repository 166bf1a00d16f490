#include "forms/panel_elements.h"

#include "forms/picture_names.h"

namespace lineweir {
namespace {

// The parts that lie on a picture button and forward its events to it.
void lay_on(Picture& button, Picture& image, Label& label, std::string_view caption,
            std::string_view picture) {
  image.set_container(&button);
  label.set_container(&button);
  label.caption = caption;
  label.alignment = align_center;
  button.picture = picture;
}

}  // namespace

BackgroundElements::BackgroundElements(Form& form)
    : BlackScreenTop(form, "BlackScreenTop"),
      GreyScreenTop(form, "GreyScreenTop"),
      BlackScreenBottom(form, "BlackScreenBottom"),
      GreyScreenBottom(form, "GreyScreenBottom"),
      ScreenTop(form, "ScreenTop"),
      ScreenTopImage(form, "ScreenTopImage"),
      ScreenBottom(form, "ScreenBottom"),
      ScreenBottomImage(form, "ScreenBottomImage"),
      LowCover(form, "LowCover") {
  for (Picture* holder : {&BlackScreenTop, &GreyScreenTop, &BlackScreenBottom, &GreyScreenBottom}) {
    holder->visible = false;
  }
  ScreenTopImage.set_container(&ScreenTop);
  ScreenTopImage.picture = pictures::BlackScreenTop;
  ScreenBottomImage.set_container(&ScreenBottom);
  ScreenBottomImage.picture = pictures::BlackScreenBottom;
  LowCover.picture = pictures::LowCoverMetal;
  LowCover.visible = false;
}

PanelElements::PanelElements(Form& form)
    : Drop2(form, "Drop2"),
      Drop2Image(form, "Drop2Image"),
      Drop2Label(form, "Drop2Label"),
      Hold2(form, "Hold2"),
      Hold2Image(form, "Hold2Image"),
      Hold2Label(form, "Hold2Label"),
      Drop1(form, "Drop1"),
      Drop1Image(form, "Drop1Image"),
      Drop1Label(form, "Drop1Label"),
      Hold1(form, "Hold1"),
      Hold1Image(form, "Hold1Image"),
      Hold1Label(form, "Hold1Label"),
      NextButton(form, "NextButton"),
      NextButtonImage(form, "NextButtonImage"),
      CenterLabel1(form, "CenterLabel1"),
      NextToConfButton(form, "NextToConfButton"),
      NextToConfButtonImage(form, "NextToConfButtonImage"),
      CenterLabel2(form, "CenterLabel2"),
      Dial(form, "Dial"),
      DialImage(form, "DialImage"),
      CenterLabel3(form, "CenterLabel3"),
      OptionsButton(form, "OptionsButton"),
      OptionsButtonImage(form, "OptionsButtonImage"),
      SetupLabel(form, "SetupLabel"),
      Shape1(form, "Shape1"),
      Label1(form, "Label1"),
      Text1(form, "Text1"),
      Text2(form, "Text2"),
      LogWaiting(form, "LogWaiting"),
      ServerSilence(form, "ServerSilence"),
      CallerNote(form, "CallerNote") {
  lay_on(Drop1, Drop1Image, Drop1Label, "&DROP", pictures::DropSmallUp);
  lay_on(Hold1, Hold1Image, Hold1Label, "&HOLD", pictures::DropSmallUp);
  lay_on(Drop2, Drop2Image, Drop2Label, "D&ROP", pictures::DropSmallUp);
  lay_on(Hold2, Hold2Image, Hold2Label, "HO&LD", pictures::DropSmallUp);
  lay_on(NextButton, NextButtonImage, CenterLabel1, "&NEXT TO MAIN", pictures::Center1Up);
  lay_on(NextToConfButton, NextToConfButtonImage, CenterLabel2, "NE&XT TO CONF",
         pictures::Center1Up);
  lay_on(Dial, DialImage, CenterLabel3, "D&IAL", pictures::Center1Up);
  lay_on(OptionsButton, OptionsButtonImage, SetupLabel, "&SETUP", pictures::SetupDown);
  // Their lettering stands at a fraction of the button's width.
  Drop1Label.alignment = align_left;
  Hold1Label.alignment = align_left;
  Shape1.fill_color = color_green;
  Text1.multi_line = true;
  Text2.visible = false;
  Text2.enabled = false;
  Text2.hint = "Enter sends the message, Esc leaves it";
  LogWaiting.visible = false;
  ServerSilence.visible = false;
  ServerSilence.alignment = align_center;
  CallerNote(0).visible = false;
  for (int note = 1; note < most_caller_notes; ++note) CallerNote.load(note);
}

std::array<PanelButton, 8> PanelElements::panel_buttons() {
  return {{{Drop1, Drop1Image, Drop1Label},
           {Hold1, Hold1Image, Hold1Label},
           {Drop2, Drop2Image, Drop2Label},
           {Hold2, Hold2Image, Hold2Label},
           {NextButton, NextButtonImage, CenterLabel1},
           {NextToConfButton, NextToConfButtonImage, CenterLabel2},
           {Dial, DialImage, CenterLabel3},
           {OptionsButton, OptionsButtonImage, SetupLabel}}};
}

ClockElements::ClockElements(Form& form)
    : lblTime(form, "lblTime"),
      picRealTimeClock(form, "picRealTimeClock"),
      imgTimeClock(form, "imgTimeClock"),
      RealTime(form, "RealTime"),
      HourHand(form, "HourHand", &picRealTimeClock),
      MinuteHand(form, "MinuteHand", &picRealTimeClock),
      SecondHand(form, "SecondHand", &picRealTimeClock),
      picShowTimeClock(form, "picShowTimeClock"),
      imgShowClock(form, "imgShowClock"),
      CountDownTime(form, "CountDownTime"),
      StatusText(form, "StatusText"),
      CounterHand(form, "CounterHand", &picShowTimeClock),
      RedClock(form, "RedClock"),
      RedClockImage(form, "RedClockImage"),
      RedHand(form, "RedHand", &RedClock),
      RealTime2(form, "RealTime2"),
      CountDownTime2(form, "CountDownTime2"),
      StatusText2(form, "StatusText2") {
  imgTimeClock.picture = pictures::TimeDial;
  imgShowClock.picture = pictures::ShowDial;
  RedClockImage.picture = pictures::RedDial;
  for (Picture* clock : {&picRealTimeClock, &picShowTimeClock, &RedClock}) clock->visible = false;
  for (Control* part : {static_cast<Control*>(&imgTimeClock), static_cast<Control*>(&RealTime)}) {
    part->set_container(&picRealTimeClock);
  }
  for (Control* part : {static_cast<Control*>(&imgShowClock), static_cast<Control*>(&CountDownTime),
                        static_cast<Control*>(&StatusText), static_cast<Control*>(&RedClock)}) {
    part->set_container(&picShowTimeClock);
  }
  RedClockImage.set_container(&RedClock);
  for (Label* text : {&RealTime, &CountDownTime, &StatusText}) text->alignment = align_center;
  for (TextBox* large : {&RealTime2, &CountDownTime2, &StatusText2}) {
    large->visible = false;
    large->alignment = align_center;
  }
}

}  // namespace lineweir

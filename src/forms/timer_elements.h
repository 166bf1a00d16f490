#pragma once

#include "elements/timer.h"

namespace lineweir {

// The timers of the main form, with the state and interval in which they are made.
struct TimerElements {
  explicit TimerElements(Form& form)
      : Timer1(form, "Timer1", true, 100),
        Timer2(form, "Timer2", false, 500),
        Timer4(form, "Timer4", false, 10),
        Timer5(form, "Timer5", true, 400),
        MessageTimer(form, "MessageTimer", true, 1000),
        timResize(form, "timResize", true, 500),
        ZorderTimer(form, "ZorderTimer", false, 100),
        LoginTimer(form, "LoginTimer", false, 20),
        SetStateTimer(form, "SetStateTimer", false, 100),
        WinsTimer(form, "WinsTimer", false, 50),
        SyncTimeTimer(form, "SyncTimeTimer", false, 10000),
        GetPhones(form, "GetPhones", false, 100),
        ShutDownTimer(form, "ShutDownTimer", false, 30000),
        UserProfileTimer(form, "UserProfileTimer", false, 500),
        timForceGroupChange(form, "timForceGroupChange", false, 500),
        MarkerPointTimer(form, "MarkerPointTimer", false, 500),
        LabelMoveTimer(form, "LabelMoveTimer", false, 50),
        DigiClockCheck(form, "DigiClockCheck", false, 100),
        SwitchConsoleTimer(form, "SwitchConsoleTimer", false, 250),
        RemoteNextTimer(form, "RemoteNextTimer", false, 30000) {}

  Timer Timer1;
  Timer Timer2;
  Timer Timer4;
  Timer Timer5;
  Timer MessageTimer;
  Timer timResize;
  Timer ZorderTimer;
  Timer LoginTimer;
  Timer SetStateTimer;
  Timer WinsTimer;
  Timer SyncTimeTimer;
  Timer GetPhones;
  Timer ShutDownTimer;
  Timer UserProfileTimer;
  Timer timForceGroupChange;
  Timer MarkerPointTimer;
  Timer LabelMoveTimer;
  Timer DigiClockCheck;
  Timer SwitchConsoleTimer;
  Timer RemoteNextTimer;
};

}  // namespace lineweir

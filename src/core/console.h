#pragma once

#include "boxlink/serial_port_control.h"
#include "boxlink/status_decoder.h"
#include "callerdata/call_log.h"
#include "clocks/clock_engine.h"
#include "core/about_box.h"
#include "core/line_table.h"
#include "core/message_box.h"
#include "core/program_state.h"
#include "core/startup.h"
#include "core/timer_runner.h"
#include "core/trace.h"
#include "platform/services.h"
#include "screen/blink.h"
#include "screen/main_form.h"
#include "screen/row_display.h"
#include "screen/screen_layout.h"

namespace lineweir {

// One console: its state, its forms and the subsystems that work on them, and nothing else.
// Members are made from top to bottom and end in the opposite order. Each subsystem wires the
// events of the elements that it handles when it is made.
struct Console {
  explicit Console(const platform::Services& platform_services);
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  platform::Services services;

  ProgramState program;
  LineTable lines;

  MainForm Lineweir;
  AboutForm AboutBox;
  MessageBoxForm MyMsgbox;
  TraceForm DebugForm;

  Trace trace;
  Messages messages;
  RowDisplay rows;
  ScreenLayout layout;
  CallLog call_log;
  StatusDecoder decoder;
  SerialPortControl port;
  ClockEngine clocks;
  Blink blink;
  Startup startup;

  TimerRunner timers;
};

}  // namespace lineweir

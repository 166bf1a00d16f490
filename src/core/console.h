#pragma once

#include <deque>
#include <vector>

#include "boxlink/line_events.h"
#include "boxlink/line_steps.h"
#include "boxlink/serial_port_control.h"
#include "boxlink/status_decoder.h"
#include "callcontrol/dial_pad.h"
#include "callcontrol/dial_state.h"
#include "callcontrol/dial_window.h"
#include "callcontrol/line_actions.h"
#include "callcontrol/modes.h"
#include "callcontrol/next_caller.h"
#include "callcontrol/phone_command.h"
#include "callcontrol/remote_next.h"
#include "callcontrol/remote_port.h"
#include "callcontrol/socket_trap.h"
#include "callcontrol/switch_console.h"
#include "callerdata/call_log.h"
#include "callerdata/call_log_file.h"
#include "callerdata/caller_data.h"
#include "callerdata/caller_data_form.h"
#include "callerdata/caller_data_sender.h"
#include "callerdata/caller_memory.h"
#include "callerdata/database_viewer_form.h"
#include "callerdata/import_preview_form.h"
#include "callerdata/log_data_form.h"
#include "callerdata/log_data_options.h"
#include "callerdata/log_import.h"
#include "callerdata/log_output.h"
#include "callerdata/log_viewer.h"
#include "callerdata/received_data.h"
#include "clocks/clock_engine.h"
#include "clocks/clock_menu.h"
#include "clocks/clock_state.h"
#include "clocks/set_time.h"
#include "clocks/show_data_editor.h"
#include "clocks/show_data_form.h"
#include "clocks/show_plan_store.h"
#include "core/about_box.h"
#include "core/hot_keys.h"
#include "core/line_table.h"
#include "core/message_box.h"
#include "core/program_state.h"
#include "core/settings.h"
#include "core/shutdown.h"
#include "core/startup.h"
#include "core/timer_runner.h"
#include "core/trace.h"
#include "messages/flash_message_form.h"
#include "messages/quick_line.h"
#include "platform/services.h"
#include "screen/blink.h"
#include "screen/button_panel.h"
#include "screen/button_press.h"
#include "screen/column_choice.h"
#include "screen/display_option_form.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/group_choice.h"
#include "screen/hybrid_choice.h"
#include "screen/main_form.h"
#include "screen/profile_window.h"
#include "screen/row_display.h"
#include "screen/screen_faces.h"
#include "screen/screen_layout.h"
#include "screen/standby_form.h"
#include "screen/visible_rows.h"
#include "screen/window_size.h"
#include "serverlink/client_callback.h"
#include "serverlink/login_exchange.h"
#include "serverlink/login_form.h"
#include "serverlink/login_state.h"
#include "serverlink/remote_link.h"
#include "serverlink/remote_session.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "serverlink/time_sync.h"

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
  DialState dial;
  ClockState clock_state;
  ShowPlanStore show_plan{services.files};
  LoginState login;

  MainForm Lineweir;
  AboutForm AboutBox;
  MessageBoxForm MyMsgbox;
  TraceForm DebugForm;
  StandbyForm Standby;
  DisplayOptionWindow DisplayOptionForm;
  ShowDataForm Form2;
  SetTimeForm Form3;
  CallerDataForm Form4;
  LogDataWindow LogDataForm;
  DatabaseViewerForm DatabaseViewer;
  ImportPreviewForm ImportPreview;
  LoginWindow LoginForm;
  FlashMessageForm FlashMessA;
  DialWindow DialForm;

  Trace trace;
  Messages messages;
  RemoteLink remote;
  ServerLink server;
  ServerConnection server_connection;
  LoginExchange login_exchange;
  RemoteSession remote_session;
  TimeSync time_sync;
  RetryingHandlers retrying;
  PhoneCommands phone;
  ClientCallback client_callback;
  Modes modes;
  RowDisplay rows;
  ButtonPanel panel;
  ButtonPress button_press;
  ScreenFaces faces;
  ScreenLayout layout;
  VisibleRows visible_rows;
  DisplayOptions display;
  ColumnChoice column_choice;
  HybridChoice hybrid_choice;
  GroupChoice group_choice;
  WindowSize window;
  ProfileWindow profile_window;
  Fonts fonts;
  CallLog call_log;
  CallLogFile call_log_file;
  CallerDataSender data_sender;
  CallerDataEntry caller_data;
  CallerMemory caller_memory;
  ReceivedData received_data;
  LogDataOptions log_data_options;
  LogViewer log_viewer;
  LogOutput log_output;
  LogImport log_import;
  LineSteps line_steps;
  StatusDecoder decoder;
  LineEvents line_events;
  SerialPortControl port;
  RemotePortControl remote_port;
  ClockEngine clocks;
  NextCaller next_caller;
  LineActions line_actions;
  DialPad dial_pad;
  SwitchConsole switch_console;
  RemoteNextControl remote_next;
  ClockMenu clock_menu;
  SetTime set_time;
  ShowDataEditor show_editor;
  Blink blink;
  QuickLine quick_line;
  HotKeys hot_keys;
  Settings settings;
  Startup startup;
  Shutdown shutdown;

  std::deque<TimerRunner> timers;

  // Every form, in the order of their making.
  std::vector<Form*> forms();
};

}  // namespace lineweir

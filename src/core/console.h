#pragma once

#include <deque>
#include <vector>

#include "boxlink/line_steps.h"
#include "boxlink/serial_link.h"
#include "boxlink/serial_port_control.h"
#include "boxlink/status_decoder.h"
#include "callcontrol/dial_pad.h"
#include "callcontrol/hybrid_choice.h"
#include "callcontrol/line_actions.h"
#include "callcontrol/modes.h"
#include "callcontrol/next_caller.h"
#include "callcontrol/next_key.h"
#include "callcontrol/phone_choice.h"
#include "callcontrol/phone_command.h"
#include "callcontrol/save_and_ready.h"
#include "callcontrol/switch_console.h"
#include "callcontrol/switch_console_port.h"
#include "callerdata/call_log.h"
#include "callerdata/call_log_file.h"
#include "callerdata/call_log_watch.h"
#include "callerdata/caller_data.h"
#include "callerdata/caller_data_sender.h"
#include "callerdata/caller_flag_entry.h"
#include "callerdata/caller_memory.h"
#include "callerdata/caller_notes.h"
#include "callerdata/known_callers.h"
#include "callerdata/line_texts.h"
#include "callerdata/log_data_options.h"
#include "callerdata/log_import.h"
#include "callerdata/log_output.h"
#include "callerdata/log_viewer.h"
#include "callerdata/received_data.h"
#include "callerdata/user_field_title.h"
#include "clocks/clock_engine.h"
#include "clocks/clock_menu.h"
#include "clocks/set_time.h"
#include "clocks/show_data_editor.h"
#include "clocks/show_plan_store.h"
#include "core/first_connection.h"
#include "core/hot_keys.h"
#include "core/restored_settings.h"
#include "core/settings.h"
#include "core/shutdown.h"
#include "core/startup.h"
#include "core/timer_runner.h"
#include "link/link_watch.h"
#include "link/links.h"
#include "messages/flash_message.h"
#include "messages/hot_list.h"
#include "messages/message_display.h"
#include "messages/message_sender.h"
#include "messages/quick_line.h"
#include "screen/band.h"
#include "screen/blink.h"
#include "screen/button_panel.h"
#include "screen/button_press.h"
#include "screen/column_choice.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/profile_window.h"
#include "screen/row_choice.h"
#include "screen/row_display.h"
#include "screen/row_states.h"
#include "screen/screen_faces.h"
#include "screen/screen_layout.h"
#include "screen/visible_rows.h"
#include "screen/window_handling.h"
#include "screen/window_size.h"
#include "serverlink/access_rights.h"
#include "serverlink/client_callback.h"
#include "serverlink/group_choice.h"
#include "serverlink/group_elsewhere.h"
#include "serverlink/group_session.h"
#include "serverlink/held_objects.h"
#include "serverlink/line_count_change.h"
#include "serverlink/line_events.h"
#include "serverlink/login_dialogs.h"
#include "serverlink/login_exchange.h"
#include "serverlink/profile_files.h"
#include "serverlink/profile_flags.h"
#include "serverlink/received_lines.h"
#include "serverlink/received_memory.h"
#include "serverlink/received_profile.h"
#include "serverlink/remote_objects_link.h"
#include "serverlink/remote_session.h"
#include "serverlink/remote_studio.h"
#include "serverlink/remote_watch.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "serverlink/server_notices.h"
#include "serverlink/server_phones.h"
#include "serverlink/server_watch.h"
#include "serverlink/socket_link.h"
#include "serverlink/studio_groups.h"
#include "serverlink/studio_shape.h"
#include "serverlink/time_sync.h"
#include "serverlink/user_profile.h"
#include "state/console_state.h"

namespace lineweir {

// One console: its state and the subsystems that work on it, and nothing else. Members are made
// from top to bottom and end in the opposite order; each names in its constructor what it works
// with, so that it knows only what stands above it. Each wires the events of the elements that it
// handles when it is made.
struct Console : ConsoleState {
  explicit Console(const platform::Services& platform_services);
  // Not inline, as it ends every subsystem and form: each file that makes a console would hold it.
  ~Console();

  // The ways to the studio.
  ServerLink server;
  HeldObjects remote;
  SerialLink serial_link;
  SocketLink socket_link;
  RemoteObjectsLink remote_link;
  Links links;
  LinkWatch link;

  // Clocks and show plan.
  ShowPlanStore show_plan;
  ClockEngine clocks;
  ClockMenu clock_menu;
  SetTime set_time;
  ShowDataEditor show_editor;

  // The screen.
  RowDisplay rows;
  ButtonPanel panel;
  ButtonPress button_press;
  Blink blink;
  Fonts fonts;
  VisibleRows visible_rows;
  DisplayOptions display;
  ColumnChoice column_choice;
  ScreenFaces faces;
  WindowSize window;
  ProfileWindow profile_window;
  RowStates row_states;
  Band band;
  ScreenLayout layout;
  RowChoice row_choice;
  WindowHandling window_handling;

  // Caller data and the call log.
  CallLog call_log;
  CallLogFile call_log_file;
  CallLogWatch call_log_watch;
  UserFieldTitle user_field_title;
  CallerDataSender data_sender;
  LineTexts line_texts;
  KnownCallers known_callers;
  CallerNotes caller_notes;
  CallerMemory caller_memory;
  CallerFlagEntry caller_flag;
  CallerDataEntry caller_data;
  ReceivedData received_data;
  LogDataOptions log_data_options;
  LogViewer log_viewer;
  LogOutput log_output;
  LogImport log_import;

  // Call control.
  PhoneCommands phone;
  NextCaller next_caller;
  SaveAndReady save_and_ready;
  LineActions line_actions;
  SwitchConsolePort switch_console_port;
  NextKey next_key;
  Modes modes;
  PhoneChoice phone_choice;
  HybridChoice hybrid_choice;
  DialPad dial_pad;
  SwitchConsole switch_console;

  // Messages between the seats.
  MessageSender message_sender;
  MessageDisplay message_display;
  HotList hot_list;
  QuickLine quick_line;
  FlashMessage flash_message;

  // The two doors by which the lines' states come in, and the server's session.
  LineSteps line_steps;
  StatusDecoder decoder;
  SerialPortControl port;
  LineEvents line_events;
  ServerConnection server_connection;
  AccessRights access_rights;
  LoginExchange login_exchange;
  ProfileFlags profile_flags;
  ProfileFiles profile_files;
  UserProfile user_profile;
  LineCountChange line_count_change;
  ReceivedProfile received_profile;
  ClientCallback client_callback;
  GroupChoice group_choice;
  TimeSync time_sync;
  ReceivedMemory received_memory;
  ReceivedLines received_lines;
  StudioShape studio_shape;
  StudioGroups studio_groups;
  RemoteStudio remote_studio;
  RemoteSession remote_session;
  RemoteWatch remote_watch;
  GroupSession group_session;
  ServerPhones server_phones;
  ServerNotices server_notices;
  ServerWatch server_watch;
  GroupElsewhere group_elsewhere;
  LoginDialogs login_dialogs;

  // Keys, start and stop.
  HotKeys hot_keys;
  Settings settings;
  RestoredSettings restored_settings;
  FirstConnection first_connection;
  Startup startup;
  Shutdown shutdown;

  std::deque<TimerRunner> timers;

  // Every form, in the order of their making.
  std::vector<Form*> forms();
};

}  // namespace lineweir

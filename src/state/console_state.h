#pragma once

#include "forms/about_form.h"
#include "forms/caller_data_form.h"
#include "forms/caller_flag_form.h"
#include "forms/database_viewer_form.h"
#include "forms/dial_pad_form.h"
#include "forms/display_data_form.h"
#include "forms/flash_message_form.h"
#include "forms/import_preview_form.h"
#include "forms/log_options_form.h"
#include "forms/main_form.h"
#include "forms/set_time_form.h"
#include "forms/show_data_form.h"
#include "forms/standby_form.h"
#include "forms/user_login_form.h"
#include "forms/winsock_options_form.h"
#include "lines/line_table.h"
#include "platform/services.h"
#include "state/clock_state.h"
#include "state/design_scale.h"
#include "state/dial_state.h"
#include "state/login_state.h"
#include "state/message_box.h"
#include "state/program_state.h"
#include "state/socket_trap.h"
#include "state/trace.h"

namespace lineweir {

// What all subsystems of one console share: the world that it uses, the line table, the program's
// values, the forms, the trace and the messages. It knows no subsystem.
struct ConsoleState {
  explicit ConsoleState(const platform::Services& platform_services)
      : services(platform_services) {}
  ConsoleState(const ConsoleState&) = delete;
  ConsoleState& operator=(const ConsoleState&) = delete;

  platform::Services services;

  ProgramState program;
  LineTable lines;
  DialState dial;
  ClockState clock_state;
  LoginState login;
  // That of the last rebuild of the main form: in it stands everything that is on the form.
  DesignScale scale;

  MainForm Lineweir;
  AboutForm AboutBox;
  MessageBoxForm MyMsgbox;
  TraceForm DebugForm;
  StandbyForm Standby;
  DisplayDataForm DisplayOptionForm;
  ShowDataForm Form2;
  SetTimeForm Form3;
  CallerDataForm Form4;
  LogOptionsForm LogDataForm;
  DatabaseViewerForm DatabaseViewer;
  ImportPreviewForm ImportPreview;
  UserLoginForm LoginForm;
  WinsockOptionsForm WinsockOptions;
  FlashMessageForm FlashMessA;
  DialPadForm DialForm;
  CallerFlagForm FlagForm;

  Trace trace{program, services.clock, services.files, services.letters, DebugForm};
  Messages messages{*this};
  RetryingHandlers retrying;
};

}  // namespace lineweir

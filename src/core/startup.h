#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"
#include "state/settings_record.h"

namespace lineweir {

class CallLogFile;
class CallerDataEntry;
class DisplayOptions;
class Fonts;
class Links;
class LoginExchange;
class RowDisplay;
class ScreenLayout;
class SerialPortControl;
class ServerConnection;
class ServerLink;
class Settings;
class ShowPlanStore;
class WindowSize;
struct ConsoleState;

// From the entry point to the running main window.
class Startup {
 public:
  Startup(ConsoleState& state, const Links& links, ShowPlanStore& show_plan, ServerLink& server,
          ServerConnection& server_connection, LoginExchange& login_exchange, RowDisplay& rows,
          ScreenLayout& layout, DisplayOptions& display, WindowSize& window, Fonts& fonts,
          CallLogFile& call_log_file, CallerDataEntry& caller_data, SerialPortControl& port,
          Settings& settings);

  // The entry point: returns when the main form is shown.
  void Main(std::string_view command_line);

 private:
  void Form_Load();
  void Form_GotFocus();
  void ZorderTimer_Timer();
  void LoginTimer_Timer();

  // The steps of Form_Load, in their order.
  void note_design();
  void read_command_line();
  void begin_loading();
  void make_rows();
  void start_without_settings();
  void apply_settings(const SettingsRecord& record);
  void restore_menus(const SettingsRecord& record);
  void restore_group(const SettingsRecord& record);
  void restore_port(const SettingsRecord& record);
  void restore_switch_console_port(const SettingsRecord& record);
  void restore_values(const SettingsRecord& record);
  void restore_columns(const SettingsRecord& record);
  void restore_database(const SettingsRecord& record);
  void make_client_id();
  void read_show_data(const SettingsRecord* record);
  void connect(const SettingsRecord* record);
  void connect_socket();
  void fill_group_selector();
  void probe_open_port();
  void restore_phone(const SettingsRecord& record);
  void restore_user_heading(const SettingsRecord& record);
  void restore_mode(const SettingsRecord& record);
  void restore_clocks(const SettingsRecord& record);
  void finish_loading();

  void set_menus_enabled(bool enabled);
  void show_caption();
  void show_time_of_day();

  // Runs one step; a failure gets the start's own reaction, and the start goes on behind it.
  template <class Step>
  void step(Step&& body);
  void react(const Failure& failure);

  ConsoleState& state_;
  const Links& links_;
  ShowPlanStore& show_plan_;
  ServerLink& server_;
  ServerConnection& server_connection_;
  LoginExchange& login_exchange_;
  RowDisplay& rows_;
  ScreenLayout& layout_;
  DisplayOptions& display_;
  WindowSize& window_;
  Fonts& fonts_;
  CallLogFile& call_log_file_;
  CallerDataEntry& caller_data_;
  SerialPortControl& port_;
  Settings& settings_;
  std::string command_line_;
  bool login_needed_ = false;
};

}  // namespace lineweir

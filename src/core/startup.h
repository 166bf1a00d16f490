#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace lineweir {

class CallerDataEntry;
class DisplayOptions;
class FirstConnection;
class Fonts;
class RestoredSettings;
class RowDisplay;
class ScreenLayout;
class SerialPortControl;
class Settings;
class ShowPlanStore;
struct ConsoleState;

// From the entry point to the running main window.
class Startup {
 public:
  Startup(ConsoleState& state, ShowPlanStore& show_plan, RowDisplay& rows, ScreenLayout& layout,
          DisplayOptions& display, Fonts& fonts, CallerDataEntry& caller_data,
          SerialPortControl& port, Settings& settings, RestoredSettings& restored,
          FirstConnection& connection);

  // The entry point: returns when the main form is shown.
  void Main(std::string_view command_line);

  // Called while the start finds no settings file, so that a program with a screen can give a new
  // user what suits that screen: the layout that follows shows it.
  std::function<void()> on_new_user;

 private:
  void Form_Load();
  void Form_GotFocus();
  void ZorderTimer_Timer();

  // The steps of Form_Load, in their order.
  void note_design();
  void read_command_line();
  void begin_loading();
  void make_rows();
  void start_without_settings();
  void make_client_id();
  void fill_group_selector();
  void probe_open_port();
  void finish_loading();

  void set_menus_enabled(bool enabled);
  void show_time_of_day();

  ConsoleState& state_;
  ShowPlanStore& show_plan_;
  RowDisplay& rows_;
  ScreenLayout& layout_;
  DisplayOptions& display_;
  Fonts& fonts_;
  CallerDataEntry& caller_data_;
  SerialPortControl& port_;
  Settings& settings_;
  RestoredSettings& restored_;
  FirstConnection& connection_;
  std::string command_line_;
};

}  // namespace lineweir

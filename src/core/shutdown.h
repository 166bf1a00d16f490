#pragma once

namespace lineweir {

class CallerDataEntry;
class SerialPortControl;
class Links;
class Settings;
class ShowPlanStore;
class UserProfile;
struct ConsoleState;

// From the user's exit back to the system.
class Shutdown {
 public:
  Shutdown(ConsoleState& state, const Links& links, ShowPlanStore& show_plan,
           CallerDataEntry& caller_data, SerialPortControl& port, UserProfile& user_profile,
           Settings& settings);

 private:
  void ExitMenu_Click();
  void Form_Unload();
  // Keeps the settings, then takes leave of the server.
  void leave();
  void close_everything();

  ConsoleState& state_;
  const Links& links_;
  ShowPlanStore& show_plan_;
  CallerDataEntry& caller_data_;
  SerialPortControl& port_;
  UserProfile& user_profile_;
  Settings& settings_;
};

}  // namespace lineweir

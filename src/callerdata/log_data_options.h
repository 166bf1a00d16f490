#pragma once

namespace lineweir {

class CallerDataEntry;
struct ConsoleState;

// The choice of the fields in use, on LogDataForm.
class LogDataOptions {
 public:
  LogDataOptions(ConsoleState& state, CallerDataEntry& caller_data);

 private:
  void LogDataOptionsMenu_Click();
  void Form_Load();
  void ExitLayout_Click();
  void CancelLayout_Click();

  ConsoleState& state_;
  CallerDataEntry& caller_data_;
};

}  // namespace lineweir

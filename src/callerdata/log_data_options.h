#pragma once

namespace lineweir {

struct Console;

// The choice of the fields in use, on LogDataForm.
class LogDataOptions {
 public:
  explicit LogDataOptions(Console& console);

 private:
  void LogDataOptionsMenu_Click();
  void Form_Load();
  void ExitLayout_Click();
  void CancelLayout_Click();

  Console& console_;
};

}  // namespace lineweir

#pragma once

namespace lineweir {

struct Console;

// From the user's exit back to the system.
class Shutdown {
 public:
  explicit Shutdown(Console& console);

 private:
  void ExitMenu_Click();
  void Form_Unload();
  // Keeps the settings, then takes leave of the server.
  void leave();
  void close_everything();

  Console& console_;
};

}  // namespace lineweir

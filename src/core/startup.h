#pragma once

#include <string>
#include <string_view>

namespace lineweir {

struct Console;

// From the entry point to the running main window, and from the user's exit back to the system.
class Startup {
 public:
  explicit Startup(Console& console);

  // The entry point: returns when the main form is shown.
  void Main(std::string_view command_line);

 private:
  void Form_Load();
  void Form_Unload();
  void read_command_line();
  void show_time_of_day();

  Console& console_;
  std::string command_line_;
};

}  // namespace lineweir

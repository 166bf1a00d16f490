#pragma once

namespace lineweir {

class CallerDataEntry;
class ScreenLayout;
class ServerLink;
struct ConsoleState;

// The console goes over to the number of lines that its menu tells while it runs.
class LineCountChange {
 public:
  LineCountChange(ConsoleState& state, ScreenLayout& layout, CallerDataEntry& caller_data,
                  ServerLink& server)
      : state_(state), layout_(layout), caller_data_(caller_data), server_(server) {}

  // Whether the number was another; then the window has its design size for the rows shown. Rows
  // come and go with their lines. What was typed for a line that goes stays with its call; a
  // line that comes shows what the server tells of it, for which it is asked anew.
  bool follow_menu();

 private:
  ConsoleState& state_;
  ScreenLayout& layout_;
  CallerDataEntry& caller_data_;
  ServerLink& server_;
};

}  // namespace lineweir

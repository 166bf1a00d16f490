#pragma once

namespace lineweir {

class RowDisplay;
struct ConsoleState;

// The blink of the rows: ringing lines flash, held and ready ones wink.
class Blink {
 public:
  Blink(ConsoleState& state, RowDisplay& rows);

 private:
  void Timer5_Timer();

  void dark_phase();
  void light_phase();
  void restore_air_text(int line);

  ConsoleState& state_;
  RowDisplay& rows_;
};

}  // namespace lineweir

#pragma once

namespace lineweir {

struct Console;

// The blink of the rows: ringing lines flash, held and ready ones wink.
class Blink {
 public:
  explicit Blink(Console& console);

  void Timer5_Timer();

 private:
  void dark_phase();
  void light_phase();
  void restore_air_text(int line);

  Console& console_;
};

}  // namespace lineweir

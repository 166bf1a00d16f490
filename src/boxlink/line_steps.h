#pragma once

#include "boxlink/line_rules.h"
#include "core/status_letters.h"
#include "platform/system_clock.h"

namespace lineweir {

struct Console;

// A change of a line that is being handled. The look is what the letter shows at that door.
struct LineReport {
  int line;
  char letter;
  char old_letter;
  LetterLook look;
};

// Carries out the steps of the rules of both doors.
class LineSteps {
 public:
  explicit LineSteps(Console& console) : console_(console) {}

  // A step that fails may be run again.
  void run(LineStep step, const LineReport& report);

 private:
  void close_hold(const LineReport& report);
  void close_air(int line);
  void begin_air(const LineReport& report);
  void base_now(int line);
  void open_data_form(const LineReport& report);
  void show_row(const LineReport& report, bool may_be_next);
  platform::DateTime now() const;

  Console& console_;
};

}  // namespace lineweir

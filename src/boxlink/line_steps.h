#pragma once

#include <string_view>

#include "boxlink/line_rules.h"
#include "lines/status_letters.h"
#include "platform/system_clock.h"

namespace lineweir {

class CallLog;
class CallerDataEntry;
class CallerDataSender;
class LineTexts;
class RowDisplay;
struct ConsoleState;

// A change of a line that is being handled. The look is what the letter shows at that door.
struct LineReport {
  // The door's handler, for the reports of what goes out.
  std::string_view handler;
  int line;
  char letter;
  char old_letter;
  LetterLook look;
};

// Carries out the steps of the rules of both doors.
class LineSteps {
 public:
  LineSteps(ConsoleState& state, RowDisplay& rows, CallLog& call_log, CallerDataSender& data_sender,
            LineTexts& line_texts, CallerDataEntry& caller_data)
      : state_(state),
        rows_(rows),
        call_log_(call_log),
        data_sender_(data_sender),
        line_texts_(line_texts),
        caller_data_(caller_data) {}

  // Does a step where it applies. One that fails may be run again.
  void run(const RuleStep& step, const LineReport& report);

 private:
  void run(LineStep step, const LineReport& report);
  void close_hold(int line);
  void close_air(int line);
  void begin_air(int line);
  void open_data_form(const LineReport& report);
  void show_row(const LineReport& report, bool may_be_next);
  platform::DateTime now() const;

  ConsoleState& state_;
  RowDisplay& rows_;
  CallLog& call_log_;
  CallerDataSender& data_sender_;
  LineTexts& line_texts_;
  CallerDataEntry& caller_data_;
};

}  // namespace lineweir

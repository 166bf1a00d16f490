#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "elements/form.h"
#include "elements/text_box.h"

namespace lineweir {

struct Console;

inline constexpr std::string_view trace_file_name = "LWDebug.txt";

// The trace window.
class TraceForm : public Form {
 public:
  TraceForm();

  TextBox Text1{*this, "Text1"};
};

// The trace: lines with date and time in front, in DebugForm and at the end of the trace file,
// which is UTF-8. Nothing is written unless DebugMode is on.
class Trace {
 public:
  explicit Trace(Console& console);

  // TextWrit_WriteTrace. A trace file that can't be written doesn't stop anything.
  void WriteTrace(std::string_view message);

  // Told of each line written, without date and time.
  std::function<void(const std::string& line)> on_line;

 private:
  Console& console_;
};

}  // namespace lineweir

#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "elements/form.h"
#include "elements/text_box.h"
#include "letters/letters.h"

namespace lineweir {

struct ProgramState;

namespace platform {
class Files;
class SystemClock;
}  // namespace platform

inline constexpr std::string_view trace_file_name = "LWDebug.txt";

// The trace window.
class TraceForm : public Form {
 public:
  TraceForm();

  TextBox Text1{*this, "Text1"};
};

// The trace: lines with date and time in front, in DebugForm and at the end of the trace file.
// Nothing is written unless DebugMode is on.
class Trace {
 public:
  Trace(const ProgramState& program, platform::SystemClock& clock, platform::Files& files,
        const Letters& letters, TraceForm& window);

  const Letters& letters() const { return letters_; }

  // TextWrit_WriteTrace. In the file the line is UTF-8. A trace file that can't be written doesn't
  // stop anything.
  void WriteTrace(std::string_view message);

  // Several lines at once, without dates of their own: in the trace file a line with date and time
  // stands in front of them. What they hold is a frame's, so the file has each byte as it is.
  void WriteLines(const std::vector<std::string>& lines);

  // Told of each line written, without date and time.
  std::function<void(const std::string& line)> on_line;

 private:
  void show(std::string_view text);
  void print(std::string_view bytes);

  const ProgramState& program_;
  platform::SystemClock& clock_;
  platform::Files& files_;
  const Letters& letters_;
  TraceForm& window_;
};

}  // namespace lineweir

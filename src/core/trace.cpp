#include "core/trace.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"
#include "core/time_text.h"

namespace lineweir {
namespace {

constexpr std::size_t longest_window_text = 10000;
constexpr auto line_end = "\r\n";

}  // namespace

TraceForm::TraceForm() : Form("DebugForm") {
  caption = "Lineweir - Trace";
  width = 9000;
  height = 6000;
  Text1.multi_line = true;
  Text1.on_change = [this] {
    if (Text1.text.get().size() > longest_window_text) Text1.text = "";
  };
}

Trace::Trace(Console& console) : console_(console) {}

void Trace::WriteTrace(std::string_view message) {
  if (!console_.program.DebugMode) return;
  const std::string line =
      date_time_text(console_.services.clock.now()) + "  " + std::string(message) + line_end;
  show(line);
  print(console_.services.letters.to_utf8(line));
  if (on_line) on_line(std::string(message));
}

void Trace::WriteLines(const std::vector<std::string>& lines) {
  if (!console_.program.DebugMode) return;
  std::string text;
  for (const std::string& line : lines) text += line + line_end;
  show(text);
  print(date_time_text(console_.services.clock.now()) + line_end + text);
  if (!on_line) return;
  for (const std::string& line : lines) on_line(line);
}

void Trace::show(std::string_view text) {
  TextBox& window = console_.DebugForm.Text1;
  window.text = window.text.get() + std::string(text);
  window.caret_to_end();
}

void Trace::print(std::string_view bytes) {
  attempt([&] { console_.services.files.append(std::string(trace_file_name), bytes); },
          [](const Failure&) {});
}

}  // namespace lineweir

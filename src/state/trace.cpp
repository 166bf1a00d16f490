#include "state/trace.h"

#include "base/text.h"
#include "base/time_text.h"
#include "platform/files.h"
#include "platform/system_clock.h"
#include "state/guard.h"
#include "state/program_state.h"
#include "state/wire.h"

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
}

Trace::Trace(const ProgramState& program, platform::SystemClock& clock, platform::Files& files,
             const Letters& letters, TraceForm& window)
    : program_(program), clock_(clock), files_(files), letters_(letters), window_(window) {
  wire(window.Text1.on_change, *this, "DebugForm_Text1_Change", [&window] {
    if (window.Text1.text.get().size() > longest_window_text) window.Text1.text = "";
  });
}

void Trace::WriteTrace(std::string_view message) {
  if (!program_.DebugMode) return;
  const std::string line = date_time_text(clock_.now()) + "  " + std::string(message) + line_end;
  show(line);
  print(letters_.to_utf8(line));
  if (on_line) on_line(std::string(message));
}

void Trace::WriteLines(const std::vector<std::string>& lines) {
  if (!program_.DebugMode) return;
  std::string text;
  for (const std::string& line : lines) text += line + line_end;
  show(text);
  print(date_time_text(clock_.now()) + line_end + text);
  if (!on_line) return;
  for (const std::string& line : lines) on_line(line);
}

void Trace::show(std::string_view text) {
  TextBox& window = window_.Text1;
  window.text = window.text.get() + std::string(text);
  window.caret_to_end();
}

void Trace::print(std::string_view bytes) {
  attempt([&] { files_.append(std::string(trace_file_name), bytes); }, [](const Failure&) {});
}

}  // namespace lineweir

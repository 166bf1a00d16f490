// A live console under a stream of any bytes, cut anywhere, while time passes, callers' data are
// entered and the call log comes and goes. Nothing may crash or fail; the letters must be those of
// the plain rule of the stream, and so must the rest that stays in the buffer.
//
// The input is a list of steps. A byte below 128 is followed by that many bytes, which the box
// sends in one piece; any other byte is one of the steps of take_step().

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "base/time_text.h"
#include "support/call_log_file.h"
#include "support/reference_stream.h"
#include "support/scripted_console.h"

using namespace lineweir;
using namespace lineweir::test;

namespace {

constexpr unsigned first_step = 128;
constexpr std::string_view outage_report = "Call log - ";

void require(bool holds) {
  if (!holds) std::abort();
}

class Bench {
 public:
  Bench() { create_log(test_.platform); }

  // A start takes longer than an input, so the console goes on with the next one. All that a
  // report's handling depends on begins anew.
  void begin() {
    test_.console.layout.set_line_count(lines_of_small_layout);
    test_.console.lines = LineTable();
    test_.console.decoder.serial_buffer.assign("");
    test_.console.decoder.LineMonitorWait = false;
    test_.console.Lineweir.Data1.database_name = "";
    test_.platform.clock.put({2026, 1, 5, 10, 0, 0});
    reference_ = ReferenceStream();
  }

  void receive(const std::string& piece) {
    if (piece.empty()) return;
    if (test_.console.decoder.LineMonitorWait) {
      test_.box_sends(piece);
      require(!test_.console.decoder.LineMonitorWait);
    } else {
      decode(piece);
    }
    require(test_.console.decoder.serial_buffer.text() == reference_.buffer());
    check_lines();
  }

  void take_step(unsigned step) {
    LineTable& lines = test_.console.lines;
    const int line = static_cast<int>(step / 8 % 10);
    switch (step % 8) {
      case 0:
        return test_.platform.loop.advance(platform::Milliseconds(100 * line));
      case 1:
        return test_.platform.clock.put({2026, 12, 31, 2 * line + 5, 6 * line + 5, 59});
      case 2:
        return test_.console.layout.set_line_count(line % 2 == 0 ? 10 : 20);
      case 3:
        lines.CallerData(line).set(CallerField::CallerName, std::string(step, 'n'));
        test_.console.Lineweir.LineName(line).caption = std::string(step, 'n');
        return;
      case 4:
        test_.console.Lineweir.Data1.database_name = line % 2 == 0 ? log_path : "nowhere";
        return;
      case 5:
        lines.TheNextCall = line;
        lines.NextCallSet = true;
        return;
      case 6:
        lines.FreshConnect = line % 2 == 0;
        return;
      default:
        test_.console.decoder.LineMonitorWait = true;
        return;
    }
  }

 private:
  void decode(const std::string& piece) {
    LineTable& lines = test_.console.lines;
    std::string expected;
    for (int line = 0; line < lines.LineCount; ++line) expected += lines.StatusLetter(line);
    test_.take_trace();
    test_.box_sends(piece);

    reference_.append(piece);
    const auto items = reference_.items(lines.LineCount);
    // Calls that can't go to their log wait for it, and keep no report from being handled.
    for (const std::string& line : test_.take_trace()) require(line.starts_with(outage_report));
    reference_.drop();
    for (const StatusItem& item : items) {
      const bool never_stored = item.letter == 'F' || item.letter == 'B';
      expected[static_cast<std::size_t>(item.line)] = never_stored ? ' ' : item.letter;
    }
    for (int line = 0; line < lines.LineCount; ++line) {
      require(lines.StatusLetter(line) == expected[static_cast<std::size_t>(line)]);
    }
  }

  void check_lines() {
    const LineTable& lines = test_.console.lines;
    for (int line = 0; line < lines.LineCount; ++line) {
      require(lines.StatusLetter(line) != 'F');
      require(lines.HoldStamp(line).empty() || time_of_day(lines.HoldStamp(line)));
      require(lines.ClockBase(line).empty() || time_of_day(lines.ClockBase(line)));
      require(lines.ClockRunning(line) == 0 || !lines.ClockBase(line).empty());
    }
  }

  ScriptedConsole test_;
  ReferenceStream reference_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // What the call log has gathered goes with the console now and then.
  constexpr int inputs_of_a_console = 1000;
  static std::optional<Bench> bench;
  static int inputs = 0;
  if (inputs++ % inputs_of_a_console == 0) bench.emplace();
  bench->begin();
  std::string_view input(reinterpret_cast<const char*>(data), size);
  while (!input.empty()) {
    const auto step = static_cast<unsigned>(static_cast<unsigned char>(input.front()));
    input.remove_prefix(1);
    if (step >= first_step) {
      bench->take_step(step - first_step);
      continue;
    }
    const std::string_view piece = input.substr(0, step);
    input.remove_prefix(piece.size());
    bench->receive(std::string(piece));
  }
  return 0;
}

#include "boxlink/status_decoder.h"

#include "boxlink/line_rules.h"
#include "boxlink/line_steps.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/status_letters.h"

namespace lineweir {
namespace {

constexpr std::string_view line_monitor_answer = "Line monitor ON";
constexpr platform::Milliseconds line_monitor_limit{5000};

class RaisedFlag {
 public:
  explicit RaisedFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~RaisedFlag() { flag_ = false; }
  RaisedFlag(const RaisedFlag&) = delete;
  RaisedFlag& operator=(const RaisedFlag&) = delete;

 private:
  bool& flag_;
};

}  // namespace

StatusDecoder::StatusDecoder(Console& console) : console_(console) {
  console.services.comm1.on_comm = [this](int comm_event) { Comm1_OnComm(comm_event); };
}

void StatusDecoder::Comm1_OnComm(int comm_event) {
  guard(console_, "Lineweir_Comm1_OnComm", [&] {
    if (comm_event != platform::comm_event_receive || waiting_) return;
    if (LineMonitorWait) {
      await_line_monitor();
    } else {
      decode();
    }
  });
}

void StatusDecoder::await_line_monitor() {
  const RaisedFlag waiting(waiting_);
  platform::EventLoop& loop = console_.services.loop;
  const auto start = loop.now();
  std::string received = console_.services.comm1.input();
  while (received.find(line_monitor_answer) == std::string::npos &&
         loop.now() - start <= line_monitor_limit) {
    loop.yield();
    received += console_.services.comm1.input();
  }
  LineMonitorWait = false;
}

void StatusDecoder::decode() {
  serial_buffer.append(console_.services.comm1.input());
  const StatusScan scan = serial_buffer.scan(console_.lines.LineCount);
  for (const StatusItem& item : scan.items) {
    if (console_.lines.StatusLetter(item.line) != item.letter) {
      process_change(item.line, item.letter);
    }
  }
  serial_buffer.drop(scan.consumed);
}

void StatusDecoder::process_change(int line, char letter) {
  LineTable& lines = console_.lines;
  // On this link the new letter is stored first, so that only a freed line is still seen with the
  // letter that it had.
  if (letter != 'F') lines.StatusLetter(line) = letter;
  const LineRule* rule = line_rule(box_rules, letter, lines.ThePhoneFlag);
  if (rule == nullptr) return;
  const LineReport report{line, letter, lines.StatusLetter(line), *look_of(letter)};
  for (const LineStep step : rule->steps) console_.line_steps.run(step, report);
}

}  // namespace lineweir

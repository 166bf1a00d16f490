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

}  // namespace

// One wait for the line monitor, until its handler ends or another port action ends the wait.
class StatusDecoder::Wait {
 public:
  explicit Wait(StatusDecoder& decoder) : decoder_(decoder), number_(++decoder.wait_number_) {
    decoder_.waiting_ = true;
  }
  ~Wait() {
    if (goes_on()) decoder_.end_wait();
  }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

  bool goes_on() const { return number_ == decoder_.wait_number_; }

 private:
  StatusDecoder& decoder_;
  unsigned number_;
};

StatusDecoder::StatusDecoder(Console& console) : console_(console) {
  console.services.comm1.on_comm = [this](int comm_event) { Comm1_OnComm(comm_event); };
}

void StatusDecoder::Comm1_OnComm(int comm_event) {
  guard(console_, "Lineweir_Comm1_OnComm", [&] {
    if (comm_event != platform::comm_event_receive || waiting_) return;
    if (!LineMonitorWait) return decode();
    if (!await_line_monitor()) return;
    hear_box();
    console_.port.box_answered();
  });
}

void StatusDecoder::end_wait() {
  ++wait_number_;
  waiting_ = false;
}

bool StatusDecoder::await_line_monitor() {
  const Wait wait(*this);
  platform::EventLoop& loop = console_.services.loop;
  const auto start = loop.now();
  std::string received = console_.services.comm1.input();
  bool answered = received.find(line_monitor_answer) != std::string::npos;
  while (!answered && loop.now() - start <= line_monitor_limit) {
    loop.yield();
    if (!wait.goes_on()) return false;
    received += console_.services.comm1.input();
    answered = received.find(line_monitor_answer) != std::string::npos;
  }
  LineMonitorWait = false;
  return answered;
}

void StatusDecoder::decode() {
  const bool was_heard = box_heard_;
  serial_buffer.append(console_.services.comm1.input());
  const StatusScan scan = serial_buffer.scan(console_.lines.LineCount);
  for (const StatusItem& item : scan.items) {
    if (line_rule(box_rules, item.letter, console_.lines.ThePhoneFlag) != nullptr) hear_box();
    if (console_.lines.StatusLetter(item.line) != item.letter) {
      process_change(item.line, item.letter);
    }
  }
  serial_buffer.drop(scan.consumed);
  console_.caller_data.lines_changed();
  if (!was_heard && box_heard_) console_.port.box_reported();
}

void StatusDecoder::hear_box() {
  if (box_heard_) return;
  box_heard_ = true;
  console_.link.review();
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

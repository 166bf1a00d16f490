#include "boxlink/status_decoder.h"

#include <algorithm>
#include <set>

#include "boxlink/line_rules.h"
#include "boxlink/line_steps.h"
#include "boxlink/serial_link.h"
#include "callerdata/caller_data.h"
#include "lines/status_letters.h"
#include "link/link_watch.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto on_comm = "Lineweir_Comm1_OnComm";
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

StatusDecoder::StatusDecoder(ConsoleState& state, SerialLink& serial_link, LinkWatch& link,
                             CallerDataEntry& caller_data, LineSteps& line_steps)
    : state_(state),
      serial_link_(serial_link),
      link_(link),
      caller_data_(caller_data),
      line_steps_(line_steps) {
  wire(state.services.comm1.on_comm, state_.trace, on_comm,
       [this](int comm_event) { Comm1_OnComm(comm_event); });
}

void StatusDecoder::Comm1_OnComm(int comm_event) {
  if (comm_event != platform::comm_event_receive || waiting_) return;
  if (!LineMonitorWait) return decode();
  switch (await_line_monitor()) {
    case Heard::Nothing:
      return;
    case Heard::Answer:
      hear_box();
      if (on_line_monitor) on_line_monitor();
      return;
    case Heard::Report:
      hear_box();
      if (on_first_report) on_first_report();
      return;
  }
}

void StatusDecoder::end_wait() {
  ++wait_number_;
  waiting_ = false;
}

StatusDecoder::Heard StatusDecoder::await_line_monitor() {
  const Wait wait(*this);
  platform::EventLoop& loop = state_.services.loop;
  const auto start = loop.now();
  std::string received = state_.services.comm1.input();
  bool answered = received.find(line_monitor_answer) != std::string::npos;
  while (!answered && loop.now() - start <= line_monitor_limit) {
    loop.yield();
    if (!wait.goes_on()) return Heard::Nothing;
    received += state_.services.comm1.input();
    answered = received.find(line_monitor_answer) != std::string::npos;
  }
  LineMonitorWait = false;
  if (answered) return Heard::Answer;
  return holds_report(received) ? Heard::Report : Heard::Nothing;
}

bool StatusDecoder::holds_report(const std::string& received) const {
  SerialBuffer passed_over;
  passed_over.append(received);
  return std::ranges::any_of(passed_over.scan(state_.lines.LineCount).items, [&](const auto& item) {
    return line_rule(box_rules, item.letter, state_.lines.ThePhoneFlag) != nullptr;
  });
}

void StatusDecoder::decode() {
  const bool was_heard = serial_link_.box_heard();
  serial_buffer.append(state_.services.comm1.input());
  const StatusScan scan = serial_buffer.scan(state_.lines.LineCount);
  std::set<int> told;
  for (const StatusItem& item : scan.items) {
    if (line_rule(box_rules, item.letter, state_.lines.ThePhoneFlag) != nullptr) {
      hear_box();
      told.insert(item.line);
    }
    if (state_.lines.StatusLetter(item.line) != item.letter) {
      process_change(item.line, item.letter);
    }
  }
  serial_buffer.drop(scan.consumed);
  if (!told.empty()) caller_data_.lines_told(told);
  caller_data_.lines_changed();
  if (!was_heard && serial_link_.box_heard() && on_first_report) on_first_report();
}

void StatusDecoder::hear_box() {
  if (serial_link_.box_heard()) return;
  serial_link_.hear_box();
  link_.review();
}

void StatusDecoder::process_change(int line, char letter) {
  LineTable& lines = state_.lines;
  // On this link the new letter is stored first, so that only a freed line is still seen with the
  // letter that it had.
  if (letter != 'F') lines.StatusLetter(line) = letter;
  const LineRule* rule = line_rule(box_rules, letter, lines.ThePhoneFlag);
  if (rule == nullptr) return;
  const LineReport report{on_comm, line, letter, lines.StatusLetter(line), *look_of(letter)};
  for (const RuleStep& step : rule->steps) line_steps_.run(step, report);
}

}  // namespace lineweir

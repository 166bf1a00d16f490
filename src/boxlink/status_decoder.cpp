#include "boxlink/status_decoder.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/status_letters.h"
#include "core/text.h"
#include "core/time_text.h"

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
  // On this link the new letter is stored first, so that only a freed line is still seen with the
  // letter that it had.
  if (letter != 'F') console_.lines.StatusLetter(line) = letter;
  switch (letter) {
    case 'F':
      return line_freed(line);
    case 'N':
    case 'C':
      return line_on_air(line, letter);
    case 'S':
      return line_ready(line);
    case 'R':
      return line_ringing(line);
    case 'E':
      return line_elsewhere(line);
    case 'P':
    case 'O':
    case 'H':
      return line_at_handset_or_held(line, letter);
    case 'B':
      return line_busy(line);
    default:
      return;
  }
}

void StatusDecoder::line_freed(int line) {
  LineTable& lines = console_.lines;
  CallerRecord& record = lines.CallerData(line);
  clear_next_call_pin(line);

  const char old = lines.StatusLetter(line);
  const std::string& on_air_since = record[CallerField::TimePlacedOnAir];
  if (old == 'S' && !lines.HoldStamp(line).empty()) {
    record.set(CallerField::TimeOnHold, time_since(lines.HoldStamp(line), now()));
  }
  if ((old == 'N' || old == 'C') && !on_air_since.empty()) {
    record.set(CallerField::TimeOnAir, time_since(on_air_since, now()));
  }
  console_.call_log.log(line);

  record.clear();
  lines.HoldStamp(line).clear();
  lines.ClockRunning(line) = 0;
  console_.Lineweir.blank_row_controls(line, 2);
  lines.StatusLetter(line) = ' ';
  finish(line, 'F');
}

void StatusDecoder::line_on_air(int line, char letter) {
  LineTable& lines = console_.lines;
  CallerRecord& record = lines.CallerData(line);
  clear_next_call_pin(line);
  record.set(CallerField::TimePlacedOnAir, clock_text(seconds_of_day(now())));
  if (!lines.HoldStamp(line).empty()) {
    record.set(CallerField::TimeOnHold, time_since(lines.HoldStamp(line), now()));
  }
  start_clock(line);
  finish(line, letter);
}

void StatusDecoder::line_ready(int line) {
  LineTable& lines = console_.lines;
  CallerRecord& record = lines.CallerData(line);
  lines.HoldStamp(line) = date_time_text(now());
  const auto on_air_since = trimmed(record[CallerField::TimePlacedOnAir]);
  if (!on_air_since.empty()) {
    record.set(CallerField::TimeOnAir, time_since(on_air_since, now()));
  }
  start_clock(line);
  finish(line, 'S');
}

void StatusDecoder::line_ringing(int line) {
  LineTable& lines = console_.lines;
  clear_next_call_pin(line);
  console_.call_log.log(line);
  lines.CallerData(line).clear();
  lines.HoldStamp(line).clear();
  start_clock(line);
  console_.Lineweir.blank_row_controls(line, 4);
  console_.Lineweir.Timer5.enabled = true;
  finish(line, 'R');
}

void StatusDecoder::line_elsewhere(int line) {
  console_.call_log.log(line);
  console_.lines.CallerData(line).clear();
  console_.lines.ClockRunning(line) = 0;
  console_.Lineweir.LineTime(line).caption = "";
  finish(line, 'E');
}

void StatusDecoder::line_at_handset_or_held(int line, char letter) {
  // The caller data form would open here for a line that was ringing or held, but the letter that
  // decides is the new one on this link, so it never does.
  console_.lines.ClockRunning(line) = 0;
  console_.Lineweir.LineTime(line).caption = "";
  finish(line, letter);
}

void StatusDecoder::line_busy(int line) {
  LineTable& lines = console_.lines;
  CallerRecord& record = lines.CallerData(line);
  if (lines.TheNextCall == line) {
    lines.NextCallSet = false;
    lines.TheNextCall = no_line;
  }
  console_.call_log.log(line);
  if (!lines.FreshConnect) record.clear_data_fields();
  record.clear_times();
  lines.HoldStamp(line).clear();
  // Not B, so that the next report of B is a change again.
  lines.StatusLetter(line) = ' ';
  lines.ClockRunning(line) = 0;
  console_.Lineweir.LineTime(line).caption = "";
  lines.ClockBase(line).clear();
  finish(line, 'B');
}

void StatusDecoder::clear_next_call_pin(int line) {
  if (console_.lines.TheNextCall == line) console_.lines.NextCallSet = false;
}

void StatusDecoder::start_clock(int line) {
  console_.lines.ClockRunning(line) = 1;
  console_.lines.ClockBase(line) = hms_text(seconds_of_day(now()));
}

void StatusDecoder::finish(int line, char letter) {
  const LetterLook& look = *look_of(letter);
  console_.Lineweir.LineStatus(line).caption = look.status_text;
  console_.rows.set_row_color(line, look.row);
  console_.rows.DrawMark(line);
  console_.rows.HybridPictureSet(line, look.icon1, look.icon2);
}

platform::DateTime StatusDecoder::now() const { return console_.services.clock.now(); }

}  // namespace lineweir

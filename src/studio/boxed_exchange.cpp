#include "studio/boxed_exchange.h"

#include <algorithm>
#include <utility>

#include "exchange/command_word.h"

namespace lineweir::studio {
namespace {

constexpr std::string_view monitor_answer = "Line monitor ON";

// Callers and people must not follow the same chances.
constexpr std::uint64_t operator_seed_offset = 0x9e3779b97f4a7c15U;

std::optional<AutoOperator> make_operator(const BoxedExchangeOptions& options) {
  if (!options.auto_operator) return std::nullopt;
  return AutoOperator(*options.auto_operator, options.line_count,
                      options.seed + operator_seed_offset);
}

}  // namespace

BoxedExchange::BoxedExchange(BoxedExchangeOptions options)
    : lines_(options.line_count),
      boxes_(static_cast<std::size_t>(options.boxes), Box{WordCutter(options.line_count), {}}),
      callers_(options.callers, options.line_count, options.seed),
      auto_operator_(make_operator(options)),
      script_(std::move(options.script)) {}

void BoxedExchange::receive(std::string_view bytes, Moment now, int box) {
  advance(now);
  if (over_ || bytes.empty()) return;
  Box& hearing = box_at(box);
  hearing.last_received = now_;
  run_tokens(hearing.cutter.feed(bytes), hearing);
}

void BoxedExchange::advance(Moment now) {
  now = std::max(now, now_);
  for (Moment due = next_event(); due <= now; due = next_event()) {
    now_ = std::max(now_, due);
    run_due_event();
  }
  now_ = now;
  for (Box& box : boxes_) box.pacer.advance(now);
}

void BoxedExchange::happen_now(const StudioEvent& event, Moment now) {
  advance(now);
  if (!over_) happen(event);
}

Moment BoxedExchange::next_due() const {
  Moment due = next_event();
  for (const Box& box : boxes_) due = std::min(due, box.pacer.next_due());
  return due;
}

std::string BoxedExchange::take_output(int box) { return box_at(box).pacer.take_ready(); }

std::vector<Record> BoxedExchange::take_records() { return std::exchange(records_, {}); }

bool BoxedExchange::is_silent(int box) const {
  return boxes_[static_cast<std::size_t>(box)].pacer.next_due() == never;
}

// The box whose word may be complete, and longest ago.
BoxedExchange::Box* BoxedExchange::box_with_gap() {
  Box* first = nullptr;
  for (Box& box : boxes_) {
    if (box.gap_matters() && (first == nullptr || box.gap_end() < first->gap_end())) first = &box;
  }
  return first;
}

Moment BoxedExchange::next_event() const {
  if (over_) return never;
  Moment due = callers_.next_due();
  if (auto_operator_) due = std::min(due, auto_operator_->next_due());
  if (script_next_ < script_.size()) due = std::min(due, script_[script_next_].at);
  for (const Box& box : boxes_) {
    if (box.gap_matters()) due = std::min(due, box.gap_end());
  }
  return due;
}

// One event at a time, because each can change what is due next.
void BoxedExchange::run_due_event() {
  Box* const box = box_with_gap();
  if (box != nullptr && box->gap_end() <= now_) {
    run_tokens(box->cutter.idle(), *box);
  } else if (script_next_ < script_.size() && script_[script_next_].at <= now_) {
    happen(script_[script_next_++].event);
  } else if (callers_.next_due() <= now_) {
    const auto event = callers_.step(lines_);
    if (event) {
      happen(*event);
    } else {
      record(Record::Kind::Note, "a call finds no idle line");
    }
  } else if (auto_operator_) {
    if (const auto event = auto_operator_->step(lines_)) happen(*event);
  }
}

void BoxedExchange::run_tokens(const std::vector<Token>& tokens, Box& box) {
  for (const Token& token : tokens) {
    if (token.kind == Token::Kind::Noise) {
      record(Record::Kind::Noise, printable(token.text));
    } else {
      run_word(token.text, Record::Kind::Word, &box);
    }
  }
}

// `asker` is the box that took the word; none for another seat's.
void BoxedExchange::run_word(const std::string& text, Record::Kind kind, Box* asker) {
  record(kind, text);
  const auto word = parse_word(text);
  if (!word) return record(Record::Kind::Note, text + ": no such word");
  if (names_line(word->action) && !lines_.has_line(word->number)) {
    return record(Record::Kind::Note, text + ": no such line");
  }
  if (asker != nullptr) answer(*word, *asker);
  report(lines_.obey(*word));
}

void BoxedExchange::answer(exchange::CommandWord word, Box& asker) {
  if (word.action == Action::MonitorOn) {
    record(Record::Kind::Text, std::string(monitor_answer));
    send(std::string(monitor_answer), asker);
  }
  if (word.action == Action::QueryLine) {
    const std::string item = status_item(word.number, lines_.letter(word.number));
    record(Record::Kind::Item, item);
    send(item, asker);
  }
}

void BoxedExchange::happen(const StudioEvent& event) {
  const auto on_line = [&](std::string_view name, const LineChanges& changes) {
    const std::string text = std::string(name) + ' ' + std::to_string(event.line);
    record(Record::Kind::Event, text);
    if (changes.empty()) record(Record::Kind::Note, text + ": doesn't fit the line, ignored");
    report(changes);
  };
  switch (event.kind) {
    case StudioEvent::Kind::Call:
      return on_line("call", lines_.ring(event.line));
    case StudioEvent::Kind::HangUp:
      return on_line("hangup", lines_.hang_up(event.line));
    case StudioEvent::Kind::Busy:
      return on_line("busy", lines_.make_busy(event.line));
    case StudioEvent::Kind::Idle:
      return on_line("idle", lines_.end_busy(event.line));
    case StudioEvent::Kind::Set:
      record(Record::Kind::Event, "set " + std::to_string(event.line) + ' ' + event.letter);
      return report(lines_.set_letter(event.line, event.letter));
    case StudioEvent::Kind::Word:
      return run_word(event.word, Record::Kind::Seat, nullptr);
    case StudioEvent::Kind::Quit:
      over_ = true;
      return record(Record::Kind::Event, "quit");
  }
}

void BoxedExchange::report(const LineChanges& changes) {
  for (const LineChange& change : changes) {
    callers_.line_changed(change.line, change.letter, now_);
    if (auto_operator_) auto_operator_->line_changed(change.line, now_);
    const std::string item = status_item(change.line, change.letter);
    record(Record::Kind::Item, item);
    for (Box& box : boxes_) send(item, box);
  }
}

void BoxedExchange::send(const std::string& text, Box& box) {
  if (!box.pacer.send(text, now_)) record(Record::Kind::Note, text + ": lost, the box is full");
}

void BoxedExchange::record(Record::Kind kind, std::string text) {
  records_.push_back({now_, kind, std::move(text)});
}

}  // namespace lineweir::studio

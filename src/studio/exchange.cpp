#include "studio/exchange.h"

#include <algorithm>
#include <utility>

#include "studio/command_word.h"

namespace lineweir::studio {
namespace {

constexpr std::string_view monitor_answer = "Line monitor ON";

// Callers and people must not follow the same chances.
constexpr std::uint64_t operator_seed_offset = 0x9e3779b97f4a7c15U;

std::optional<AutoOperator> make_operator(const ExchangeOptions& options) {
  if (!options.auto_operator) return std::nullopt;
  return AutoOperator(*options.auto_operator, options.line_count,
                      options.seed + operator_seed_offset);
}

}  // namespace

Exchange::Exchange(ExchangeOptions options)
    : lines_(options.line_count),
      cutter_(options.line_count),
      callers_(options.callers, options.line_count, options.seed),
      auto_operator_(make_operator(options)),
      script_(std::move(options.script)) {}

void Exchange::receive(std::string_view bytes, Moment now) {
  advance(now);
  if (over_ || bytes.empty()) return;
  last_received_ = now_;
  run_tokens(cutter_.feed(bytes));
}

void Exchange::advance(Moment now) {
  now = std::max(now, now_);
  for (Moment due = next_event(); due <= now; due = next_event()) {
    now_ = std::max(now_, due);
    run_due_event();
  }
  now_ = now;
  pacer_.advance(now);
}

Moment Exchange::next_due() const { return std::min(next_event(), pacer_.next_due()); }

std::string Exchange::take_output() { return pacer_.take_ready(); }

std::vector<Record> Exchange::take_records() { return std::exchange(records_, {}); }

Moment Exchange::next_event() const {
  if (over_) return never;
  Moment due = callers_.next_due();
  if (auto_operator_) due = std::min(due, auto_operator_->next_due());
  if (script_next_ < script_.size()) due = std::min(due, script_[script_next_].at);
  if (cutter_.idle_matters()) due = std::min(due, last_received_ + word_gap);
  return due;
}

// One event at a time, because each can change what is due next.
void Exchange::run_due_event() {
  if (cutter_.idle_matters() && last_received_ + word_gap <= now_) {
    run_tokens(cutter_.idle());
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

void Exchange::run_tokens(const std::vector<Token>& tokens) {
  for (const Token& token : tokens) {
    if (token.kind == Token::Kind::Noise) {
      record(Record::Kind::Noise, printable(token.text));
    } else {
      run_word(token.text, Record::Kind::Word);
    }
  }
}

void Exchange::run_word(const std::string& text, Record::Kind kind) {
  record(kind, text);
  const auto word = parse_word(text);
  if (!word) return record(Record::Kind::Note, text + ": no such word");
  if (names_line(word->action) && !lines_.has_line(word->number)) {
    return record(Record::Kind::Note, text + ": no such line");
  }
  if (kind == Record::Kind::Word) answer(*word);
  report(lines_.obey(*word));
}

void Exchange::answer(CommandWord word) {
  if (word.action == Action::MonitorOn) send(Record::Kind::Text, std::string(monitor_answer));
  if (word.action == Action::QueryLine) {
    send(Record::Kind::Item, status_item(word.number, lines_.letter(word.number)));
  }
}

void Exchange::happen(const StudioEvent& event) {
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
      return run_word(event.word, Record::Kind::Seat);
    case StudioEvent::Kind::Quit:
      over_ = true;
      return record(Record::Kind::Event, "quit");
  }
}

void Exchange::report(const LineChanges& changes) {
  for (const LineChange& change : changes) {
    callers_.line_changed(change.line, change.letter, now_);
    if (auto_operator_) auto_operator_->line_changed(change.line, now_);
    send(Record::Kind::Item, status_item(change.line, change.letter));
  }
}

void Exchange::send(Record::Kind kind, const std::string& text) {
  record(kind, text);
  if (!pacer_.send(text, now_)) record(Record::Kind::Note, text + ": lost, the box is full");
}

void Exchange::record(Record::Kind kind, std::string text) {
  records_.push_back({now_, kind, std::move(text)});
}

}  // namespace lineweir::studio

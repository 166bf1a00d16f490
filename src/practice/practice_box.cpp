#include "practice/practice_box.h"

#include <algorithm>

#include "base/text.h"

namespace lineweir::practice {
namespace {

using exchange::never;
using exchange::StudioEvent;
using studio::Record;

studio::BoxedExchangeOptions empty_exchange() {
  studio::BoxedExchangeOptions options;
  options.line_count = PracticeBox::line_count;
  options.callers = {Moment{0}, Moment{0}, Moment{0}};
  return options;
}

}  // namespace

PracticeBox::PracticeBox() : box_(empty_exchange()), letters_(line_count, exchange::idle_letter) {}

void PracticeBox::begin(const LevelRule& level, std::uint64_t seed, Moment now) {
  advance(now);
  hang_up_all(now);
  history_.clear();
  began_ = now;
  callers_.emplace(level, line_count, seed);
}

void PracticeBox::end(Moment now) {
  advance(now);
  callers_.reset();
  hang_up_all(now);
}

void PracticeBox::receive(std::string_view bytes, Moment now) {
  advance(now);
  box_.receive(bytes, now);
  note_changes(now, std::nullopt);
}

void PracticeBox::advance(Moment now) {
  for (Moment due = next_due(); due <= now; due = next_due()) {
    box_.advance(due);
    note_changes(due, std::nullopt);
    let_callers_act(due);
  }
  box_.advance(now);
  note_changes(now, std::nullopt);
}

Moment PracticeBox::next_due() const { return std::min(box_.next_due(), callers_due()); }

const Caller* PracticeBox::caller_on(int line) const {
  return runs() ? callers_->on_line(line) : nullptr;
}

Moment PracticeBox::callers_due() const { return runs() ? began_ + callers_->next_due() : never; }

void PracticeBox::let_callers_act(Moment now) {
  while (callers_due() <= now) {
    const auto event = callers_->step(box_.lines());
    if (!event) continue;
    box_.happen_now(*event, now);
    note_changes(now, event);
  }
}

void PracticeBox::hang_up_all(Moment now) {
  for (int line = 0; line < line_count; ++line) {
    const StudioEvent gone{StudioEvent::Kind::HangUp, line};
    if (box_.letter(line) == exchange::idle_letter) continue;
    box_.happen_now(gone, now);
    note_changes(now, gone);
  }
}

void PracticeBox::note_changes(Moment now, const std::optional<StudioEvent>& event) {
  for (const Record& record : box_.take_records()) {
    // An item that answers a question tells nothing new.
    if (record.kind != Record::Kind::Item) continue;
    const int line = leading_number(std::string_view(record.text).substr(1));
    char& letter = letters_[static_cast<std::size_t>(line)];
    if (letter == record.text[0]) continue;
    letter = record.text[0];
    if (!runs()) continue;
    const Caller* caller = callers_->on_line(line);
    const bool wrong = caller != nullptr && caller->nature == Nature::WrongNumber;
    const Mover outside = wrong ? Mover::WrongNumber : Mover::Caller;
    const Moment at = now - began_;
    history_.push_back({at, line, letter, event ? outside : Mover::Console});
    callers_->line_changed(line, letter, at);
  }
}

}  // namespace lineweir::practice

#include "seat/simulated_screener.h"

#include "core/console.h"
#include "lines/status_letters.h"
#include "seat/fingers.h"

namespace lineweir::seat {
namespace {

using namespace std::chrono_literals;
using Milliseconds = SimulatedPerson::Milliseconds;

// The first callers are asked quickly, so that the host has somebody soon.
constexpr int callers_asked_quickly = 5;
constexpr Milliseconds reaction = 500ms;
constexpr Milliseconds quick_answer = 350ms;
constexpr Milliseconds usual_answer = 3500ms;
// The form comes with the caller; one who has gone meanwhile brings none.
constexpr Milliseconds longest_pick_up = 3s;
constexpr Milliseconds first_message_after = 8s;
constexpr Milliseconds between_messages = 45s;

}  // namespace

SimulatedScreener::SimulatedScreener(Console& console, std::uint64_t seed)
    : console_(console), dice_(seed), story_(static_cast<std::size_t>(seed)) {}

void SimulatedScreener::sit_down() {
  console_.Lineweir.MitelPhone1.on_click();
  console_.Lineweir.ScreenerMode.on_click();
}

void SimulatedScreener::look(Milliseconds now) {
  if (next_message_.count() == 0) next_message_ = now + first_message_after;
  if (now < next_act_) return;
  if (console_.Form4.visible) {
    type_next(now);
  } else if (is_asking_) {
    is_asking_ = false;
  } else if (keeps_up_messages(now)) {
    next_act_ = now + reaction;
  } else if (somebody_rings()) {
    answer(now);
  }
}

bool SimulatedScreener::somebody_rings() const {
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    // Who has waited for no second yet is not the next to be answered.
    const bool has_waited = console_.Lineweir.LineTime(line).caption.get() > "0:00:00";
    if (console_.lines.StatusLetter(line) == ringing_letter && has_waited) return true;
  }
  return false;
}

void SimulatedScreener::answer(Milliseconds now) {
  if (!click(console_, console_.Lineweir, console_.Lineweir.NextToConfButton)) return;
  const CallerStory& story = caller_stories()[story_++ % caller_stories().size()];
  to_type_ = {{entry_of(CallerField::Comments), story.topic},
              {entry_of(CallerField::City), story.city},
              {entry_of(CallerField::CallerName), story.name}};
  is_asking_ = true;
  ++answered_;
  next_act_ = now + longest_pick_up;
}

void SimulatedScreener::type_next(Milliseconds now) {
  const Milliseconds thinks = answered_ <= callers_asked_quickly ? quick_answer : usual_answer;
  next_act_ = now + dice_.around(thinks);
  if (!to_type_.empty()) {
    const Entry next = to_type_.back();
    to_type_.pop_back();
    replace_text(console_, console_.Form4.TheText(next.entry), next.text);
    return;
  }
  if (!click(console_, console_.Form4, console_.Form4.SaveReady)) close(console_, console_.Form4);
  is_asking_ = false;
}

bool SimulatedScreener::keeps_up_messages(Milliseconds now) {
  if (now < next_message_) return false;
  next_message_ = now + dice_.around(between_messages);
  return write_message(console_, screener_messages()[message_++ % screener_messages().size()]);
}

}  // namespace lineweir::seat

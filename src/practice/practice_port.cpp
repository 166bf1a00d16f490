#include "practice/practice_port.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"

namespace lineweir::practice {
namespace {

constexpr int last_port = 4;
// A loop sleeps no longer than its clock can count.
constexpr Moment longest_sleep = std::chrono::hours(1);

}  // namespace

PracticePort::PracticePort(platform::EventLoop& loop) : loop_(loop), made_(loop.now()) {}

PracticePort::~PracticePort() { loop_.cancel(next_); }

void PracticePort::begin(const LevelRule& level, std::uint64_t seed) {
  box_.begin(level, seed, now());
  wake();
}

void PracticePort::end() {
  box_.end(now());
  wake();
}

void PracticePort::set_comm_port(int number) {
  if (open_) throw Failure(failure_number::port_already_open, "Port already open");
  if (number < 1 || number > last_port) {
    throw Failure(failure_number::bad_port_number, "Bad port number");
  }
  comm_port_ = number;
}

void PracticePort::open() {
  if (open_) throw Failure(failure_number::port_already_open, "Port already open");
  open_ = true;
}

void PracticePort::close() {
  open_ = false;
  received_.clear();
}

std::string PracticePort::input() { return std::exchange(received_, {}); }

void PracticePort::output(std::string_view characters) {
  if (!open_) throw Failure(failure_number::port_not_open, "Operation valid only when open");
  box_.receive(characters, now());
  wake();
}

void PracticePort::go_on() {
  box_.advance(now());
  const std::string characters = box_.take_output();
  schedule();
  if (!open_ || characters.empty()) return;
  received_ += characters;
  on_comm(platform::comm_event_receive);
}

void PracticePort::schedule() {
  loop_.cancel(next_);
  const Moment due = box_.next_due();
  if (due == exchange::never) return;
  next_ = loop_.schedule(std::clamp(due - now(), Moment{0}, longest_sleep), [this] { go_on(); });
}

void PracticePort::wake() {
  loop_.cancel(next_);
  next_ = loop_.schedule(Moment{0}, [this] { go_on(); });
}

}  // namespace lineweir::practice

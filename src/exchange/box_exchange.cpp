#include "exchange/box_exchange.h"

#include <algorithm>

#include "base/text.h"
#include "exchange/switchboard.h"

namespace lineweir::exchange {
namespace {

// The lines that a report can name.
constexpr int told_lines = 10;

// At 1200 bits a second, of which a character takes ten.
constexpr platform::Milliseconds::rep characters_a_second = 120;

// What doesn't become a report is noise; a box that sends nothing else must not fill the memory.
constexpr std::size_t longest_noise = 4096;

constexpr char handset_words[] = {'P', 'O'};

}  // namespace

BoxExchange::BoxExchange(platform::EventLoop& loop, int line_count, OpenPort open_port)
    : loop_(loop),
      open_port_(std::move(open_port)),
      letters_(static_cast<std::size_t>(line_count), idle_letter) {
  schedule(platform::Milliseconds{0}, &BoxExchange::open);
}

BoxExchange::~BoxExchange() { loop_.cancel(next_call_); }

char BoxExchange::letter(int line) const {
  const auto place = static_cast<std::size_t>(line);
  return line >= 0 && place < letters_.size() ? letters_[place] : idle_letter;
}

platform::Milliseconds BoxExchange::backlog() const {
  return std::max(line_free_ - loop_.now(), platform::Milliseconds{0});
}

bool BoxExchange::has_told_all() const {
  return reached_ && static_cast<int>(told_.size()) >= std::min(line_count(), told_lines);
}

void BoxExchange::obey(std::string_view word) {
  if (port_ && backlog() <= latest_word) send(word);
}

void BoxExchange::take_to_position(int line, int position) {
  if (position < 0 || position >= static_cast<int>(std::size(handset_words))) return;
  obey(status_item(line, handset_words[position]));
}

void BoxExchange::open() {
  port_ = open_port_();
  if (!port_) return schedule(retry_after, &BoxExchange::open);
  received_ = {};
  unanswered_ = 0;
  told_.clear();
  port_->on_bytes = [this](std::string_view bytes) { hear(bytes); };
  port_->on_end = [this](platform::ConnectionEnd) { lose(); };
  line_free_ = loop_.now();
  send("M");
  ask_for_all_lines();
  schedule(asked_every, &BoxExchange::ask_again);
}

void BoxExchange::send(std::string_view characters) {
  const auto count = static_cast<platform::Milliseconds::rep>(characters.size());
  line_free_ = std::max(line_free_, loop_.now()) +
               platform::Milliseconds{count * 1000 / characters_a_second};
  port_->send(characters);
}

void BoxExchange::ask_for_all_lines() {
  for (int line = 0; line < std::min(line_count(), told_lines); ++line) {
    send("Q" + zero_filled(line, 2));
  }
}

void BoxExchange::ask_again() {
  if (unanswered_ >= missed_answers) set_reached(false);
  ++unanswered_;
  // One that begins anew has forgotten that it is to report.
  if (!reached_) send("M");
  ask_for_all_lines();
  schedule(asked_every, &BoxExchange::ask_again);
}

void BoxExchange::hear(std::string_view bytes) {
  received_.append(bytes);
  const StatusScan scan = received_.scan(line_count());
  received_.drop(scan.consumed);
  if (received_.text().size() > longest_noise) received_ = {};
  bool is_answer = false;
  for (const StatusItem& item : scan.items) {
    if (!is_report(item)) continue;
    is_answer = true;
    take(item);
  }
  if (!is_answer) return;
  unanswered_ = 0;
  set_reached(true);
}

// Noise may look like an item.
bool BoxExchange::is_report(StatusItem item) const {
  return item.line >= 0 && item.line < line_count() &&
         status_letters.find(item.letter) != std::string_view::npos;
}

void BoxExchange::take(StatusItem item) {
  told_.insert(item.line);
  char& letter = letters_[static_cast<std::size_t>(item.line)];
  if (letter == item.letter) return;
  letter = item.letter;
  if (on_change) on_change({item.line, item.letter}, {});
}

void BoxExchange::lose() {
  port_.reset();
  set_reached(false);
  schedule(retry_after, &BoxExchange::open);
}

void BoxExchange::set_reached(bool reached) {
  if (reached_ == reached) return;
  reached_ = reached;
  if (on_reached) on_reached(reached);
}

void BoxExchange::schedule(platform::Milliseconds delay, void (BoxExchange::*call)()) {
  loop_.cancel(next_call_);
  next_call_ = loop_.schedule(delay, [this, call] { (this->*call)(); });
}

}  // namespace lineweir::exchange

#include "studio/word_cutter.h"

#include <utility>

namespace lineweir::studio {
namespace {

constexpr std::string_view letters_alone = "MXR";
constexpr std::string_view letters_with_two_digits = "FHNCLSPOTZV";

bool is_digit(char character) { return character >= '0' && character <= '9'; }

}  // namespace

WordCutter::WordCutter(int line_count) : line_count_(line_count) {}

std::vector<Token> WordCutter::feed(std::string_view bytes) {
  for (const char character : bytes) take(character);
  return std::exchange(tokens_, {});
}

std::vector<Token> WordCutter::idle() {
  if (state_ == State::QueryMore) finish_word();
  flush_noise();
  return std::exchange(tokens_, {});
}

bool WordCutter::idle_matters() const { return state_ == State::QueryMore || !noise_.empty(); }

void WordCutter::take(char character) {
  switch (state_) {
    case State::Start:
      begin(character);
      return;
    case State::FirstTwo:
      if (!is_digit(character)) return break_off(character);
      extend(character, State::SecondTwo);
      return;
    case State::SecondTwo:
      if (!is_digit(character)) return break_off(character);
      word_ += character;
      finish_word();
      return;
    case State::QueryZero:
      if (character != '0') return break_off(character);
      extend(character, State::QueryDigit);
      return;
    case State::QueryDigit:
      if (!is_digit(character)) return break_off(character);
      extend(character, State::QueryMore);
      if (character != '1' || !has_two_digit_queries()) finish_word();
      return;
    case State::QueryMore:
      if (is_digit(character)) word_ += character;
      finish_word();
      if (!is_digit(character)) begin(character);
      return;
  }
}

void WordCutter::begin(char character) {
  if (letters_alone.find(character) != std::string_view::npos) {
    word_ = character;
    finish_word();
  } else if (letters_with_two_digits.find(character) != std::string_view::npos) {
    extend(character, State::FirstTwo);
  } else if (character == 'Q') {
    extend(character, State::QueryZero);
  } else {
    add_noise({&character, 1});
  }
}

void WordCutter::extend(char character, State next) {
  word_ += character;
  state_ = next;
}

void WordCutter::finish_word() {
  flush_noise();
  tokens_.push_back({Token::Kind::Word, std::exchange(word_, {})});
  state_ = State::Start;
}

void WordCutter::break_off(char character) {
  add_noise(std::exchange(word_, {}));
  state_ = State::Start;
  begin(character);
}

void WordCutter::add_noise(std::string_view text) {
  for (const char character : text) {
    noise_ += character;
    if (noise_.size() == longest_noise) flush_noise();
  }
}

void WordCutter::flush_noise() {
  if (noise_.empty()) return;
  tokens_.push_back({Token::Kind::Noise, std::exchange(noise_, {})});
}

}  // namespace lineweir::studio

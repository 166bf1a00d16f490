#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lineweir::studio {

// A piece of what the console sent: a word of the grammar, or characters that belong to none.
struct Token {
  enum class Kind { Word, Noise };

  Kind kind;
  std::string text;

  bool operator==(const Token&) const = default;
};

// Cuts the stream of command words, which have neither separator nor terminator, by their grammar:
//
//   M  X  R                    stand alone
//   F H N C L S P O T Z V      take two digits
//   Q 0 d                      asks for line d; with twenty lines also
//   Q 0 1 d                    asks for line 1d
//
// The wire can cut the stream anywhere: the words depend on the characters alone and never on how
// they were fed. The one case that characters cannot decide is "Q01" with twenty lines, which is
// complete if no digit follows; idle() decides it.
//
// A word that breaks off turns into noise, and the character that broke it begins afresh.
class WordCutter {
 public:
  // A run of noise is handed out in pieces of at most this length, so that garbage takes no memory.
  static constexpr std::size_t longest_noise = 32;

  explicit WordCutter(int line_count);

  std::vector<Token> feed(std::string_view bytes);

  // The wire has been silent for a while: hands out what need not wait for another character. The
  // beginning of a word stays, however long the rest takes.
  std::vector<Token> idle();

  // Whether idle() would hand out anything.
  bool idle_matters() const;

 private:
  enum class State {
    Start,       // between words
    FirstTwo,    // a letter that takes two digits; none has come
    SecondTwo,   // one digit has come
    QueryZero,   // "Q"; its "0" must follow
    QueryDigit,  // "Q0"; the digit must follow
    QueryMore,   // "Q01", which a digit can lengthen
  };

  void take(char character);
  void begin(char character);
  void extend(char character, State next);
  void finish_word();
  void break_off(char character);
  void add_noise(std::string_view text);
  void flush_noise();
  bool has_two_digit_queries() const { return line_count_ > 10; }

  int line_count_;
  State state_ = State::Start;
  std::string word_;   // the word begun
  std::string noise_;  // what came before it and was none
  std::vector<Token> tokens_;
};

}  // namespace lineweir::studio

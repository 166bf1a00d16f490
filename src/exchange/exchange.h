#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace lineweir::exchange {

// A line that now has another letter than before. Letters are those of the status reports, F for a
// free line; a line at a numbered handset position has the letter of code 128 plus the position.
struct LineChange {
  int line;
  char letter;

  bool operator==(const LineChange&) const = default;
};

// Telephone lines and what works them: command words go in, changes come out. What a word did is
// true when its change comes, which may be at once, later or never.
class Exchange {
 public:
  virtual ~Exchange() = default;

  // Lines count from 0.
  virtual int line_count() const = 0;
  // As last told by the exchange; F for a line of which nothing is known.
  virtual char letter(int line) const = 0;
  // False while the exchange can't be reached: the letters are the last ones that it told.
  virtual bool is_reached() const = 0;
  // Every line's letter is the exchange's word, and none is F only because nothing is known yet.
  virtual bool has_told_all() const { return is_reached(); }
  // A word that is handed over now begins to go out after this time.
  virtual std::chrono::milliseconds backlog() const { return {}; }

  // A command word of the equipment, such as "N05". One that it doesn't know changes nothing.
  virtual void obey(std::string_view word) = 0;
  // A line goes to a handset position, counted from 0, of an exchange that numbers its positions.
  virtual void take_to_position(int line, int position) = 0;

  // A caller arrives on a free line, or leaves. Whether that is so; an exchange with real callers
  // answers false.
  virtual bool arrive(int line, std::string number) = 0;
  virtual bool leave(int line) = 0;

  // Set by the owner. A change comes with the caller's number where the exchange knows it. Both may
  // run from within the calls above.
  std::function<void(LineChange change, const std::string& number)> on_change;
  std::function<void(bool reached)> on_reached;
  // A word that the equipment sends by itself, such as "U05".
  std::function<void(std::string_view word)> on_word;
};

}  // namespace lineweir::exchange

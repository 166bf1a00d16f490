#pragma once

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "lines/caller_record.h"
#include "lines/status_letters.h"

namespace lineweir {

// An array indexed by line. An index outside it is a Failure of number 9.
template <class T>
class LineArray {
 public:
  explicit LineArray(int count, T initial = T{}) : initial_(initial) { resize(count); }

  T& operator()(int line) { return values_[checked(line)]; }
  const T& operator()(int line) const { return values_[checked(line)]; }

  int size() const { return static_cast<int>(values_.size()); }
  void resize(int count) { values_.resize(static_cast<std::size_t>(count), initial_); }

 private:
  std::size_t checked(int line) const {
    if (line < 0 || line >= size()) {
      throw Failure(failure_number::out_of_range, "Subscript out of range");
    }
    return static_cast<std::size_t>(line);
  }

  T initial_;
  std::vector<T> values_;
};

// The letters of the lines. Whoever shows what the lines do is told of each change.
class StatusLetters {
 public:
  explicit StatusLetters(int count) : letters_(count, idle_letter) {}

  // One line's letter, to be read and written.
  class Place {
   public:
    Place(StatusLetters& letters, int line) : letters_(letters), line_(line) {}

    operator char() const { return letters_.letters_(line_); }
    Place& operator=(char letter) {
      letters_.set(line_, letter);
      return *this;
    }

   private:
    StatusLetters& letters_;
    int line_;
  };

  char operator()(int line) const { return letters_(line); }
  Place operator()(int line) { return {*this, line}; }

  int size() const { return letters_.size(); }
  void resize(int count) { letters_.resize(count); }

  // Told behind each change, with the letter before it; an equal letter is none.
  std::function<void(int line, char before)> on_change;

 private:
  void set(int line, char letter) {
    char& present = letters_(line);
    if (present == letter) return;
    const char before = std::exchange(present, letter);
    if (on_change) on_change(line, before);
  }

  LineArray<char> letters_;
};

inline constexpr int no_line = -1;
inline constexpr int lines_of_small_layout = 10;
inline constexpr int lines_of_large_layout = 20;

// All that the console knows of its studio's lines. A line is its index from 0; the row shown to
// the user is the index plus one. The status decoders are the writers of letters.
struct LineTable {
  int LineCount = lines_of_small_layout;

  // A blank while the line is idle.
  StatusLetters StatusLetter{lines_of_small_layout};
  // 1 for a line whose letter is the blank since it was made busy.
  LineArray<int> SetBusy{lines_of_small_layout};
  LineArray<CallerRecord> CallerData{lines_of_small_layout};
  // Date and time at which the line last entered S or H; empty when there is none.
  LineArray<std::string> HoldStamp{lines_of_small_layout};
  // The time of day, "hh:mm:ss", from which the row's clock counts; empty when there is none.
  LineArray<std::string> ClockBase{lines_of_small_layout};
  // 1 while the row's clock runs.
  LineArray<int> ClockRunning{lines_of_small_layout};
  // Set when a ring report has been held back for one pass over a line in H or S.
  std::array<bool, 26> RingConfirm{};

  int TheNextCall = no_line;
  bool NextCallSet = false;
  int CurrentDataLine = 0;
  // Set when a server connection is made, until the next full status has restored the table.
  bool FreshConnect = false;
  // The kind of telephone equipment, 1 to 4; only a server changes it.
  int ThePhoneFlag = 1;

  // Changes LineCount and all arrays with it; what they hold stays. A next call whose line is gone
  // is none any more.
  void resize(int line_count);

  // The letter by which a line's row is drawn.
  char shown_letter(int line) const {
    const char letter = StatusLetter(line);
    return letter == idle_letter && SetBusy(line) != 0 ? busy_letter : letter;
  }

  bool has_caller(int line) const {
    const char letter = StatusLetter(line);
    return letter != idle_letter && letter != busy_letter;
  }

  // Whether the layout in force is the one of twenty lines; the menu's check mark only says which
  // one the next start takes.
  bool twenty_lines() const { return LineCount > lines_of_small_layout; }
};

}  // namespace lineweir

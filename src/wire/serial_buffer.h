#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir {

// One status report found in the stream: "N05" is letter N of line 5.
struct StatusItem {
  char letter;
  int line;
};

// What is to be done with the buffer as it stands now.
struct StatusScan {
  // In the order in which they are handled: by the number that was looked for, not by arrival.
  std::vector<StatusItem> items;
  // How many characters to drop from the front once all items are handled.
  std::size_t consumed = 0;
};

// The characters received from the box and not yet consumed.
//
// A report is a letter and a token: "0" and the decimal text of a line number, so "05", and "010"
// for ten. Of each token only the last place in the buffer counts, and one at the very start, with
// no letter in front, is left alone. The line is the value of the token's first two digits, so that
// "010" reports line 1. What doesn't match stays, without limit.
//
// The last place of each token is kept up to date as characters arrive, so that each character is
// looked at once, however long the buffer grows.
class SerialBuffer {
 public:
  void append(std::string_view characters);
  StatusScan scan(int line_count) const;
  void drop(std::size_t count);

  const std::string& text() const { return text_; }
  void assign(std::string_view text);

 private:
  static constexpr std::size_t tokens = 20;

  void note_tokens(std::size_t from);

  std::string text_;
  std::array<std::optional<std::size_t>, tokens> last_place_{};
};

}  // namespace lineweir

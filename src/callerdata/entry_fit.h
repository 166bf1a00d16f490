#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// A text with the caret in it, as the user's hand has made it.
struct EditedText {
  std::string text;
  int caret = 0;
  // Whether something that was put in has found no room.
  bool left_out = false;

  friend bool operator==(const EditedText&, const EditedText&) = default;
};

// Keeps an edited text within a field's room: of what the user has put in, the characters that find
// no room are left out. What stood there before stays, also if it is longer.
EditedText fit_text(std::string_view before, EditedText edited, std::size_t room);

// The same for a telephone number, which is written without separators before it loses a digit.
EditedText fit_number(std::string_view before, EditedText edited, std::size_t room);

// A telephone number as it can be kept in so much room; a text that is no number, or that is short
// enough, as it stands.
std::string number_within(std::string_view text, std::size_t room);

}  // namespace lineweir

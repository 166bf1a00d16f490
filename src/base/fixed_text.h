#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace lineweir {

// A text of exactly N characters: an assignment cuts a longer text and pads a shorter one with
// blanks.
template <std::size_t N>
class FixedText {
 public:
  FixedText() : text_(N, ' ') {}
  FixedText(std::string_view text) : FixedText() { *this = text; }

  FixedText& operator=(std::string_view text) {
    text_.assign(text.substr(0, N));
    text_.resize(N, ' ');
    return *this;
  }

  const std::string& text() const { return text_; }
  std::string_view trimmed() const { return lineweir::trimmed(text_); }

  friend bool operator==(const FixedText&, const FixedText&) = default;

 private:
  std::string text_;
};

}  // namespace lineweir

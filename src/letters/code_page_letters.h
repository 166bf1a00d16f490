#pragma once

#include <optional>
#include <vector>

#include "letters/code_pages.h"
#include "letters/letters.h"
#include "letters/transliterator.h"

namespace lineweir {

// One byte a character, in one of the sets of Windows.
class CodePageLetters final : public Letters {
 public:
  // The transliterator must outlive this object. Without one a code point that the set doesn't hold
  // becomes "?".
  explicit CodePageLetters(const CodePage& page = default_code_page(),
                           const Transliterator* transliterator = nullptr);

  const CodePage& page() const { return page_; }

  std::string to_utf8(std::string_view text) const override;

  // Each byte that is no part of a code point becomes "?".
  std::string from_utf8(std::string_view utf8) const override;

 private:
  struct Entry {
    char16_t point;
    char byte;
  };

  char16_t point_of(char byte) const;
  std::optional<char> byte_of(char32_t point) const;
  bool append_held(std::string& text, char32_t point) const;
  void append_foreign(std::string& text, std::string_view utf8) const;

  const CodePage& page_;
  const Transliterator* transliterator_;
  // The upper half of the set by code points.
  std::vector<Entry> entries_;
};

}  // namespace lineweir

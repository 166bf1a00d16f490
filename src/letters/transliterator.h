#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// The knowledge of all scripts that a small set of letters needs for what it doesn't have. All
// texts are UTF-8.
class Transliterator {
 public:
  virtual ~Transliterator() = default;

  // The text with each letter and its accents as one character where there is such a character.
  virtual std::string composed(std::string_view text) const = 0;

  // The text in plain Latin letters; what can't be written in them is left as it is.
  virtual std::string plain_latin(std::string_view text) const = 0;
};

}  // namespace lineweir

#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// How the bytes of a text are read: the edge where a console's texts and Unicode meet.
class Letters {
 public:
  virtual ~Letters() = default;

  virtual std::string to_utf8(std::string_view text) const = 0;

  // A text of these letters for any Unicode text. What they don't have is written as near to it as
  // they can, and as "?" where nothing is near.
  virtual std::string from_utf8(std::string_view utf8) const = 0;
};

// Texts that are UTF-8 themselves.
const Letters& utf8_letters();

}  // namespace lineweir

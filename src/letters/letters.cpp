#include "letters/letters.h"

namespace lineweir {
namespace {

class Utf8Letters final : public Letters {
 public:
  std::string to_utf8(std::string_view text) const override { return std::string(text); }
  std::string from_utf8(std::string_view utf8) const override { return std::string(utf8); }
};

const Utf8Letters utf8;

}  // namespace

const Letters& utf8_letters() { return utf8; }

}  // namespace lineweir

#include "letters/vietnamese.h"

namespace lineweir {
namespace {

// Grave, hook above, tilde, acute, dot below.
constexpr std::u16string_view marks = u"\u0300\u0309\u0303\u0301\u0323";

struct LetterRow {
  char16_t letter;
  // With each of the marks.
  std::u16string_view marked;
};

constexpr std::array letter_rows = {
    LetterRow{u'A', u"ÀẢÃÁẠ"}, LetterRow{u'a', u"àảãáạ"}, LetterRow{u'Ă', u"ẰẲẴẮẶ"},
    LetterRow{u'ă', u"ằẳẵắặ"}, LetterRow{u'Â', u"ẦẨẪẤẬ"}, LetterRow{u'â', u"ầẩẫấậ"},
    LetterRow{u'E', u"ÈẺẼÉẸ"}, LetterRow{u'e', u"èẻẽéẹ"}, LetterRow{u'Ê', u"ỀỂỄẾỆ"},
    LetterRow{u'ê', u"ềểễếệ"}, LetterRow{u'I', u"ÌỈĨÍỊ"}, LetterRow{u'i', u"ìỉĩíị"},
    LetterRow{u'O', u"ÒỎÕÓỌ"}, LetterRow{u'o', u"òỏõóọ"}, LetterRow{u'Ô', u"ỒỔỖỐỘ"},
    LetterRow{u'ô', u"ồổỗốộ"}, LetterRow{u'Ơ', u"ỜỞỠỚỢ"}, LetterRow{u'ơ', u"ờởỡớợ"},
    LetterRow{u'U', u"ÙỦŨÚỤ"}, LetterRow{u'u', u"ùủũúụ"}, LetterRow{u'Ư', u"ỪỬỮỨỰ"},
    LetterRow{u'ư', u"ừửữứự"}, LetterRow{u'Y', u"ỲỶỸÝỴ"}, LetterRow{u'y', u"ỳỷỹýỵ"},
};

}  // namespace

std::optional<VietnameseLetter> taken_apart(char32_t point) {
  for (const LetterRow& row : letter_rows) {
    for (std::size_t i = 0; i < marks.size(); ++i) {
      if (row.marked[i] == point) return VietnameseLetter{row.letter, marks[i]};
    }
  }
  return std::nullopt;
}

std::optional<char16_t> put_together(VietnameseLetter parts) {
  const auto mark = marks.find(parts.mark);
  if (mark == std::u16string_view::npos) return std::nullopt;
  for (const LetterRow& row : letter_rows) {
    if (row.letter == parts.letter) return row.marked[mark];
  }
  return std::nullopt;
}

}  // namespace lineweir

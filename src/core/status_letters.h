#pragma once

#include <array>
#include <string_view>

namespace lineweir {

enum class RowColor { White, Green, Red };

// What a row shows in a state, as the status decoders show it. The icons are the pair for
// HybridPictureSet. A row that `may_be_next` is green while its line is the next call.
struct LetterLook {
  char letter;
  std::string_view status_text;
  RowColor row;
  bool may_be_next;
  int icon1;
  int icon2;
};

// The status letters; the set is closed. F is a report only and never stored: a freed line's
// letter becomes the blank.
inline constexpr std::array letter_looks = {
    LetterLook{' ', "", RowColor::White, false, 0, 0},
    LetterLook{'F', "", RowColor::White, false, 0, 0},
    LetterLook{'R', "", RowColor::White, false, 3, 3},
    LetterLook{'S', "Ready", RowColor::White, true, 3, 3},
    LetterLook{'H', "Held", RowColor::White, true, 2, 2},
    LetterLook{'P', "", RowColor::White, true, 2, 2},
    LetterLook{'O', "", RowColor::White, true, 2, 2},
    LetterLook{'E', "", RowColor::White, true, 2, 2},
    LetterLook{'N', "On Air", RowColor::Red, false, 1, 0},
    LetterLook{'C', "On Air", RowColor::Red, false, 0, 1},
    LetterLook{'L', "Locked", RowColor::Red, false, 1, 0},
    LetterLook{'K', "Locked", RowColor::Red, false, 0, 1},
    LetterLook{'Y', "Locked", RowColor::White, true, 2, 2},
    LetterLook{'B', "Set Busy", RowColor::White, false, 4, 4},
};

// The look of a letter; null for one outside the set.
constexpr const LetterLook* look_of(char letter) {
  for (const auto& look : letter_looks) {
    if (look.letter == letter) return &look;
  }
  return nullptr;
}

// The look of a letter that a server reports. A letter outside the set stands for a line that is
// taken. With equipment of kind 3 a console at handset position 1 has its handset on the conference
// hybrid, so that C isn't on air there.
constexpr LetterLook reported_look(char letter, int equipment_kind, bool handset_1) {
  if (letter == 'C' && equipment_kind == 3 && handset_1) {
    return {letter, "", RowColor::White, false, 2, 2};
  }
  const LetterLook* look = look_of(letter);
  return look != nullptr ? *look : LetterLook{letter, "", RowColor::White, true, 2, 2};
}

// The text that a letter gives by itself when a display is rebuilt from the table: Y gives the
// empty text here and "Locked" only through the decoders.
constexpr std::string_view status_text_of(char letter) {
  const LetterLook* look = look_of(letter);
  return look == nullptr || letter == 'Y' ? std::string_view{} : look->status_text;
}

}  // namespace lineweir

#include "desktop/key_codes.h"

#include <doctest/doctest.h>

#include <QKeyEvent>
#include <utility>
#include <vector>

namespace lineweir {
namespace {

// A key whose keyboard tells no place of it.
QKeyEvent key_event(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  return {QEvent::KeyPress, key, modifiers};
}

QKeyEvent key_at(quint32 scan_code, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  return {QEvent::KeyPress, key, modifiers, scan_code, 0, 0};
}

TEST_SUITE("desktop/key_codes") {
  TEST_CASE("keys that are no characters have the codes that the core knows") {
    const std::vector<std::pair<int, int>> codes = {
        {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},       {Qt::Key_Backtab, 9},
        {Qt::Key_Return, 13},   {Qt::Key_Enter, 13},    {Qt::Key_Shift, 16},
        {Qt::Key_Control, 17},  {Qt::Key_Alt, 18},      {Qt::Key_Pause, 19},
        {Qt::Key_CapsLock, 20}, {Qt::Key_Escape, 27},   {Qt::Key_Space, 32},
        {Qt::Key_PageUp, 33},   {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},
        {Qt::Key_Home, 36},     {Qt::Key_Left, 37},     {Qt::Key_Up, 38},
        {Qt::Key_Right, 39},    {Qt::Key_Down, 40},     {Qt::Key_Insert, 45},
        {Qt::Key_Delete, 46},   {Qt::Key_F1, 112},      {Qt::Key_F12, 123},
        {Qt::Key_F24, 135},     {Qt::Key_F25, 0},       {Qt::Key_Menu, 0},
        {Qt::Key_MediaPlay, 0}, {Qt::Key_unknown, 0},
    };
    for (const auto& [key, code] : codes) {
      CAPTURE(key);
      CHECK(key_code(key_event(key)) == code);
    }
  }

  TEST_CASE("letters and digits have the code of their capital character") {
    for (int key = Qt::Key_A; key <= Qt::Key_Z; ++key) CHECK(key_code(key_event(key)) == key);
    for (int key = Qt::Key_0; key <= Qt::Key_9; ++key) CHECK(key_code(key_event(key)) == key);
    for (int digit = 0; digit <= 9; ++digit) {
      CHECK(key_code(key_event(Qt::Key_0 + digit, Qt::KeypadModifier)) == 96 + digit);
    }
  }

  TEST_CASE("what shift makes of the digit row is a digit still") {
    constexpr std::string_view shifted = ")!@#$%^&*(";
    for (std::size_t digit = 0; digit < shifted.size(); ++digit) {
      CAPTURE(digit);
      CHECK(key_code(key_event(shifted[digit], Qt::ShiftModifier)) ==
            '0' + static_cast<int>(digit));
    }
  }

  TEST_CASE("the digit row gives digits by its place whatever the keyboard's layout writes there") {
    // Of a French keyboard, whose digit row writes letters with accents.
    const std::vector<std::pair<quint32, int>> row = {
        {10, Qt::Key_Ampersand},  {11, Qt::Key_Eacute},     {12, Qt::Key_QuoteDbl},
        {13, Qt::Key_Apostrophe}, {14, Qt::Key_ParenLeft},  {15, Qt::Key_Minus},
        {16, Qt::Key_Egrave},     {17, Qt::Key_Underscore}, {18, Qt::Key_Ccedilla},
        {19, Qt::Key_Agrave},
    };
    int digit = 1;
    for (const auto& [scan_code, key] : row) {
      CAPTURE(scan_code);
      CHECK(key_code(key_at(scan_code, key)) == '0' + digit % 10);
      ++digit;
    }
    CHECK(key_code(key_at(9, Qt::Key_Escape)) == 27);
    CHECK(key_code(key_at(20, Qt::Key_Minus)) == 0);
    // Keys of the keypad have places of their own.
    CHECK(key_code(key_at(10, Qt::Key_End, Qt::KeypadModifier)) == 35);
  }

  TEST_CASE("shift, control and alt add up") {
    CHECK(shift_state(Qt::NoModifier) == 0);
    CHECK(shift_state(Qt::ShiftModifier) == 1);
    CHECK(shift_state(Qt::ControlModifier) == 2);
    CHECK(shift_state(Qt::AltModifier) == 4);
    CHECK(shift_state(Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier) == 7);
    CHECK(shift_state(Qt::MetaModifier | Qt::KeypadModifier) == 0);
  }

  TEST_CASE("Alt with a character is a command, and nothing to be entered") {
    const auto is_command = [](Qt::KeyboardModifiers held, const char* text) {
      return is_alt_command(
          QKeyEvent(QEvent::KeyPress, Qt::Key_X, held, QString::fromLatin1(text)));
    };
    CHECK(is_command(Qt::AltModifier, "x"));
    CHECK(is_command(Qt::AltModifier | Qt::ShiftModifier, "X"));
    CHECK_FALSE(is_command(Qt::AltModifier, ""));
    CHECK_FALSE(is_command(Qt::AltModifier, "\t"));
    CHECK_FALSE(is_command(Qt::NoModifier, "x"));
    CHECK_FALSE(is_command(Qt::AltModifier | Qt::ControlModifier, "x"));
    CHECK_FALSE(is_command(Qt::AltModifier | Qt::MetaModifier, "x"));
  }
}

}  // namespace
}  // namespace lineweir

#include "desktop/key_codes.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

namespace lineweir {
namespace {

struct KeyRow {
  int qt_key;
  int code;
};

constexpr std::array coded_keys = {
    KeyRow{Qt::Key_Backspace, 8},
    KeyRow{Qt::Key_Tab, 9},
    KeyRow{Qt::Key_Backtab, 9},
    KeyRow{Qt::Key_Return, 13},
    KeyRow{Qt::Key_Enter, 13},
    KeyRow{Qt::Key_Shift, 16},
    KeyRow{Qt::Key_Control, 17},
    KeyRow{Qt::Key_Alt, 18},
    KeyRow{Qt::Key_Pause, 19},
    KeyRow{Qt::Key_CapsLock, 20},
    KeyRow{Qt::Key_Escape, 27},
    KeyRow{Qt::Key_Space, 32},
    KeyRow{Qt::Key_PageUp, 33},
    KeyRow{Qt::Key_PageDown, 34},
    KeyRow{Qt::Key_End, 35},
    KeyRow{Qt::Key_Home, 36},
    KeyRow{Qt::Key_Left, 37},
    KeyRow{Qt::Key_Up, 38},
    KeyRow{Qt::Key_Right, 39},
    KeyRow{Qt::Key_Down, 40},
    KeyRow{Qt::Key_Insert, 45},
    KeyRow{Qt::Key_Delete, 46},
    // What shift makes of the digit row where the keyboard tells no place of the key.
    KeyRow{Qt::Key_Exclam, '1'},
    KeyRow{Qt::Key_At, '2'},
    KeyRow{Qt::Key_NumberSign, '3'},
    KeyRow{Qt::Key_Dollar, '4'},
    KeyRow{Qt::Key_Percent, '5'},
    KeyRow{Qt::Key_AsciiCircum, '6'},
    KeyRow{Qt::Key_Ampersand, '7'},
    KeyRow{Qt::Key_Asterisk, '8'},
    KeyRow{Qt::Key_ParenLeft, '9'},
    KeyRow{Qt::Key_ParenRight, '0'},
};

constexpr int first_function_key = 112;
constexpr int function_keys = 24;
constexpr int keypad_zero = 96;

// The digit row's scan codes under X11 and Wayland run from 10 for "1" to 19 for "0".
constexpr quint32 scan_code_of_one = 10;
constexpr quint32 scan_code_of_zero = 19;

}  // namespace

int shift_state(Qt::KeyboardModifiers modifiers) {
  return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) +
         (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) +
         (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

int key_code(const QKeyEvent& event) {
  const int key = event.key();
  const bool keypad = event.modifiers().testFlag(Qt::KeypadModifier);
  if (key >= Qt::Key_0 && key <= Qt::Key_9) {
    return keypad ? keypad_zero + key - Qt::Key_0 : key;
  }
  if (key >= Qt::Key_A && key <= Qt::Key_Z) return key;
  if (key >= Qt::Key_F1 && key < Qt::Key_F1 + function_keys) {
    return first_function_key + key - Qt::Key_F1;
  }
#ifdef Q_OS_LINUX
  const quint32 scan_code = event.nativeScanCode();
  if (!keypad && scan_code >= scan_code_of_one && scan_code <= scan_code_of_zero) {
    return scan_code == scan_code_of_zero ? '0'
                                          : '1' + static_cast<int>(scan_code - scan_code_of_one);
  }
#endif
  const auto* row = std::ranges::find(coded_keys, key, &KeyRow::qt_key);
  return row == coded_keys.end() ? 0 : row->code;
}

bool is_alt_command(const QKeyEvent& event) {
  const auto held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  return held == Qt::AltModifier && !event.text().isEmpty() && event.text().front().isPrint();
}

}  // namespace lineweir

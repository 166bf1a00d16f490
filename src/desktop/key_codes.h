#pragma once

#include <Qt>

class QKeyEvent;

namespace lineweir {

// The shift state that events tell: 1 shift, 2 control and 4 alt, added up.
int shift_state(Qt::KeyboardModifiers modifiers);

// The key's code as the core knows keys: digits and letters by their capital character, function
// keys from 112 for F1. 0 for a key without a code. The digit row gives digits whatever character
// shift or the keyboard's layout makes of them.
int key_code(const QKeyEvent& event);

// Whether it is Alt with a character, with shift or without. That is a command and nothing to be
// entered, whatever text comes with it.
bool is_alt_command(const QKeyEvent& event);

}  // namespace lineweir

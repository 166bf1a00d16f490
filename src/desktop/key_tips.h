#pragma once

#include <QString>

namespace lineweir {

class Control;
class MainForm;

// What a key of the main form does, with its hot key: "Drop the caller on the main hybrid (D)".
QString key_tip(const Control& key);

// Why a key of the main form is disabled by the seat's mode; empty for a key that isn't.
QString why_disabled(const MainForm& form, const Control& key);

}  // namespace lineweir

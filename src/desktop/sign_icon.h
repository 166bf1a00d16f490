#pragma once

#include <QChar>
#include <QIcon>

namespace lineweir {

struct Theme;

// The sign of a message: a disc with a letter, in the sizes that scales from 1 to 3 ask for.
QIcon sign_icon(QChar letter, const Theme& theme);

}  // namespace lineweir

#pragma once

#include <QString>

namespace lineweir {

// Why a menu item or a key that a right withholds does nothing.
inline QString not_allowed_text() { return QStringLiteral("Not allowed for this user"); }

// How much of such a key still shows.
inline constexpr double withheld_opacity = 0.45;

}  // namespace lineweir

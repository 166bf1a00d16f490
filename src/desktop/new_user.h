#pragma once

#include <QSize>

namespace lineweir {

struct Console;

// The size of a new user's form on a screen with that room: about two thirds of the height, as wide
// as the design is for that height, but never smaller than the design nor wider than the room.
// All are of one unit.
QSize first_size(QSize room, QSize design);

// What a user without settings begins with on that room, in pixels: a window that is easily read
// from where he sits, and texts that grow with it.
void welcome_new_user(Console& console, QSize room);

}  // namespace lineweir

#pragma once

#include <QRect>

class QWidget;

namespace lineweir {

// Keeps a window that isn't shown yet, with the frame that it will have, in the room of its screen:
// what can be smaller shrinks. What needs more at least than there is comes to stand in an area
// that is scrolled.
void keep_in_room(QWidget& window, const QRect& room);

// The same in what is free of the window's screen.
void keep_on_screen(QWidget& window);

}  // namespace lineweir

#pragma once

#include <QWidget>
#include <QWindow>

namespace lineweir {

// Where a window stands with its frame. A widget asks for its frame once, and may be too early for
// its window manager; its window asks each time.
inline QPoint frame_place(const QWidget& window) {
  const QWindow* handle = window.windowHandle();
  return handle == nullptr || !window.isVisible() ? window.pos() : handle->framePosition();
}

}  // namespace lineweir

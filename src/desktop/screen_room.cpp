#include "desktop/screen_room.h"

#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWidget>
#include <algorithm>

namespace lineweir {
namespace {

// What a window manager puts around a window at most; it isn't known before the window is shown.
constexpr QMargins window_frame(4, 32, 4, 4);

// A layout's window shrinks as far as its layout lets it; what is placed by hand doesn't shrink.
QSize least_size(const QWidget& window) {
  return window.layout() == nullptr ? window.size()
                                    : window.minimumSizeHint().expandedTo(window.minimumSize());
}

void put_into_scroll_area(QWidget& window) {
  auto* area = new QScrollArea;
  auto* content = new QWidget;
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidgetResizable(true);
  QLayout* layout = window.layout();
  QWidget* bar = layout->menuBar();
  layout->setMenuBar(nullptr);
  // The layout takes all that it holds along.
  content->setLayout(layout);
  area->setWidget(content);
  auto* outer = new QVBoxLayout(&window);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->setMenuBar(bar);
  outer->addWidget(area);
  // Until then the window keeps the least size of the layout that it had.
  outer->activate();
  window.resize(window.width() + area->verticalScrollBar()->sizeHint().width(), window.height());
}

}  // namespace

void keep_in_room(QWidget& window, const QRect& room) {
  const QRect inner = room.marginsRemoved(window_frame);
  const QSize least = least_size(window);
  const bool too_large = least.width() > inner.width() || least.height() > inner.height();
  if (too_large && window.layout() != nullptr) put_into_scroll_area(window);
  window.resize(window.size().boundedTo(inner.size()));
  // A window that has no frame yet is told the place of its content. Where not all fits, the upper
  // left corner is seen.
  const int left = std::max(std::min(window.x(), inner.right() + 1 - window.width()), inner.left());
  const int top = std::max(std::min(window.y(), inner.bottom() + 1 - window.height()), inner.top());
  if (window.pos() != QPoint(left, top)) window.move(left, top);
}

void keep_on_screen(QWidget& window) {
  const QScreen* screen = QGuiApplication::screenAt(window.geometry().center());
  if (screen == nullptr) screen = window.screen();
  const QRect room = screen->availableGeometry();
  // Of a window that was shown before the frame is known; where it fits it stays to the pixel.
  const QRect with_frame = window.frameGeometry();
  if (with_frame != window.geometry() && room.contains(with_frame)) return;
  keep_in_room(window, room);
}

}  // namespace lineweir

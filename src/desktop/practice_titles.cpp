#include "desktop/practice_titles.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace lineweir {
namespace {

const QLatin1String practice_mark("PRACTICE");

}  // namespace

PracticeTitles::PracticeTitles() { QApplication::instance()->installEventFilter(this); }

bool PracticeTitles::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::WindowTitleChange && event->type() != QEvent::Show) return false;
  auto* window = qobject_cast<QWidget*>(watched);
  if (window == nullptr || !window->isWindow() || window->windowTitle().startsWith(practice_mark)) {
    return false;
  }
  const bool floats = window->windowType() == Qt::ToolTip || window->windowType() == Qt::Popup;
  if (!floats)
    window->setWindowTitle(practice_mark + QStringLiteral(" - ") + window->windowTitle());
  return false;
}

}  // namespace lineweir

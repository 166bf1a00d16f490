#include "desktop/manual_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

namespace lineweir {

ManualKey::ManualKey() { QCoreApplication::instance()->installEventFilter(this); }

bool ManualKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWindowType()) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) return false;
  // An open menu has the keyboard.
  if (QApplication::activePopupWidget() != nullptr) return false;
  const std::string form = form_of(*static_cast<QWindow*>(watched));
  if (form.empty()) return false;
  if (!key.isAutoRepeat()) open(form);
  return true;
}

}  // namespace lineweir

#include "desktop/form_frame.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include "base/text.h"
#include "desktop/core_text.h"
#include "desktop/frame_place.h"
#include "desktop/key_codes.h"
#include "desktop/screen_room.h"
#include "desktop/splash_window.h"
#include "desktop/twips.h"
#include "desktop/window_focus.h"

namespace lineweir {

namespace {

bool menu_has_keyboard() {
  if (QApplication::activePopupWidget() != nullptr) return true;
  // Behind a choice that followed upon Esc the bar may keep the focus, though nothing in it is
  // chosen any more.
  const auto* bar = qobject_cast<const QMenuBar*>(QApplication::focusWidget());
  return bar != nullptr && bar->activeAction() != nullptr;
}

// Whether a question of the system is open. It has the keyboard, and nothing that stood there
// before may come to lie on it.
bool question_waits(const WindowFocus& focus) {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr && !focus.knows(*modal->window()->windowHandle());
}

}  // namespace

FormFrame::FormFrame(Form& form, WindowFocus& focus)
    : FormWatch(form), focus_(focus), frame_([this] { show_changes(); }) {
  mark();
}

FormFrame::~FormFrame() { delete window_; }

bool FormFrame::has_frame() const {
  return window_ != nullptr && window_->isVisible() &&
         !window_->windowHandle()->frameMargins().isNull();
}

void FormFrame::changed(Element& element, PropertyId property) {
  if (&element != &form()) {
    if (shows_in_window(element)) mark();
    return;
  }
  if (property == PropertyId::Visible) awaited_ = focus_.awaited();
  place_changed_ |= property == PropertyId::Left || property == PropertyId::Top;
  size_changed_ |= property == PropertyId::Width || property == PropertyId::Height;
  mark();
  if (window_ == nullptr && form().visible && opens_at_once()) open_window();
}

void FormFrame::shown_again() {
  raise_wanted_ = true;
  awaited_ = focus_.awaited();
  mark();
}

void FormFrame::show_changes() {
  if (window_ == nullptr) {
    if (!form().visible) return;
    open_window();
  }
  form_changed();
  show_title();
  window_->setEnabled(form().enabled);
  if (form().mouse_pointer == pointer_hourglass) {
    window_->setCursor(Qt::WaitCursor);
  } else {
    window_->unsetCursor();
  }
  if (size_changed_) fit_window(*window_);
  if (place_changed_) move_window();
  size_changed_ = false;
  place_changed_ = false;
  show_or_hide();
  if (raise_wanted_ && window_->isVisible() && !question_waits(focus_)) {
    stay_reachable();
    window_->raise();
    if (awaited_ && comes_for_user()) focus_.give_to(*window_);
  }
  raise_wanted_ = false;
}

void FormFrame::show_title() {
  const QString title = shown_text(form(), form().caption.get());
  if (title == title_ && !window_->windowTitle().isEmpty()) return;
  title_ = title;
  window_->setWindowTitle(title);
}

void FormFrame::open_window() {
  window_ = make_window();
  window_->setObjectName(QString::fromStdString(form().name()));
  window_->installEventFilter(this);
  focus_.add(*window_, form());
  // Keys reach the form before the control that has the focus sees them.
  window_->winId();
  window_->windowHandle()->installEventFilter(this);
  fit_window(*window_);
  if (form().left != 0 || form().top != 0) {
    move_window();
  } else {
    window_->move(place_to_open().center() - window_->rect().center());
  }
  take_place();
}

QRect FormFrame::place_to_open() const { return window_->screen()->availableGeometry(); }

void FormFrame::move_window() {
  const QPoint wanted(pixel_edge(form().left), pixel_edge(form().top));
  if (frame_place(*window_) == wanted) return;
  window_->move(wanted);
  // Where the widget doesn't know of its frame yet.
  if (frame_place(*window_) != wanted) window_->windowHandle()->setFramePosition(wanted);
}

void FormFrame::show_or_hide() {
  if (form().visible == window_->isVisible()) {
    if (form().visible) apply_window_state();
    return;
  }
  if (form().visible) {
    window_->setWindowModality(form().modal ? Qt::ApplicationModal : Qt::NonModal);
    about_to_show();
    focus_.opens(*window_, takes_keyboard(awaited_));
    stay_reachable();
    keep_on_screen(*window_);
    window_->show();
    apply_window_state();
  } else {
    focus_.closes(*window_);
    window_->hide();
  }
}

bool FormFrame::takes_keyboard(bool awaited) const { return awaited || !focus_.user_types(); }

void FormFrame::stay_reachable() {
  if (!form().reachable_beside_modal) return;
  const QWidget* modal = QApplication::activeModalWidget();
  const QWidget* owner = modal != nullptr ? modal : focus_.user_window();
  // What came up beside the splash window stands in front of the window that follows it.
  if (owner == nullptr || dynamic_cast<const SplashWindow*>(owner) != nullptr)
    owner = usual_owner();
  // A modal window blocks all but those that belong to it.
  if (owner != nullptr && owner != window_) {
    window_->windowHandle()->setTransientParent(owner->window()->windowHandle());
  }
}

void FormFrame::apply_window_state() {
  const Qt::WindowStates present = window_->windowState();
  Qt::WindowStates wanted = present & ~(Qt::WindowMinimized | Qt::WindowMaximized);
  if (form().window_state == window_minimised) wanted |= Qt::WindowMinimized;
  if (form().window_state == window_maximised) wanted |= Qt::WindowMaximized;
  if (wanted != present) window_->setWindowState(wanted);
}

bool FormFrame::eventFilter(QObject* watched, QEvent* event) {
  if (watched != window_) {
    return event->type() == QEvent::KeyPress && key_swallowed(*static_cast<QKeyEvent*>(event));
  }
  switch (event->type()) {
    case QEvent::Close:
      event->ignore();
      form().close();
      return true;
    case QEvent::Move:
    // The frame comes behind the window, and no event of its own tells of it.
    case QEvent::UpdateRequest:
      window_moved();
      break;
    case QEvent::WindowStateChange:
      window_state_changed();
      break;
    case QEvent::WindowActivate:
      form().on_got_focus();
      break;
    case QEvent::WindowDeactivate:
      if (form().visible) form().on_lost_focus();
      break;
    case QEvent::MouseButtonRelease:
      form().on_click();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void FormFrame::window_moved() {
  if (window_ != nullptr && !window_->isMinimized() && window_->isVisible()) take_place();
}

void FormFrame::take_place() {
  // A place that is the form's own already keeps its twips.
  const QPoint place = frame_place(*window_);
  if (pixel_edge(form().left) != place.x()) form().left = twips_of(place.x());
  if (pixel_edge(form().top) != place.y()) form().top = twips_of(place.y());
}

void FormFrame::window_state_changed() {
  if (!window_->isVisible()) return;
  form().window_state = window_->isMinimized()   ? window_minimised
                        : window_->isMaximized() ? window_maximised
                                                 : window_normal;
}

bool FormFrame::key_swallowed(QKeyEvent& event) {
  if (menu_has_keyboard()) return false;
  const int pressed = key_code(event);
  if (form().on_key_down && pressed != 0) {
    int code = pressed;
    form().on_key_down(code, shift_state(event.modifiers()));
    if (code == 0) return true;
  }
  return form().on_key_press && character_swallowed(event);
}

bool FormFrame::character_swallowed(const QKeyEvent& event) {
  if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
    return false;
  }
  bool swallowed = false;
  for (const char character : core_text(form(), event.text())) {
    int key = code_of(character);
    form().on_key_press(key);
    swallowed = swallowed || key == 0;
  }
  return swallowed;
}

}  // namespace lineweir

#include "desktop/window_focus.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <algorithm>

#include "desktop/user_hands.h"
#include "elements/form.h"

namespace lineweir {
namespace {

// So long a window manager may take to give the keyboard away by itself.
constexpr qint64 keep_milliseconds = 500;

bool blocked(const QWidget& window, const QWidget* closing) {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr && modal != closing && modal != &window && !modal->isAncestorOf(&window);
}

}  // namespace

WindowFocus::WindowFocus(UserHands& hands) : hands_(hands) {
  connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
          [this](QWindow* window) { keyboard_moved(window); });
}

void WindowFocus::add(QWidget& window, const Form& form) {
  places_.insert(places_.begin(), {&window, &form, nullptr});
}

WindowFocus::Place* WindowFocus::place_of(const QWidget* window) {
  const auto found = std::ranges::find(places_, window, [](const Place& place) {
    return static_cast<const QWidget*>(place.window);
  });
  return window == nullptr || found == places_.end() ? nullptr : &*found;
}

const WindowFocus::Place* WindowFocus::place_of(const QWidget* window) const {
  return const_cast<WindowFocus*>(this)->place_of(window);
}

const WindowFocus::Place* WindowFocus::place_of(const QWindow* window) const {
  for (const Place& place : places_) {
    if (place.window != nullptr && place.window->windowHandle() == window) return &place;
  }
  return nullptr;
}

bool WindowFocus::can_have_keyboard(const Place& place, const QWidget* closing) {
  return place.window != nullptr && place.form->visible && place.window->isVisible() &&
         !place.window->isMinimized() && !blocked(*place.window, closing);
}

QWidget* WindowFocus::user_window() const { return last_window(nullptr); }

QWidget* WindowFocus::last_window(const QWidget* closing) const {
  for (auto place = places_.rbegin(); place != places_.rend(); ++place) {
    if (place->window != closing && can_have_keyboard(*place, closing)) return place->window;
  }
  return nullptr;
}

bool WindowFocus::awaited() const {
  if (hands_.commanded()) return true;
  const Place* active = place_of(QApplication::activeWindow());
  return active != nullptr && !active->form->visible;
}

bool WindowFocus::user_types() const { return hands_.typing(); }

void WindowFocus::opens(QWidget& window, bool with_keyboard) {
  QWidget* opener = user_window();
  if (Place* place = place_of(&window); place != nullptr && opener != &window) {
    place->opener = opener;
  }
  window.setAttribute(Qt::WA_ShowWithoutActivating, !with_keyboard);
  if (with_keyboard) {
    hands_.lead_on();
    hands_.command_is_answered();
  }
  keep(with_keyboard ? &window : opener);
}

void WindowFocus::closes(QWidget& window) {
  if (!window.isActiveWindow()) return;
  // A box that follows the window has been shown a moment before.
  const Place* coming = keeping() && kept_ != &window ? place_of(kept_) : nullptr;
  QWidget* next = coming != nullptr && can_have_keyboard(*coming, &window)
                      ? static_cast<QWidget*>(coming->window)
                      : next_behind(window);
  if (next == nullptr) return;
  keep(next);
  next->activateWindow();
}

bool WindowFocus::keeping() const {
  return kept_ != nullptr && hands_.now() - kept_since_ < keep_milliseconds;
}

void WindowFocus::give_to(QWidget& window) {
  keep(&window);
  hands_.lead_on();
  window.activateWindow();
}

QWidget* WindowFocus::next_behind(const QWidget& window) const {
  const Place* place = place_of(&window);
  // Each window was opened later than its opener.
  for (std::size_t step = 0; place != nullptr && step < places_.size(); ++step) {
    place = place_of(place->opener);
    if (place != nullptr && place->window != &window && can_have_keyboard(*place, &window)) {
      return place->window;
    }
  }
  return last_window(&window);
}

void WindowFocus::keep(QWidget* window) {
  kept_ = window;
  kept_since_ = hands_.now();
}

void WindowFocus::keyboard_moved(QWindow* window) {
  const Place* found = place_of(window);
  if (window == nullptr || found == nullptr) return;
  const bool by_itself = keeping() && kept_ != found->window && !hands_.acted_since(kept_since_);
  const Place* kept = by_itself ? place_of(kept_) : nullptr;
  if (kept != nullptr && can_have_keyboard(*kept, nullptr)) {
    kept->window->activateWindow();
    return;
  }
  const auto place = places_.begin() + (found - places_.data());
  std::rotate(place, place + 1, places_.end());
}

}  // namespace lineweir

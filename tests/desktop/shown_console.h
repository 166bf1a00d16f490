#pragma once

#include <QAction>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <functional>
#include <stdexcept>

#include "desktop/desktop.h"
#include "desktop/element_looks.h"
#include "desktop/element_widget.h"
#include "desktop/form_canvas.h"
#include "desktop/main_window.h"
#include "state/settings_record.h"
#include "support/scripted_console.h"

namespace lineweir::test {

// Lets the windows work until the condition holds; false when it doesn't within 10 seconds.
inline bool wait_for(const std::function<bool()>& condition) {
  QElapsedTimer time;
  time.start();
  // Where no event tells of it the condition is looked at now and then, at no cost in between.
  QTimer next_look;
  next_look.start(2);
  while (!condition()) {
    if (time.elapsed() > 10000) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

// A started console whose windows are on the screen. Its clock stands.
struct ShownConsole : ScriptedConsole {
  // The pictures behind the elements are those beside the program, or of these folders.
  explicit ShownConsole(std::string_view command_line = "", const QStringList& pictures = {})
      : ScriptedConsole(command_line),
        desktop(console, pictures.isEmpty() ? background_folders() : pictures) {
    stand_link();
    settle();
  }

  // With texts in that set.
  explicit ShownConsole(const CodePage& page, const Transliterator* transliterator = nullptr)
      : ScriptedConsole(page, transliterator), desktop(console) {
    settle();
  }

  // The same from this settings file.
  explicit ShownConsole(const SettingsRecord& record)
      : ScriptedConsole("", encode_settings(record)), desktop(console) {
    settle();
  }

  // The port is open and its box is heard, as in all that is shown unless a test takes it away.
  void stand_link() { box_sends("F00"); }

  // All changes are shown and painted.
  void settle() {
    desktop.flush();
    QCoreApplication::processEvents();
  }

  // The same, and the keyboard is where it stays: windows take and give it in several turns.
  void come_to_rest() {
    for (int turn = 0; turn < 8; ++turn) settle();
  }

  // The user has had time to look at what is there.
  void look() {
    desktop.hands().now = [now = desktop.hands().now] { return now() + 1000; };
  }

  MainForm& form() { return console.Lineweir; }
  MainWindow& window() { return *desktop.main_frame().main_window(); }
  FormCanvas& canvas() { return window().canvas(); }

  ElementWidget& widget(const Control& control) {
    ElementWidget* found = canvas().widget_of(control);
    if (found == nullptr) throw std::runtime_error("no widget for " + control.name());
    return *found;
  }

  QAction& action(const MenuItem& item) {
    QAction* found = window().menus().action_of(item);
    if (found == nullptr) throw std::runtime_error("no action for " + item.name());
    return *found;
  }

  Desktop desktop;
};

inline QRect on_canvas(ShownConsole& desk, const Control& control) {
  ElementWidget& widget = desk.widget(control);
  return {desk.canvas().origin_of(widget), widget.size()};
}

inline void choose_face(ShownConsole& desk, bool grey) {
  desk.form().GreyScreenOption.checked = grey;
  desk.console.layout.RedefineScreen();
  desk.settle();
}

// The widget of a window that has the name.
template <class Widget>
Widget& part(QWidget& window, const char* name) {
  auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
  if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
  return *found;
}

}  // namespace lineweir::test

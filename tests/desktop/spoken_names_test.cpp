// The names and roles of all elements that are shown, as a screen reader speaks them, beside those
// that were read through once and found good.

#include <doctest/doctest.h>

#include <QAccessible>
#include <QFile>
#include <QMetaEnum>
#include <QWidget>

#include "desktop/shown_console.h"
#include "every_dialog.h"

namespace lineweir {
namespace {

using test::ShownConsole;

QString spoken(const Control& control, QWidget& widget) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
  const QString index =
      control.index() < 0 ? QString() : QStringLiteral("(%1)").arg(control.index());
  return QStringLiteral("  %1%2: %3, %4\n")
      .arg(QString::fromStdString(control.name()), index,
           QString::fromLatin1(
               QMetaEnum::fromType<QAccessible::Role>().valueToKey(interface->role())),
           interface->text(QAccessible::Name).simplified());
}

// All rows speak alike, but for their number: the first stands for them.
QString spoken_main_form(ShownConsole& desk, const char* title) {
  QString text = QStringLiteral("%1\n").arg(QLatin1String(title));
  for (Element* element : desk.form().elements()) {
    const auto* control = dynamic_cast<const Control*>(element);
    if (control == nullptr || !control->shown() || control->index() > 0) continue;
    ElementWidget& widget = desk.widget(*control);
    if (widget.shown_on_screen()) text += spoken(*control, widget);
  }
  return text;
}

QString spoken_dialog(ShownConsole& desk, Form& form) {
  QString text = QString::fromStdString(form.name()) + '\n';
  form.show();
  desk.settle();
  QWidget* window = desk.desktop.window_of(QString::fromStdString(form.name()));
  REQUIRE(window != nullptr);
  for (Element* element : form.elements()) {
    const auto* control = dynamic_cast<const Control*>(element);
    if (control == nullptr || !control->shown()) continue;
    auto* widget = window->findChild<QWidget*>(object_name(*control));
    if (widget != nullptr) text += spoken(*control, *widget);
  }
  form.unload();
  desk.settle();
  return text;
}

TEST_CASE("all that is shown is spoken by the names that were read through") {
  ShownConsole desk("D");
  desk.form().EventClockMenu.on_click();
  desk.form().TimeClockMenuItem.on_click();
  desk.box_sends("F00");
  desk.settle();
  QString text = spoken_main_form(desk, "The main window of a host");
  desk.form().ScreenerMode.on_click();
  desk.settle();
  text += spoken_main_form(desk, "The main window of a screener");
  desk.form().StudioMode.on_click();
  desk.form().DigiClock.on_click();
  desk.settle();
  text += spoken_main_form(desk, "The main window with digital clocks");
  for (Form* form : test::dialogs_of(desk.console)) text += spoken_dialog(desk, *form);

  QFile read(QStringLiteral(LINEWEIR_SPOKEN_NAMES));
  REQUIRE(read.open(QFile::ReadOnly));
  const QString expected = QString::fromUtf8(read.readAll());
  if (text != expected) {
    QFile found(QStringLiteral("spoken_names.found.txt"));
    REQUIRE(found.open(QFile::WriteOnly));
    found.write(text.toUtf8());
  }
  CHECK_MESSAGE(text == expected,
                "spoken_names.found.txt tells what is spoken now; where it is better than "
                "tests/desktop/spoken_names.txt, it takes its place");
}

}  // namespace
}  // namespace lineweir

#include <doctest/doctest.h>

#include <QAccessible>
#include <algorithm>
#include <set>

#include "shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

std::vector<Control*> controls_of(const Form& form) {
  std::vector<Control*> controls;
  for (Element* element : form.elements()) {
    if (auto* control = dynamic_cast<Control*>(element)) controls.push_back(control);
  }
  return controls;
}

TEST_SUITE("widgets of the main form") {
  TEST_CASE("every control has a widget of its name, with a spoken name and a role") {
    test::ShownConsole desk;
    std::set<QString> names;
    for (const Control* control : controls_of(desk.form())) {
      CAPTURE(object_name(*control).toStdString());
      const ElementWidget& widget = desk.widget(*control);
      CHECK(widget.objectName() == object_name(*control));
      CHECK(names.insert(widget.objectName()).second);

      QAccessibleInterface* interface =
          QAccessible::queryAccessibleInterface(const_cast<ElementWidget*>(&widget));
      REQUIRE(interface != nullptr);
      CHECK(!interface->text(QAccessible::Name).isEmpty());
      CHECK(!interface->text(QAccessible::Name).contains(u'%'));
      CHECK(interface->role() != QAccessible::NoRole);
      CHECK(interface->role() != QAccessible::Client);
    }
    CHECK(names.size() > 300);
  }

  TEST_CASE("every control of the main form has a look of its own in the table") {
    test::ShownConsole desk;
    const auto controls = controls_of(desk.form());
    CHECK(controls.size() > 300);
    for (const Control* control : controls) {
      CAPTURE(control->name());
      CHECK(look_of(*control).element == control->name());
    }
  }

  TEST_CASE("lines are spoken by their number") {
    test::ShownConsole desk;
    CHECK(spoken_name(desk.form().LineName(3)) == "Line 4 caller name");
    CHECK(spoken_name(desk.form().OnHybrid1(3)) == "Put line 4 on main hybrid");
    CHECK(spoken_name(desk.form().OnHybrid2(9)) == "Put line 10 on conference hybrid");
    CHECK(spoken_name(desk.form().MyMark(3 * column_count + 5)) == "Line 4 column edge");
  }

  TEST_CASE("a key is a button that a screen reader can press") {
    test::ShownConsole desk;
    int clicks = 0;
    listen(desk.form().Dial.on_click, [&] { ++clicks; });
    QAccessibleInterface* dial =
        QAccessible::queryAccessibleInterface(&desk.widget(desk.form().Dial));
    REQUIRE(dial != nullptr);
    CHECK(dial->role() == QAccessible::Button);
    REQUIRE(dial->actionInterface() != nullptr);
    dial->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    CHECK(clicks == 1);
  }

  TEST_CASE("a text's value is what stands on the screen") {
    test::ShownConsole desk;
    desk.form().LineName(2).caption = "Margaret";
    QAccessibleInterface* name =
        QAccessible::queryAccessibleInterface(&desk.widget(desk.form().LineName(2)));
    REQUIRE(name != nullptr);
    CHECK(name->text(QAccessible::Value) == "Margaret");
  }

  TEST_CASE("rows loaded later get their widgets, and rows unloaded lose them") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const int first = form.DataRow.upper_bound();
    form.load_row(first);
    desk.settle();
    CHECK(desk.canvas().findChild<QWidget*>(QStringLiteral("DataRow(%1)").arg(first)) != nullptr);
    CHECK(desk.canvas().findChild<QWidget*>(QStringLiteral("LineName(%1)").arg(first)) != nullptr);

    form.unload_row(first);
    desk.settle();
    CHECK(test::wait_for([&] {
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      return desk.canvas().findChild<QWidget*>(QStringLiteral("DataRow(%1)").arg(first)) == nullptr;
    }));
  }

  TEST_CASE("an element that moves to another container moves its widget") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    form.Dial.set_container(nullptr);
    desk.settle();
    CHECK(desk.widget(form.Dial).parentWidget() == &desk.canvas());
    form.Dial.set_container(&form.ScreenBottom);
    desk.settle();
    CHECK(desk.widget(form.Dial).parentWidget() == &desk.widget(form.ScreenBottom));
  }
}

}  // namespace
}  // namespace lineweir

// Every action of the main window by keyboard alone: what Tab reaches, and what the menus hold.

#include <doctest/doctest.h>

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "desktop/shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

using test::ShownConsole;

struct WalkDesk : ShownConsole {
  WalkDesk() {
    window().activateWindow();
    settle();
  }

  void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* menu = QApplication::activePopupWidget();
    QTest::keyClick((menu != nullptr ? menu : &window())->windowHandle(), code, modifiers);
    settle();
  }

  void show_rows(int rows) {
    console.layout.set_line_count(rows);
    console.layout.RedefineScreen();
    settle();
    window().activateWindow();
  }

  // The elements that Tab goes through, from one on until it comes round to it again.
  std::vector<std::string> tab_stops(const Control& from, Qt::Key step = Qt::Key_Tab) {
    widget(from).setFocus(Qt::TabFocusReason);
    std::vector<std::string> stops;
    const auto modifiers = step == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier;
    do {
      const Control* focused = form().focused();
      stops.push_back(focused == nullptr ? "" : object_name(*focused).toStdString());
      key(step, modifiers);
    } while (form().focused() != &from && stops.size() < 200);
    return stops;
  }
};

std::vector<std::string> row_stops(int rows) {
  std::vector<std::string> stops;
  for (int row = 0; row < rows; ++row) {
    stops.push_back("OnHybrid1(" + std::to_string(row) + ")");
    stops.push_back("OnHybrid2(" + std::to_string(row) + ")");
  }
  return stops;
}

using Names = std::vector<std::string>;

// In one line, for the report of a failure.
std::string joined(const Names& names) {
  std::string text;
  for (const std::string& name : names) text += name + ' ';
  return text;
}

TEST_SUITE("desktop/keyboard: Tab") {
  TEST_CASE("it goes through the rows as they are read, then through the panel") {
    WalkDesk desk;
    int rows = 10;
    SUBCASE("ten rows") {}
    SUBCASE("twenty rows, of which ten came later") {
      rows = 20;
      desk.show_rows(rows);
    }
    Names expected = row_stops(rows);
    for (const char* panel : {"Drop1", "Drop2", "Hold1", "Hold2", "NextButton", "NextToConfButton",
                              "Dial", "OptionsButton", "Text1"}) {
      expected.emplace_back(panel);
    }
    CHECK(joined(desk.tab_stops(desk.form().OnHybrid1(0))) == joined(expected));
  }

  TEST_CASE("with Shift it goes the same way back") {
    WalkDesk desk;
    Names forth = desk.tab_stops(desk.form().OnHybrid1(0));
    Names back = desk.tab_stops(desk.form().OnHybrid1(0), Qt::Key_Backtab);
    std::reverse(forth.begin() + 1, forth.end());
    CHECK(joined(back) == joined(forth));
  }

  TEST_CASE("a button that can't be pressed or isn't there is passed over") {
    WalkDesk desk;
    desk.form().ScreenerMode.on_click();
    desk.settle();
    // Without a handset a producer can but choose the next caller.
    Names expected;
    for (int row = 0; row < 10; ++row) expected.push_back("OnHybrid2(" + std::to_string(row) + ")");
    for (const char* panel : {"Dial", "OptionsButton"}) expected.emplace_back(panel);
    const Names stops = desk.tab_stops(desk.form().OnHybrid2(0));
    for (const std::string& name : stops) {
      CAPTURE(name);
      const auto index = name.find('(');
      const auto* control = dynamic_cast<const Control*>(
          index == std::string::npos
              ? desk.form().find(name)
              : desk.form().find(name.substr(0, index), std::stoi(name.substr(index + 1))));
      REQUIRE(control != nullptr);
      CHECK(control->shown());
      CHECK(control->enabled);
    }
    CHECK(std::ranges::includes(std::set(stops.begin(), stops.end()),
                                std::set(expected.begin(), expected.end())));
  }

  TEST_CASE("each button that it reaches is pressed with Space and with Enter") {
    WalkDesk desk;
    MainForm& form = desk.form();
    std::vector<std::string> pressed;
    std::vector<Picture*> keys;
    for (int row = 0; row < 10; ++row) {
      keys.push_back(&form.OnHybrid1(row));
      keys.push_back(&form.OnHybrid2(row));
    }
    for (Picture* key : {&form.Drop1, &form.Drop2, &form.Hold1, &form.Hold2, &form.NextButton,
                         &form.NextToConfButton, &form.Dial, &form.OptionsButton}) {
      keys.push_back(key);
    }
    for (Picture* key : keys) {
      const std::string name = object_name(*key).toStdString();
      listen(key->on_click, [&pressed, name] { pressed.push_back(name); });
    }
    Names expected;
    desk.widget(form.OnHybrid1(0)).setFocus(Qt::TabFocusReason);
    for (const Picture* key : keys) {
      REQUIRE(form.focused() == key);
      desk.key(Qt::Key_Space);
      desk.key(Qt::Key_Return);
      expected.insert(expected.end(), 2, object_name(*key).toStdString());
      desk.key(Qt::Key_Tab);
    }
    CHECK(joined(pressed) == joined(expected));
  }

  TEST_CASE("it leads out of the quick line and of the messages") {
    WalkDesk desk;
    desk.console.quick_line.open();
    desk.settle();
    CHECK(desk.form().focused() == &desk.form().Text2);
    desk.key(Qt::Key_Tab);
    CHECK(desk.form().focused() == &desk.form().OnHybrid1(0));
    desk.key(Qt::Key_Backtab, Qt::ShiftModifier);
    desk.key(Qt::Key_Escape);
    CHECK_FALSE(desk.form().Text2.visible);
    desk.widget(desk.form().Text1).setFocus(Qt::TabFocusReason);
    REQUIRE(desk.form().focused() == &desk.form().Text1);
    desk.key(Qt::Key_Tab);
    CHECK(desk.form().focused() == &desk.form().OnHybrid1(0));
  }
}

QString access_key(const QString& text) {
  const auto sign = text.indexOf(u'&');
  return sign < 0 || sign + 1 >= text.size() ? QString() : text.mid(sign + 1, 1).toUpper();
}

TEST_SUITE("desktop/keyboard: menus") {
  TEST_CASE("each menu of the bar opens with Alt and its letter, and no letter serves twice") {
    WalkDesk desk;
    auto* bar = desk.window().findChild<QMenuBar*>();
    REQUIRE(bar != nullptr);
    std::set<QString> letters;
    for (QAction* action : bar->actions()) {
      if (!action->isVisible()) continue;
      CAPTURE(action->text().toStdString());
      const QString letter = access_key(action->text());
      REQUIRE(letter.size() == 1);
      CHECK(letters.insert(letter).second);
      desk.key(static_cast<Qt::Key>(letter.front().unicode()), Qt::AltModifier);
      REQUIRE(QApplication::activePopupWidget() != nullptr);
      CHECK(QApplication::activePopupWidget() == action->menu());
      desk.key(Qt::Key_Escape);
      CHECK(QApplication::activePopupWidget() == nullptr);
    }
    CHECK(letters.size() == 5);
  }

  TEST_CASE("the arrow keys reach every entry of every menu, and Enter chooses it") {
    WalkDesk desk;
    for (Element* element : desk.form().elements()) {
      if (auto* item = dynamic_cast<MenuItem*>(element)) {
        if (item->children().empty()) item->on_click.forget_handler();
      }
    }
    auto* bar = desk.window().findChild<QMenuBar*>();
    std::size_t all_reached = 0;
    for (QAction* top : bar->actions()) {
      if (!top->isVisible() || top->menu() == nullptr) continue;
      std::vector<QAction*> entries;
      for (QAction* action : top->menu()->actions()) {
        if (!action->isSeparator() && action->isVisible() && action->isEnabled()) {
          entries.push_back(action);
        }
      }
      const QString letter = access_key(top->text());
      desk.key(static_cast<Qt::Key>(letter.front().unicode()), Qt::AltModifier);
      std::set<QAction*> reached;
      for (std::size_t i = 0; i <= entries.size(); ++i) {
        if (top->menu()->activeAction() != nullptr) reached.insert(top->menu()->activeAction());
        desk.key(Qt::Key_Down);
      }
      CHECK(reached == std::set<QAction*>(entries.begin(), entries.end()));
      all_reached += reached.size();
      desk.key(Qt::Key_Escape);
      while (QApplication::activePopupWidget() != nullptr) desk.key(Qt::Key_Escape);
    }
    CHECK(all_reached > 35);
    int chosen = 0;
    listen(desk.form().DimLineNumMenu.on_click, [&] { ++chosen; });
    desk.key(Qt::Key_C, Qt::AltModifier);
    desk.key(Qt::Key_N);
    CHECK(chosen == 1);
  }

  TEST_CASE("a group of lines is chosen through its menu") {
    WalkDesk desk;
    MainForm& form = desk.form();
    form.StudioGr.load(1);
    form.StudioGr(1).caption = "Group 2";
    form.StudioGr(1).visible = true;
    desk.settle();
    int chosen = -1;
    for (int group = 0; group < 2; ++group) {
      listen(form.StudioGr(group).on_click, [&chosen, group] { chosen = group; });
    }
    desk.key(Qt::Key_C, Qt::AltModifier);
    REQUIRE(QApplication::activePopupWidget() != nullptr);
    // The groups are the last entries.
    desk.key(Qt::Key_Up);
    desk.key(Qt::Key_Return);
    CHECK(chosen == 1);
    CHECK(QApplication::activePopupWidget() == nullptr);
  }
}

TEST_SUITE("desktop/keyboard: choices") {
  TEST_CASE("the group for messages is chosen with the arrow keys") {
    WalkDesk desk;
    DisplayDataForm& form = desk.console.DisplayOptionForm;
    form.show();
    desk.settle();
    QWidget* window = desk.desktop.window_of("DisplayOptionForm");
    REQUIRE(window != nullptr);
    auto* groups = window->findChild<QComboBox*>("MessageGroupSelector");
    REQUIRE(groups != nullptr);
    REQUIRE(form.MessageGroupSelector.list_count() > 1);
    REQUIRE(form.MessageGroupSelector.list_index == 0);
    groups->setFocus();
    QTest::keyClick(groups, Qt::Key_Down);
    desk.settle();
    CHECK(form.MessageGroupSelector.list_index == 1);
    CHECK(groups->currentIndex() == 1);
    form.unload();
    desk.settle();
  }

  TEST_CASE("Ctrl with an arrow moves a column in the order, as a drag does") {
    WalkDesk desk;
    DisplayDataForm& form = desk.console.DisplayOptionForm;
    form.show();
    desk.settle();
    QWidget* window = desk.desktop.window_of("DisplayOptionForm");
    REQUIRE(window != nullptr);
    auto* order = window->findChild<QListWidget*>("List1");
    REQUIRE(order != nullptr);
    const std::vector<std::string> before = form.List1.list;
    REQUIRE(before.size() > 2);
    order->setFocus();
    order->setCurrentRow(0);
    QTest::keyClick(order, Qt::Key_Down, Qt::ControlModifier);
    desk.settle();
    std::vector<std::string> expected = before;
    std::swap(expected[0], expected[1]);
    CHECK(joined(form.List1.list) == joined(expected));
    CHECK(order->currentRow() == 1);
    CHECK(order->item(1)->text().toStdString() == before[0]);
    QTest::keyClick(order, Qt::Key_Up, Qt::ControlModifier);
    desk.settle();
    CHECK(joined(form.List1.list) == joined(before));
    // At the end there is nowhere to go.
    QTest::keyClick(order, Qt::Key_Up, Qt::ControlModifier);
    desk.settle();
    CHECK(joined(form.List1.list) == joined(before));
    form.unload();
    desk.settle();
  }
}

}  // namespace
}  // namespace lineweir

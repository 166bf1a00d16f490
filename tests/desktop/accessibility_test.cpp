// What a screen reader finds in the windows, and what it is told.

#include <doctest/doctest.h>

#include <QAccessible>
#include <QStackedWidget>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

#include "desktop/dialog_frame.h"
#include "desktop/shown_console.h"
#include "desktop/spoken_lines.h"
#include "every_dialog.h"

namespace lineweir {
namespace {

using test::ShownConsole;

QString name_of(QAccessibleInterface& interface) { return interface.text(QAccessible::Name); }

// All that stands in the accessible tree below a window, by the object behind it.
std::map<QObject*, QAccessibleInterface*> tree_below(QWidget& window) {
  std::map<QObject*, QAccessibleInterface*> tree;
  const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* interface) {
    if (interface == nullptr || !interface->isValid()) return;
    // The cells of a table have no object.
    if (interface->object() != nullptr && !tree.emplace(interface->object(), interface).second) {
      return;
    }
    for (int i = 0; i < interface->childCount(); ++i) walk(interface->child(i));
  };
  walk(QAccessible::queryAccessibleInterface(&window));
  return tree;
}

bool works(const Control& control) {
  const Control* outer = control.container();
  return control.enabled && (outer == nullptr || works(*outer));
}

// Whether the widget stands on a page that lies under another one.
bool is_on_other_page(const QWidget& widget) {
  for (const QWidget* page = &widget; page != nullptr; page = page->parentWidget()) {
    if (page->isHidden() && qobject_cast<QStackedWidget*>(page->parentWidget())) return true;
  }
  return false;
}

// A control that a user sees is in the tree, with a name, a role of its own and a true state.
void check_control(const Control& control, QWidget* widget,
                   const std::map<QObject*, QAccessibleInterface*>& tree) {
  CAPTURE(control.form().name());
  CAPTURE(object_name(control).toStdString());
  REQUIRE(widget != nullptr);
  const auto found = tree.find(widget);
  REQUIRE(found != tree.end());
  QAccessibleInterface& interface = *found->second;
  const bool blank_label =
      control.kind() == ElementKind::Label && interface.role() == QAccessible::StaticText;
  if (!blank_label) CHECK_FALSE(name_of(interface).trimmed().isEmpty());
  CHECK(interface.role() != QAccessible::NoRole);
  CHECK(interface.role() != QAccessible::Client);
  const QAccessible::State state = interface.state();
  CHECK(state.invisible == is_on_other_page(*widget));
  CHECK(state.disabled != works(control));
  CHECK(state.focused == widget->hasFocus());
}

template <class Check>
void for_each_shown_control(const Form& form, int at_least, Check&& check) {
  int shown = 0;
  for (Element* element : form.elements()) {
    const auto* control = dynamic_cast<const Control*>(element);
    if (control == nullptr || !control->shown()) continue;
    ++shown;
    check(*control);
  }
  CHECK(shown >= at_least);
}

struct SpeakingDesk : ShownConsole {
  explicit SpeakingDesk(std::string_view command_line = "") : ShownConsole(command_line) {}

  QString spoken(const Control& control) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget(control));
    REQUIRE(interface != nullptr);
    return name_of(*interface);
  }

  void check_main_form() {
    const auto tree = tree_below(window());
    for_each_shown_control(form(), 200, [&](const Control& control) {
      ElementWidget& shown = widget(control);
      // Images are a part of the button or face that they lie on.
      if (shown.shown_on_screen()) check_control(control, &shown, tree);
    });
  }
};

TEST_SUITE("desktop/accessibility: the tree") {
  TEST_CASE("each visible element of the main window has a name, a role and its state") {
    SpeakingDesk desk;
    desk.form().EventClockMenu.on_click();
    desk.form().TimeClockMenuItem.on_click();
    desk.box_sends("N00S01R03H04B05");
    desk.settle();
    SUBCASE("ten rows") {}
    SUBCASE("twenty rows") {
      desk.console.layout.set_line_count(20);
      desk.console.layout.RedefineScreen();
      desk.settle();
    }
    SUBCASE("digital clock") { desk.form().DigiClock.on_click(); }
    SUBCASE("producer") { desk.form().ScreenerMode.on_click(); }
    SUBCASE("passive") { desk.form().PassiveMode.on_click(); }
    SUBCASE("quick line") { desk.console.quick_line.open(); }
    desk.settle();
    desk.check_main_form();
  }

  TEST_CASE("the window, its content and its menus are named") {
    SpeakingDesk desk;
    const auto tree = tree_below(desk.window());
    QAccessibleInterface& window = *tree.at(&desk.window());
    CHECK(window.role() == QAccessible::Window);
    CHECK(name_of(window).startsWith("Lineweir - Talent"));
    QAccessibleInterface& canvas = *tree.at(&desk.canvas());
    CHECK(canvas.role() == QAccessible::Pane);
    CHECK(name_of(canvas) == "Telephone lines and control panel");
    QStringList menus;
    for (const auto& [object, interface] : tree) {
      if (interface->role() == QAccessible::MenuItem) menus.push_back(name_of(*interface));
    }
    for (const char* menu : {"Options", "Port", "Remote Port", "Time Clocks", "Configuration"}) {
      CAPTURE(menu);
      CHECK(menus.contains(QString::fromLatin1(menu)));
    }
  }

  TEST_CASE("each visible element of every dialog has a name, a role and its state") {
    SpeakingDesk desk("D");
    desk.console.messages.ShowMessage("No server");
    for (Form* form : test::dialogs_of(desk.console)) {
      CAPTURE(form->name());
      form->show();
      desk.settle();
      QWidget* window = desk.desktop.window_of(QString::fromStdString(form->name()));
      REQUIRE(window != nullptr);
      QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(window);
      REQUIRE(interface != nullptr);
      CHECK(interface->role() != QAccessible::Client);
      const auto tree = tree_below(*window);
      for_each_shown_control(*form, 1, [&](const Control& control) {
        check_control(control, window->findChild<QWidget*>(object_name(control)), tree);
      });
      form->unload();
      desk.settle();
    }
  }
}

TEST_SUITE("desktop/accessibility: names") {
  TEST_CASE("row buttons say what they do in each mode") {
    SpeakingDesk desk;
    MainForm& form = desk.form();
    CHECK(desk.spoken(form.OnHybrid1(3)) == "Put line 4 on main hybrid");
    CHECK(desk.spoken(form.OnHybrid2(3)) == "Put line 4 on conference hybrid");
    form.ScreenerMode.on_click();
    CHECK(desk.spoken(form.OnHybrid1(3)) == "Answer line 4");
    CHECK(desk.spoken(form.OnHybrid2(3)) == "Make line 4 the next caller");
    CHECK(desk.spoken(form.NextButton) == "Ready, the caller at this phone may go on air");
    CHECK(desk.spoken(form.NextToConfButton) == "Answer the next caller");
    CHECK(desk.spoken(form.Drop1) == "Drop the calls at this phone");
    form.StudioMode.on_click();
    CHECK(desk.spoken(form.OnHybrid1(3)) == "Put line 4 on main hybrid");
    CHECK(desk.spoken(form.NextButton) == "Next caller to main hybrid");
  }

  TEST_CASE("a row tells its state in words, for who sees neither colours nor icons") {
    SpeakingDesk desk;
    desk.box_sends("N00R01S03");
    desk.console.lines.StatusLetter(2) = 'B';
    desk.settle();
    CHECK(desk.spoken(desk.form().DataRow(0)) == "Line 1: on air, main hybrid");
    CHECK(desk.spoken(desk.form().DataRow(1)) == "Line 2: ringing");
    CHECK(desk.spoken(desk.form().DataRow(2)) == "Line 3: set busy");
    desk.console.lines.TheNextCall = 3;
    CHECK(desk.spoken(desk.form().DataRow(3)) == "Line 4: ready, next caller");
    CHECK(desk.spoken(desk.form().DataRow(9)) == "Line 10: idle");
    CHECK(desk.spoken(desk.form().CIcon1(1)).endsWith(": ringing"));
  }

  TEST_CASE("texts end with what stands on the screen") {
    SpeakingDesk desk;
    desk.form().LineName(2).caption = "Margaret";
    desk.form().RealTime.caption = "10:20:30";
    desk.form().Shape1.fill_color = color_green;
    CHECK(desk.spoken(desk.form().LineName(2)) == "Line 3 caller name: Margaret");
    CHECK(desk.spoken(desk.form().picRealTimeClock) == "Time clock: 10:20:30");
    CHECK(desk.spoken(desk.form().Drop1Label) == "DROP");
    CHECK(desk.spoken(desk.form().Shape1) == "Link to the telephone system: sound");
    desk.form().Shape1.fill_color = color_red;
    CHECK(desk.spoken(desk.form().Shape1) == "Link to the telephone system: down");
  }

  TEST_CASE("ringing lines are told together") {
    CHECK(spoken_ringing({3}) == "Line 4 is ringing");
    CHECK(spoken_ringing({0, 1}) == "Lines 1 and 2 are ringing");
    CHECK(spoken_ringing({3, 4, 11}) == "Lines 4, 5 and 12 are ringing");
  }
}

struct Alert {
  QAccessible::Role role;
  QString name;
  QString description;
};

// Hears what screen readers are told.
struct ListeningDesk : SpeakingDesk {
  ListeningDesk() {
    desktop.announcer().tell = [this](QAccessibleEvent& event) {
      if (event.type() != QAccessible::Alert) return;
      QAccessibleInterface* interface = event.accessibleInterface();
      REQUIRE(interface != nullptr);
      alerts.push_back(
          {interface->role(), name_of(*interface), interface->text(QAccessible::Description)});
    };
  }

  std::vector<Alert> alerts;
};

TEST_SUITE("desktop/accessibility: announcements") {
  TEST_CASE("a line that begins to ring is announced, once") {
    ListeningDesk desk;
    desk.box_sends("R03");
    desk.settle();
    REQUIRE(desk.alerts.size() == 1);
    CHECK(desk.alerts[0].role == QAccessible::AlertMessage);
    CHECK(desk.alerts[0].name == "Line 4 is ringing");
    // It flashes on, and rings on.
    desk.platform.loop.advance(platform::Milliseconds(3000));
    desk.settle();
    CHECK(desk.alerts.size() == 1);
    // Answered, and then ringing again.
    desk.box_sends("N03");
    desk.settle();
    desk.box_sends("F03");
    desk.settle();
    desk.box_sends("R03");
    desk.settle();
    REQUIRE(desk.alerts.size() == 4);
    CHECK(desk.alerts[1].name == "Line 4 is on air, main hybrid");
    CHECK(desk.alerts[2].name == "Line 4 is idle");
    CHECK(desk.alerts[3].name == "Line 4 is ringing");
  }

  TEST_CASE("the next caller is announced by name") {
    ListeningDesk desk;
    desk.console.lines.CallerData(2).set(CallerField::CallerName, "Dev Patel");
    desk.box_sends("S02");
    desk.settle();
    desk.platform.loop.advance(platform::Milliseconds(2000));
    desk.settle();
    REQUIRE(!desk.alerts.empty());
    CHECK(desk.alerts.back().name.toStdString() == "Line 3, Dev Patel, is ready, next caller");
  }

  TEST_CASE("of many changes at once the number is told") {
    ListeningDesk desk;
    desk.box_sends("H00H01H02H03H04R05");
    desk.settle();
    REQUIRE(desk.alerts.size() == 1);
    CHECK(desk.alerts[0].name == "Line 6 is ringing. 5 lines have changed");
  }

  TEST_CASE("lines that begin to ring together are one announcement") {
    ListeningDesk desk;
    desk.box_sends("R03R05N01");
    desk.settle();
    REQUIRE(desk.alerts.size() == 1);
    CHECK(desk.alerts[0].name == "Lines 4 and 6 are ringing. Line 2 is on air, main hybrid");
  }

  TEST_CASE("an announcement comes by itself within a frame or two") {
    ListeningDesk desk;
    desk.box_sends("R00");
    CHECK(test::wait_for([&] { return !desk.alerts.empty(); }));
  }

  TEST_CASE("a message box is announced with its text, and each further message") {
    ListeningDesk desk;
    desk.console.messages.ShowMessage("No server");
    desk.settle();
    REQUIRE(desk.alerts.size() == 1);
    CHECK(desk.alerts[0].role == QAccessible::AlertMessage);
    CHECK(desk.alerts[0].description == "No server");
    // It comes back to the front every second, which is no news.
    desk.platform.loop.advance(platform::Milliseconds(3000));
    desk.settle();
    CHECK(desk.alerts.size() == 1);
    desk.console.messages.ShowMessage("Check the cables");
    desk.settle();
    REQUIRE(desk.alerts.size() == 2);
    CHECK(desk.alerts[1].description == "Check the cables");
    desk.console.MyMsgbox.unload();
    desk.settle();
    desk.console.messages.ShowMessage("Check the cables");
    desk.settle();
    CHECK(desk.alerts.size() == 3);
  }

  TEST_CASE("what has to be known of a caller's data is announced, once") {
    ListeningDesk desk;
    desk.console.caller_data.show_for_line(2);
    desk.settle();
    CHECK(desk.alerts.empty());
    const std::string text(31, 'x');
    desk.console.Form4.TheText(1).edit(text, 31);
    desk.settle();
    REQUIRE(desk.alerts.size() == 1);
    CHECK(desk.alerts[0].role == QAccessible::AlertMessage);
    CHECK(desk.alerts[0].name == "Caller Name takes no more than 30 characters");
    desk.console.Form4.TheText(1).edit(text, 31);
    desk.settle();
    CHECK(desk.alerts.size() == 1);
    desk.console.Form4.TheText(1).edit("", 0);
    desk.settle();
    CHECK(desk.alerts.size() == 1);
  }

  TEST_CASE("that the caller has hung up is announced to whoever types the data") {
    ListeningDesk desk;
    desk.box_sends("N02");
    desk.settle();
    desk.console.caller_data.show_for_line(2);
    desk.settle();
    desk.alerts.clear();
    desk.box_sends("F02");
    desk.settle();
    REQUIRE(desk.alerts.size() == 1);
    CHECK(desk.alerts[0].name == "Line 3 is idle. The caller has hung up");
  }

  TEST_CASE("that a row of the show's plan is past is announced, once") {
    ListeningDesk desk;
    desk.console.Lineweir.ShowData.on_click();
    desk.settle();
    Grid& grid = desk.console.Form2.Grid1;
    for (const char character : std::string("093000")) {
      int key = character;
      grid.on_key_press(key);
    }
    desk.settle();
    REQUIRE(desk.alerts.size() == 1);
    CHECK(desk.alerts[0].name == "The row until 09:30:00 AM is already past today.");
    desk.platform.loop.advance(platform::Milliseconds(5000));
    desk.settle();
    CHECK(desk.alerts.size() == 1);
  }

  TEST_CASE("a message that comes and goes within a frame is no news") {
    ListeningDesk desk;
    desk.console.messages.ShowMessage("No server");
    desk.console.MyMsgbox.unload();
    desk.settle();
    CHECK(desk.alerts.empty());
  }
}

}  // namespace
}  // namespace lineweir

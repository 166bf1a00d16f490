#include <doctest/doctest.h>

#include <QAccessible>
#include <QMenu>
#include <QMenuBar>

#include "shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

TEST_SUITE("menus") {
  TEST_CASE("every menu item has an action of its name with its caption") {
    test::ShownConsole desk;
    int items = 0;
    for (Element* element : desk.form().elements()) {
      if (element->kind() != ElementKind::MenuItem) continue;
      ++items;
      const auto& item = static_cast<const MenuItem&>(*element);
      CAPTURE(item.name());
      const QAction& action = desk.action(item);
      CHECK(action.objectName() == object_name(item));
      if (item.caption.get() == "-") {
        CHECK(action.isSeparator());
      } else {
        CHECK(action.text().toStdString() == item.caption.get());
      }
      CHECK(action.isChecked() == item.checked.get());
      // Qt takes a hidden action for a disabled one.
      CHECK(action.isEnabled() == (item.enabled && item.visible));
    }
    CHECK(items >= 60);
  }

  TEST_CASE("a group's name is shown to the letter") {
    test::ShownConsole desk;
    desk.form().StudioGr(0).caption = "News & Sport";
    desk.settle();
    CHECK(desk.action(desk.form().StudioGr(0)).text() == "News && Sport");
  }

  TEST_CASE("what a right withholds says so, in the menu and on a key") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const QString why = QStringLiteral("Not allowed for this user");
    const auto spoken = [&] {
      QAccessibleInterface* key =
          QAccessible::queryAccessibleInterface(&desk.widget(form.OptionsButton));
      REQUIRE(key != nullptr);
      return key->text(QAccessible::Description);
    };
    CHECK(desk.action(form.SaveSettingsMenu).statusTip().isEmpty());
    CHECK(spoken() != why);
    desk.console.login.UserRights = std::string(12, '\0');
    desk.console.access_rights.SetRights();
    desk.settle();
    CHECK_FALSE(desk.action(form.SaveSettingsMenu).isEnabled());
    CHECK(desk.action(form.SaveSettingsMenu).statusTip() == why);
    CHECK(desk.widget(form.OptionsButton).tool_tip() == "Setup (S)\n" + why);
    CHECK(spoken() == why);
    desk.console.login.UserRights = "\xff\xff\xff\xff\xff\xff\xcf\xff\xff\xff\xff?";
    desk.console.access_rights.SetRights();
    desk.settle();
    CHECK(desk.action(form.SaveSettingsMenu).isEnabled());
    CHECK(desk.action(form.SaveSettingsMenu).statusTip().isEmpty());
    CHECK(spoken() != why);
  }

  TEST_CASE("check marks, captions, enabled and visible entries follow") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    form.PortOn.checked = true;
    form.Off.checked = false;
    form.Clock.enabled = false;
    form.ServerShowData.visible = true;
    form.StudioGr(0).caption = "Morning";
    desk.window().menus().flush();
    CHECK(desk.action(form.PortOn).isChecked());
    CHECK_FALSE(desk.action(form.Off).isChecked());
    CHECK_FALSE(desk.action(form.Clock).isEnabled());
    CHECK(desk.action(form.ServerShowData).isVisible());
    CHECK(desk.action(form.StudioGr(0)).text() == "Morning");
  }

  TEST_CASE("choosing an entry runs its handler, and the mark stays the item's own") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    int clicks = 0;
    listen(form.Off.on_click, [&] { ++clicks; });
    form.Off.checked = true;
    desk.window().menus().flush();
    desk.action(form.Off).trigger();
    CHECK(clicks == 1);
    CHECK(desk.action(form.Off).isChecked());
  }

  TEST_CASE("entries loaded later stand in their menu, and go when they are unloaded") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    MenuItem& group = form.StudioGr.load(1);
    group.caption = "Group 2";
    group.visible = true;
    desk.window().menus().flush();
    const QMenu* menu = desk.action(form.ConfigurationMenuItem).menu();
    REQUIRE(menu != nullptr);
    CHECK(menu->actions().contains(&desk.action(group)));
    CHECK(menu->actions().indexOf(&desk.action(group)) >
          menu->actions().indexOf(&desk.action(form.StudioGr(0))));

    const int before = static_cast<int>(menu->actions().size());
    form.StudioGr.unload(1);
    desk.settle();
    CHECK(test::wait_for([&] {
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      return static_cast<int>(menu->actions().size()) == before - 1;
    }));
  }

  TEST_CASE("the menu bar goes with its entries and the form's content stays as high") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const int content = desk.canvas().height();
    REQUIRE(form.OptionsButton.on_click);
    form.OptionsButton.on_click();
    desk.settle();
    CHECK(desk.canvas().y() == 0);
    CHECK(desk.canvas().height() == content);
    form.OptionsButton.on_click();
    desk.settle();
    CHECK(desk.canvas().y() > 0);
    CHECK(desk.canvas().height() == content);
  }
}

}  // namespace
}  // namespace lineweir

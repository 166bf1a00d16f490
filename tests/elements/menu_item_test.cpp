#include "elements/menu_item.h"

#include <doctest/doctest.h>

#include <memory>

#include "elements/control_array.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

struct PortMenu {
  Form form{"Form"};
  MenuItem Port{form, "Port"};
  MenuItem Com1{form, Port, "Com1", "Com &1"};
  MenuItem Com2{form, Port, "Com2", "Com &2"};
  MenuItem Mode{form, Port, "Mode", "&Mode"};
  MenuItem Talent{form, Mode, "Talent", "&Talent"};
  MenuItem Help{form, "Help"};
};

TEST_SUITE("elements/menu item") {
  TEST_CASE("entries stand in the order of making, under their parent or in the menu bar") {
    const PortMenu menu;
    CHECK(menu.Port.children() == std::vector<MenuItem*>{const_cast<MenuItem*>(&menu.Com1),
                                                         const_cast<MenuItem*>(&menu.Com2),
                                                         const_cast<MenuItem*>(&menu.Mode)});
    CHECK(menu.form.menu_bar() == std::vector<MenuItem*>{const_cast<MenuItem*>(&menu.Port),
                                                         const_cast<MenuItem*>(&menu.Help)});
    CHECK(menu.Talent.parent() == &menu.Mode);
    CHECK(menu.Port.parent() == nullptr);
    CHECK(menu.Com1.caption == "Com &1");
  }

  TEST_CASE("an entry is shown only with all entries above it") {
    PortMenu menu;
    CHECK(menu.Talent.shown());
    menu.Port.visible = false;
    CHECK_FALSE(menu.Talent.shown());
    CHECK(menu.Talent.visible.get());
    CHECK(menu.Help.shown());
  }

  TEST_CASE("an entry is reachable while it and all above it are shown and enabled") {
    PortMenu menu;
    CHECK(menu.Talent.reachable());
    menu.Mode.enabled = false;
    CHECK_FALSE(menu.Talent.reachable());
    CHECK(menu.Talent.shown());
    menu.Mode.enabled = true;
    menu.Mode.visible = false;
    CHECK_FALSE(menu.Talent.reachable());
  }

  TEST_CASE("an entry put under another parent leaves the former one") {
    PortMenu menu;
    RecordingWatch watch(menu.form);

    menu.Com1.set_parent(menu.Help);
    menu.Com1.set_parent(menu.Help);

    CHECK(menu.Port.children() == std::vector<MenuItem*>{&menu.Com2, &menu.Mode});
    CHECK(menu.Help.children() == std::vector<MenuItem*>{&menu.Com1});
    CHECK(watch.take() == Told{"menu Help"});
  }

  TEST_CASE("an entry that goes leaves no trace in the menu") {
    PortMenu menu;
    {
      MenuItem passing(menu.form, menu.Port, "Passing", "Passing");
      MenuItem below(menu.form, passing, "Below", "Below");
      CHECK(menu.Port.children().size() == 4);
      CHECK(passing.children().size() == 1);
    }
    CHECK(menu.Port.children().size() == 3);
  }

  TEST_CASE("an entry outlives its parent as an entry of the menu bar") {
    Form form("Form");
    auto parent = std::make_unique<MenuItem>(form, "Parent");
    MenuItem child(form, *parent, "Child", "Child");
    parent.reset();
    CHECK(child.parent() == nullptr);
    CHECK(child.shown());
    CHECK(form.menu_bar() == std::vector<MenuItem*>{&child});
  }

  TEST_CASE("entries of an array are loaded hidden and unchecked, and stand where they are put") {
    Form form("Form");
    MenuItem parent(form, "Parent");
    ControlArray<MenuItem> groups(form, "Group");
    groups(0).set_parent(parent);
    groups(0).checked = true;
    groups.load(1).set_parent(parent);

    CHECK(parent.children() == std::vector<MenuItem*>{&groups(0), &groups(1)});
    CHECK_FALSE(groups(1).checked.get());
    CHECK_FALSE(groups(1).visible.get());
    groups.unload(1);
    CHECK(parent.children() == std::vector<MenuItem*>{&groups(0)});
  }
}

}  // namespace
}  // namespace lineweir::test

#include "clocks/set_time.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "clocks/clock_fixture.h"
#include "platform/services_with.h"

namespace lineweir::test {
namespace {

constexpr int enter = 13;

// A clock that the user has no right to set.
class LockedClock final : public platform::SystemClock {
 public:
  platform::DateTime now() const override { return {2026, 1, 5, 10, 0, 0}; }
  void set(const platform::DateTime&) override {
    throw Failure(failure_number::permission_denied, "Ask the administrator.");
  }
};

class SetTimeConsole : public ClockConsole {
 public:
  SetTimeConsole() {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    form.Clock.on_click();
  }

  void type(std::string_view keys) {
    for (const char c : keys) press(c);
  }
  void press(int key) {
    box.Text1.on_key_press(key);
    CHECK(key == 0);
  }

  std::vector<platform::DateTime> settings() { return platform.clock.take_settings(); }

  SetTimeForm& box = console.Form3;
  std::vector<std::string> messages;
};

using Settings = std::vector<platform::DateTime>;

TEST_SUITE("clocks/set time") {
  TEST_CASE("the form is modal and begins empty with AM") {
    SetTimeConsole test;
    CHECK(test.box.visible);
    CHECK(test.box.modal);
    CHECK(test.box.AM.value);
    CHECK_FALSE(test.box.PM.value);
    CHECK(test.box.focused() == &test.box.Text1);
    test.type("09");
    test.box.Cancel5.on_click();
    CHECK_FALSE(test.box.visible);
    test.form.Clock.on_click();
    CHECK(test.box.Text1.text == "");
  }

  TEST_CASE("start sets the clock of the present day and closes the form") {
    SetTimeConsole test;
    test.type("092008");
    CHECK(test.box.Text1.text == "09:20:08");
    CHECK(test.box.Text1.sel_start == 8);
    test.box.Command3D1.on_click();
    CHECK(test.settings() == Settings{{2026, 1, 5, 9, 20, 8}});
    CHECK_FALSE(test.box.visible);
    CHECK(test.messages.empty());
  }

  TEST_CASE("PM is the second half of the day") {
    SetTimeConsole test;
    test.type("092008");
    test.box.AM.value = false;
    test.box.PM.value = true;
    test.box.Command3D1.on_click();
    CHECK(test.settings() == Settings{{2026, 1, 5, 21, 20, 8}});
  }

  TEST_CASE("the first and the last second of an hour belong to it") {
    SetTimeConsole test;
    test.type("010000");
    test.box.Command3D1.on_click();
    CHECK(test.settings() == Settings{{2026, 1, 5, 1, 0, 0}});
    test.form.Clock.on_click();
    test.type("015959");
    test.box.Command3D1.on_click();
    CHECK(test.settings() == Settings{{2026, 1, 5, 1, 59, 59}});
  }

  TEST_CASE("twelve AM is midnight") {
    SetTimeConsole test;
    test.type("120000");
    test.box.Command3D1.on_click();
    CHECK(test.settings() == Settings{{2026, 1, 5, 0, 0, 0}});
  }

  TEST_CASE("a text that is no time changes nothing and leaves the form open") {
    SetTimeConsole test;
    test.type("09");
    test.box.Command3D1.on_click();
    CHECK(test.settings().empty());
    CHECK(test.box.visible);
  }

  TEST_CASE("enter in the box starts at length 8 and closes at any other") {
    SetTimeConsole test;
    test.type("092008");
    test.press(enter);
    CHECK(test.settings() == Settings{{2026, 1, 5, 9, 20, 8}});
    test.form.Clock.on_click();
    test.type("09200");
    test.press(enter);
    CHECK(test.settings().empty());
    CHECK_FALSE(test.box.visible);
  }

  TEST_CASE("enter on AM and on the button starts") {
    SetTimeConsole test;
    for (Control* control :
         {static_cast<Control*>(&test.box.AM), static_cast<Control*>(&test.box.Command3D1)}) {
      test.form.Clock.on_click();
      test.type("101500");
      int key = 'x';
      control->on_key_press(key);
      CHECK(key == 'x');
      key = enter;
      control->on_key_press(key);
      CHECK(key == 0);
      CHECK(test.settings() == Settings{{2026, 1, 5, 10, 15, 0}});
      CHECK_FALSE(test.box.visible);
    }
  }

  TEST_CASE("keys outside the rule are dropped") {
    SetTimeConsole test;
    test.type("2x13");
    CHECK(test.box.Text1.text == "1");
    test.type("0:56");
    CHECK(test.box.Text1.text == "10:56:");
  }

  TEST_CASE("a missing right is told in one sentence and changes nothing") {
    platform::ScriptedPlatform platform;
    LockedClock clock;
    Console console(platform::services_with(platform.services(), {.clock = &clock}));
    console.startup.Main("");
    std::vector<std::string> messages;
    console.messages.on_shown = [&](const std::string& text) { messages.push_back(text); };
    console.Lineweir.Clock.on_click();
    console.Form3.Text1.text = "09:20:08";
    console.Form3.Command3D1.on_click();
    CHECK(messages == std::vector<std::string>{"Ask the administrator."});
    CHECK_FALSE(console.Form3.visible);
  }
}

}  // namespace
}  // namespace lineweir::test

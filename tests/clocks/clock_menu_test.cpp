#include "clocks/clock_menu.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "clocks/clock_fixture.h"

namespace lineweir::test {
namespace {

class MenuConsole : public ClockConsole {
 public:
  MenuConsole() : ClockConsole("D") {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
  }

  void click(MenuItem& item, std::string_view reply) {
    platform.dialogs.answer_input(std::string(reply));
    item.on_click();
  }

  platform::InputQuestion last_question() {
    return std::get<platform::InputQuestion>(platform.dialogs.take_asked().back());
  }

  bool digits_visible() const {
    CHECK(form.RealTime2.visible == form.CountDownTime2.visible);
    CHECK(form.RealTime2.visible == form.StatusText2.visible);
    return form.RealTime2.visible;
  }

  std::vector<std::string> messages;
  std::vector<std::string> trace;
};

TEST_SUITE("clocks/clock menu") {
  TEST_CASE("the dials come and go with their menu items") {
    MenuConsole test;
    test.form.EventClockMenu.on_click();
    CHECK(test.form.EventClockMenu.checked);
    CHECK(test.form.picShowTimeClock.visible);
    test.form.TimeClockMenuItem.on_click();
    CHECK(test.form.TimeClockMenuItem.checked);
    CHECK(test.form.picRealTimeClock.visible);
    test.form.EventClockMenu.on_click();
    test.form.TimeClockMenuItem.on_click();
    CHECK_FALSE(test.form.picShowTimeClock.visible);
    CHECK_FALSE(test.form.picRealTimeClock.visible);
  }

  TEST_CASE("the time clock's item does nothing while the digital clock is on") {
    MenuConsole test;
    test.form.DigiClock.on_click();
    test.form.TimeClockMenuItem.on_click();
    CHECK_FALSE(test.form.TimeClockMenuItem.checked);
    CHECK_FALSE(test.form.picRealTimeClock.visible);
  }

  TEST_CASE("the digital clock takes the place of the dials") {
    MenuConsole test;
    test.form.EventClockMenu.on_click();
    test.form.TimeClockMenuItem.on_click();
    test.form.DigiClock.on_click();
    CHECK(test.form.DigiClock.checked);
    CHECK(test.digits_visible());
    CHECK_FALSE(test.form.picShowTimeClock.visible);
    CHECK_FALSE(test.form.picRealTimeClock.visible);
    CHECK_FALSE(test.form.EventClockMenu.enabled);
    CHECK_FALSE(test.form.TimeClockMenuItem.enabled);
    CHECK_FALSE(test.form.DigiClockCheck.enabled);
  }

  TEST_CASE("without the digital clock the dials return as their items say") {
    MenuConsole test;
    test.form.EventClockMenu.on_click();
    test.form.DigiClock.on_click();
    test.form.DigiClock.on_click();
    CHECK_FALSE(test.form.DigiClock.checked);
    CHECK_FALSE(test.digits_visible());
    CHECK(test.form.picShowTimeClock.visible);
    CHECK_FALSE(test.form.picRealTimeClock.visible);
    CHECK(test.form.EventClockMenu.enabled);
    CHECK(test.form.TimeClockMenuItem.enabled);
  }

  TEST_CASE("beside more than ten rows the digital clock goes again at once") {
    MenuConsole test;
    test.form.EventClockMenu.on_click();
    test.console.program.VisibleLines = 11;
    test.form.DigiClock.on_click();
    CHECK(test.form.DigiClockCheck.enabled);
    CHECK(test.digits_visible());
    test.platform.loop.advance(platform::Milliseconds(100));
    CHECK_FALSE(test.form.DigiClock.checked);
    CHECK_FALSE(test.digits_visible());
    CHECK(test.form.picShowTimeClock.visible);
    test.platform.loop.advance(platform::Milliseconds(100));
    CHECK_FALSE(test.form.DigiClockCheck.enabled);
  }

  TEST_CASE("the check leaves the digital clock alone beside ten rows") {
    MenuConsole test;
    test.form.DigiClock.on_click();
    test.form.DigiClockCheck.enabled = true;
    test.console.Lineweir.DigiClockCheck.on_timer();
    CHECK(test.digits_visible());
    CHECK_FALSE(test.form.DigiClockCheck.enabled);
  }

  TEST_CASE("the offset is asked for with the present one as default") {
    MenuConsole test;
    test.state.DelayOffset = 7;
    test.click(test.form.TimeOffsetMenu, "12");
    CHECK(test.state.DelayOffset == 12);
    const auto question = test.last_question();
    CHECK(question.prompt == "Please enter a new delay offset in seconds (0 to 59).");
    CHECK(question.default_text == "7");
  }

  TEST_CASE("an offset reply is read as far as it goes") {
    MenuConsole test;
    test.click(test.form.TimeOffsetMenu, "12 seconds");
    CHECK(test.state.DelayOffset == 12);
    test.click(test.form.TimeOffsetMenu, "none");
    CHECK(test.state.DelayOffset == 0);
    test.click(test.form.TimeOffsetMenu, "59");
    CHECK(test.state.DelayOffset == 59);
  }

  TEST_CASE("an empty or cancelled offset changes nothing") {
    MenuConsole test;
    test.state.DelayOffset = 7;
    test.click(test.form.TimeOffsetMenu, "");
    test.platform.dialogs.answer_input(std::nullopt);
    test.form.TimeOffsetMenu.on_click();
    CHECK(test.state.DelayOffset == 7);
    CHECK(test.messages.empty());
  }

  TEST_CASE("an offset above 59 is an invalid entry") {
    MenuConsole test;
    for (const char* reply : {"60", "99999999999999999999"}) {
      test.click(test.form.TimeOffsetMenu, reply);
      CHECK(test.state.DelayOffset == 0);
    }
    CHECK(test.messages == std::vector<std::string>{"Invalid Entry", "Invalid Entry"});
  }

  TEST_CASE("a negative offset is stored as typed") {
    MenuConsole test;
    test.click(test.form.TimeOffsetMenu, "-5");
    CHECK(test.state.DelayOffset == -5);
    CHECK(test.messages.empty());
  }

  TEST_CASE("the first warning takes any number and isn't compared with the second") {
    MenuConsole test;
    test.click(test.form.WarningTime1Menu, "5");
    CHECK(test.state.Warning1 == 5);
    const auto question = test.last_question();
    CHECK(question.prompt ==
          "Please enter the new warning time in seconds to mark when the event clock turns red.");
    CHECK(question.default_text == "30");
    CHECK(test.messages.empty());
  }

  TEST_CASE("a warning reply that is no number changes nothing, without a message") {
    MenuConsole test;
    for (const char* reply : {"", "soon", "20 s"}) {
      test.click(test.form.WarningTime1Menu, reply);
      test.click(test.form.WarningTime2Menu, reply);
    }
    test.platform.dialogs.answer_input(std::nullopt);
    test.form.WarningTime1Menu.on_click();
    CHECK(test.state.Warning1 == 30);
    CHECK(test.state.Warning2 == 10);
    CHECK(test.messages.empty());
    CHECK(test.trace.empty());
  }

  TEST_CASE("a warning beyond 16 bits is reported and changes nothing") {
    MenuConsole test;
    test.click(test.form.WarningTime1Menu, "40000");
    CHECK(test.state.Warning1 == 30);
    CHECK(test.trace ==
          std::vector<std::string>{"Lineweir_WarningTime1Menu_Click Error - Overflow"});
  }

  TEST_CASE("the second warning may equal the first but not exceed it") {
    MenuConsole test;
    test.click(test.form.WarningTime2Menu, "30");
    CHECK(test.state.Warning2 == 30);
    CHECK(test.last_question().prompt ==
          "Please enter the new warning time in seconds to mark when the event clock begins "
          "blinking.");
    test.click(test.form.WarningTime2Menu, "31");
    CHECK(test.state.Warning2 == 30);
    CHECK(test.messages == std::vector<std::string>{
                               "Warning2 must be less than Warning1.  Time has not been changed!"});
  }

  TEST_CASE("the server's show times are a check of their own") {
    MenuConsole test;
    test.form.ServerShowData.on_click();
    CHECK(test.form.ServerShowData.checked);
    test.form.ServerShowData.on_click();
    CHECK_FALSE(test.form.ServerShowData.checked);
  }
}

}  // namespace
}  // namespace lineweir::test

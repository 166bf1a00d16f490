#include "messages/message_display.h"

#include <doctest/doctest.h>

#include "messages/conversation.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

struct DisplayDesk : ScriptedConsole {
  DisplayDesk() {
    console.login.UserName = "Ann";
    console.message_display.on_message = [this](const HeardMessage& message) {
      heard.push_back(message.text);
    };
  }

  void receive(const std::string& text, int back_color = color_white) {
    console.message_display.ReturnMessageData(text, 1, back_color, color_black);
  }

  TextBox& box = console.Lineweir.Text1;
  std::vector<std::string> heard;
};

TEST_SUITE("messages/display") {
  TEST_CASE("it takes no typing") {
    DisplayDesk desk;
    int key = 'a';
    desk.box.on_key_press(key);
    CHECK(key == 0);
  }

  TEST_CASE("an urgent message of another seat sounds where the user wants that") {
    DisplayDesk desk;
    const int& played = desk.platform.attention_sound.played;
    desk.receive("Bea\x03Stop", color_red);
    CHECK(played == 0);
    desk.console.Lineweir.UrgentSound.on_click();
    desk.receive("Bea\x03Go on");
    CHECK(played == 0);
    desk.receive("Bea\x03Stop", color_red);
    desk.receive("Bea\x03Stop", color_red);
    CHECK(played == 2);
    desk.console.message_display.ReturnMessageData("Bea\x03Stop", 2, color_red, color_black);
    CHECK(played == 2);
    desk.console.Lineweir.UrgentSound.on_click();
    desk.receive("Bea\x03Stop", color_red);
    CHECK(played == 2);
  }

  TEST_CASE("a message of this console's own neither sounds nor is announced when it comes back") {
    DisplayDesk desk;
    desk.console.Lineweir.UrgentSound.checked = true;
    const SeatMessage own{color_red, color_black, "Ann", "Ann> Stop"};
    SUBCASE("from the dialog") {
      desk.console.message_display.show_own(own);
      desk.console.message_display.own_went(OwnMessage::Sent);
      CHECK(desk.box.text == "Ann> Stop");
    }
    SUBCASE("from the quick line") { desk.console.message_display.will_come_back(own); }
    desk.receive(
        "Bea\x03"
        "before");
    desk.receive(
        "Ann\x03"
        "Ann> Stop",
        color_red);
    CHECK(desk.box.text == "Ann>Ann> Stop");
    CHECK(desk.platform.attention_sound.played == 0);
    CHECK(desk.heard == std::vector<std::string>{"before"});
    // The same words from somebody else are another message.
    desk.receive(
        "Ann\x03"
        "Ann> Stop",
        color_red);
    CHECK(desk.platform.attention_sound.played == 1);
  }

  TEST_CASE("what wasn't sent is not kept among the messages of the show") {
    DisplayDesk desk;
    const SeatMessage own{color_white, color_black, "Ann", "Ann> Stop"};
    desk.console.message_display.show_own(own);
    desk.console.message_display.own_went(OwnMessage::NotSent);
    CHECK(desk.console.message_display.history().text() == "");
    CHECK(desk.box.tool_tip == "Ann, 10:00:00, not sent");
    desk.console.message_display.show_own(own);
    desk.console.message_display.own_went(OwnMessage::ShownHereOnly);
    CHECK(desk.console.message_display.history().text().ends_with("10:00:00  Ann: Stop"));
  }

  TEST_CASE("a conversation that is too long is shown from the beginning of a line") {
    DisplayDesk desk;
    std::string conversation;
    for (int line = 0; line < 4000; ++line) conversation += "\r\nline " + std::to_string(line);
    desk.receive("Ann\x03" + conversation);
    const std::string& shown = desk.box.text;
    CHECK(shown.size() <= longest_message);
    CHECK(shown.size() > longest_message - 20);
    CHECK(shown.starts_with("line "));
    CHECK(shown.ends_with("line 3999"));
    CHECK(desk.box.sel_start == static_cast<int>(shown.size()));
  }
}

}  // namespace
}  // namespace lineweir::test

#include "messages/quick_line.h"

#include <doctest/doctest.h>

#include "elements/key_characters.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

// A console on whose options the user stands.
struct QuickLineDesk : ScriptedConsole {
  QuickLineDesk() { form.focus(&form.OptionsButton); }

  // What becomes of a key that is typed into the line: 0 where it is swallowed.
  int type(int key) {
    form.Text2.on_key_press(key);
    return key;
  }
  void stand_connected() {
    platform.winsock1.stand_connected();
    form.WinsockMenu.checked = true;
  }
  bool is_open() const { return form.Text2.visible && form.Text2.enabled; }

  MainForm& form = console.Lineweir;
  QuickLine& line = console.quick_line;
};

TEST_SUITE("messages/quick line") {
  TEST_CASE("it opens over the message display and takes the focus") {
    QuickLineDesk desk;
    CHECK_FALSE(desk.is_open());
    desk.line.open();
    CHECK(desk.is_open());
    CHECK(desk.form.focused() == &desk.form.Text2);
    CHECK(desk.form.Text2.left == desk.form.Text1.left);
    CHECK(desk.form.Text2.top == desk.form.Text1.top);
    CHECK(desk.form.Text2.width == desk.form.Text1.width);
    CHECK(desk.form.Text2.height == desk.form.Text1.height);
  }

  TEST_CASE("Esc closes it and gives the focus back to what had it") {
    QuickLineDesk desk;
    desk.line.open();
    CHECK(desk.type(escape_key) == 0);
    CHECK_FALSE(desk.form.Text2.enabled);
    CHECK_FALSE(desk.form.Text2.visible);
    CHECK(desk.form.focused() == &desk.form.OptionsButton);
  }

  TEST_CASE("opened twice it still knows what had the focus before") {
    QuickLineDesk desk;
    desk.line.open();
    desk.line.open();
    desk.type(escape_key);
    CHECK(desk.form.focused() == &desk.form.OptionsButton);
  }

  TEST_CASE("nothing gets the focus back that can't be used any more") {
    QuickLineDesk desk;
    SUBCASE("it is disabled") {
      desk.line.open();
      desk.form.OptionsButton.enabled = false;
    }
    SUBCASE("it is hidden") {
      desk.line.open();
      desk.form.OptionsButton.visible = false;
    }
    SUBCASE("it has gone with its row") {
      desk.console.layout.set_line_count(20);
      desk.form.focus(&desk.form.OnHybrid1(15));
      desk.line.open();
      desk.console.layout.set_line_count(10);
      desk.console.layout.RedefineScreen();
      REQUIRE_FALSE(desk.form.OnHybrid1.loaded(15));
    }
    desk.type(escape_key);
    CHECK(desk.form.focused() == nullptr);
  }

  TEST_CASE("Enter sends it and leaves it open and empty, other keys are typed") {
    QuickLineDesk desk;
    desk.stand_connected();
    desk.line.open();
    desk.form.Text2.text = "Who is next?";
    CHECK(desk.type('a') == 'a');
    CHECK(desk.form.Text2.text == "Who is next?");
    CHECK(desk.type(enter_key) == 0);
    CHECK(desk.platform.winsock1.take_writes().size() == 1);
    CHECK(desk.form.Text2.text == "");
    CHECK(desk.is_open());
  }

  TEST_CASE("a server that isn't heard, or a group that isn't entered yet, gets no message") {
    QuickLineDesk desk;
    desk.stand_connected();
    desk.line.open();
    desk.form.Text2.text = "Who is next?";
    SUBCASE("the server is silent") { desk.console.socket_link.silence = "No word."; }
    SUBCASE("the console is between two groups") { desk.console.login.BetweenGroups = true; }
    desk.take_messages();
    desk.type(enter_key);
    CHECK(desk.platform.winsock1.take_writes().empty());
    CHECK(desk.form.Text2.text == "Who is next?");
    desk.console.socket_link.silence.clear();
    desk.console.login.BetweenGroups = false;
    desk.type(enter_key);
    CHECK(desk.platform.winsock1.take_writes().size() == 1);
  }

  TEST_CASE("over remote objects that are gone it stays, and the user is told") {
    QuickLineDesk desk;
    desk.form.NetworkConnectionOption.checked = true;
    desk.line.open();
    desk.form.Text2.text = "Who is next?";
    desk.type(enter_key);
    CHECK(desk.take_messages().size() == 1);
    CHECK(desk.form.Text2.text == "Who is next?");
  }

  TEST_CASE("without the focus it is closed, and takes none back") {
    QuickLineDesk desk;
    desk.line.open();
    desk.form.focus(&desk.form.Dial);
    desk.form.Text2.on_lost_focus();
    CHECK_FALSE(desk.is_open());
    CHECK(desk.form.focused() == &desk.form.Dial);
  }

  TEST_CASE("the dialog opens for those who may send, and is left by its button") {
    QuickLineDesk desk;
    desk.console.program.MessagesAllowed = false;
    desk.form.Text1.on_dbl_click();
    CHECK_FALSE(desk.console.FlashMessA.visible);
    desk.console.program.MessagesAllowed = true;
    desk.form.Text1.on_dbl_click();
    CHECK(desk.console.FlashMessA.visible);
    desk.console.FlashMessA.FlashMessACancel.on_click();
    CHECK_FALSE(desk.console.FlashMessA.visible);
  }
}

}  // namespace
}  // namespace lineweir::test

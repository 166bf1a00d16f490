#include "messages/hot_list.h"

#include <doctest/doctest.h>

#include "elements/key_characters.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* list_path = "hot.lwb";
constexpr int delete_key = 46;

// A console with a hot list of three messages, and another program that has it too.
struct HotListDesk : ScriptedConsole {
  HotListDesk() {
    other.create(list_path);
    other.open(list_path);
    for (const char* text : {"One", "Two", "Three"}) other.add(text);
    console.program.MessageFile = list_path;
    console.Lineweir.Text1.on_dbl_click();
    form.Text1.text = "Mine";
    take_messages();
  }

  Texts shown() const { return form.DBList1.list; }
  Texts stored() const {
    Texts texts;
    for (const auto& row : platform.databases.rows(list_path, "Messages")) texts.push_back(row[0]);
    return texts;
  }
  void tick() { form.FollowTimer.tick(); }
  int key(int code, int shift) {
    form.DBList1.on_key_down(code, shift);
    return code;
  }

  HotListFile other{platform.failing_databases, platform.letters};
  FlashMessageForm& form = console.FlashMessA;
};

TEST_SUITE("messages/hot list") {
  TEST_CASE("the stored list is shown with the dialog") {
    HotListDesk desk;
    CHECK(desk.shown() == Texts{"One", "Two", "Three"});
    CHECK(desk.form.DBList1.list_index == -1);
    CHECK(desk.form.Label1.caption == list_path);
    CHECK(desk.form.AddCurrent.enabled);
  }

  TEST_CASE("a list that a program was killed in while it made it is made when it is chosen") {
    HotListDesk desk;
    desk.other.create("begun.lwb");
    desk.platform.databases.find("begun.lwb")->tables.clear();
    desk.platform.dialogs.answer_file("begun.lwb");
    desk.form.BrowseButton.on_click();
    CHECK(desk.take_messages().empty());
    CHECK(desk.form.Label1.caption == "begun.lwb");
    CHECK(desk.shown().empty());
    CHECK(desk.form.AddCurrent.enabled);
  }

  TEST_CASE("what another program changes shows within a second") {
    HotListDesk desk;
    desk.form.DBList1.select(2);
    desk.other.add("Four");
    desk.tick();
    CHECK(desk.shown() == Texts{"One", "Two", "Three", "Four"});
    CHECK(desk.form.DBList1.list_index == 2);
    desk.other.remove(3);
    desk.other.remove(2);
    desk.tick();
    CHECK(desk.shown() == Texts{"One", "Two"});
    // The message that was chosen has gone.
    CHECK(desk.form.DBList1.list_index == -1);
    desk.form.DBList1.select(1);
    desk.other.remove(0);
    desk.tick();
    CHECK(desk.shown() == Texts{"Two"});
    CHECK(desk.form.DBList1.list_index == 0);
    desk.form.RemoveCurrent.on_click();
    CHECK(desk.stored().empty());
  }

  TEST_CASE("a message is removed by what it says, wherever it now stands") {
    HotListDesk desk;
    desk.form.DBList1.select(2);
    desk.other.move(2, 0);
    desk.form.RemoveCurrent.on_click();
    CHECK(desk.stored() == Texts{"One", "Two"});
    CHECK(desk.shown() == desk.stored());
  }

  TEST_CASE("one that another program has removed takes nothing else with it") {
    HotListDesk desk;
    desk.form.DBList1.select(1);
    desk.other.remove(1);
    desk.form.RemoveCurrent.on_click();
    CHECK(desk.stored() == Texts{"One", "Three"});
    CHECK(desk.shown() == desk.stored());
  }

  TEST_CASE("a list that has changed meanwhile isn't sorted by hand, and the user is told") {
    HotListDesk desk;
    desk.other.add("Four");
    desk.form.DBList1.on_drag(0, 2);
    CHECK(desk.stored() == Texts{"One", "Two", "Three", "Four"});
    CHECK(desk.shown() == desk.stored());
    CHECK(desk.take_messages().size() == 1);
    desk.form.DBList1.on_drag(3, 0);
    CHECK(desk.stored() == Texts{"Four", "One", "Two", "Three"});
    desk.form.DBList1.on_drag(0, 9);
    desk.form.DBList1.on_drag(-1, 2);
    CHECK(desk.stored() == Texts{"Four", "One", "Two", "Three"});
  }

  TEST_CASE("by keyboard Enter takes a message into the text and Del removes it") {
    HotListDesk desk;
    CHECK(desk.key(enter_key, 0) == enter_key);
    CHECK(desk.form.Text1.text == "Mine");
    desk.form.DBList1.select(1);
    CHECK(desk.key(enter_key, 2) == enter_key);
    CHECK(desk.key('A', 0) == 'A');
    CHECK(desk.key(enter_key, 0) == 0);
    CHECK(desk.form.Text1.text == "Two");
    CHECK(desk.form.focused() == &desk.form.Text1);
    CHECK(desk.key(delete_key, 0) == 0);
    CHECK(desk.shown() == Texts{"One", "Three"});
  }

  TEST_CASE("each button says what it lacks") {
    HotListDesk desk;
    desk.form.RemoveCurrent.on_click();
    desk.form.UpdateButton.on_click();
    desk.form.Text1.text = "  ";
    desk.form.AddCurrent.on_click();
    CHECK(desk.take_messages() ==
          Texts{"Choose the message to remove in the hot list first.",
                "Choose the message to use in the hot list first.",
                "Nothing was added to the hot list: type a message first."});
    CHECK(desk.shown().size() == 3);
  }

  TEST_CASE("what can't be written is told in a sentence and changes nothing") {
    HotListDesk desk;
    desk.form.DBList1.select(1);
    desk.platform.failing_databases.fail(failure_number::database_in_use);
    desk.form.AddCurrent.on_click();
    desk.form.RemoveCurrent.on_click();
    desk.form.DBList1.on_drag(0, 2);
    CHECK(desk.take_messages().size() == 3);
    CHECK(desk.form.Text1.text == "Mine");
    CHECK(desk.shown() == Texts{"One", "Two", "Three"});
    desk.platform.failing_databases.fail(0);
    CHECK(desk.stored() == desk.shown());
    desk.form.AddCurrent.on_click();
    CHECK(desk.shown() == Texts{"One", "Two", "Three", "Mine"});
    CHECK(desk.form.DBList1.list_index == 3);
  }

  TEST_CASE("a list that is in use at first is shown as soon as it is free") {
    ScriptedConsole test;
    HotListFile(test.platform.databases, test.platform.letters).create(list_path);
    test.console.program.MessageFile = list_path;
    test.platform.failing_databases.fail(failure_number::database_in_use);
    test.console.Lineweir.Text1.on_dbl_click();
    FlashMessageForm& form = test.console.FlashMessA;
    CHECK(test.take_messages().size() == 1);
    form.FollowTimer.tick();
    CHECK_FALSE(form.AddCurrent.enabled);
    test.platform.failing_databases.fail(0);
    form.FollowTimer.tick();
    CHECK(form.AddCurrent.enabled);
    CHECK(test.take_messages().empty());
  }

  TEST_CASE("a list that a profile names takes the place of the one that is shown") {
    HotListDesk desk;
    HotListFile second(desk.platform.databases, desk.platform.letters);
    second.create("second.lwb");
    second.open("second.lwb");
    second.add("Other");
    desk.console.program.MessageFile = "second.lwb";
    desk.tick();
    CHECK(desk.shown() == Texts{"Other"});
    desk.console.program.MessageFile = "";
    desk.tick();
    CHECK(desk.shown().empty());
    CHECK_FALSE(desk.form.AddCurrent.enabled);
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("a full list takes no more") {
    HotListDesk desk;
    for (int i = 3; i < 1000; ++i) desk.other.add("More");
    desk.form.AddCurrent.on_click();
    CHECK(desk.take_messages() ==
          Texts{"The hot list is full: it shows at most 1000 messages. Remove one first."});
    CHECK(desk.stored().size() == 1000);
  }
}

}  // namespace
}  // namespace lineweir::test

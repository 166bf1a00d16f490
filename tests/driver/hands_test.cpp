#include <doctest/doctest.h>

#include "driver_fixture.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

struct HandsFixture : LaunchedFixture {
  Console& console() { return session.console(); }
  MainForm& form() { return session.console().Lineweir; }

  // Notes each event of a control by a letter.
  void watch(Control& control) {
    listen(control.on_mouse_down, [this](int button, int) { events += button == 1 ? 'd' : 'D'; });
    listen(control.on_mouse_up, [this](int button, int) { events += button == 1 ? 'u' : 'U'; });
    listen(control.on_click, [this] { events += 'c'; });
    listen(control.on_dbl_click, [this] { events += 'C'; });
    listen(control.on_got_focus, [this] { events += '+'; });
    listen(control.on_lost_focus, [this] { events += '-'; });
  }

  std::string events;
};

TEST_CASE_FIXTURE(HandsFixture, "A click is the button down, up, and the click") {
  watch(form().Drop1);
  form().Drop1.enabled = true;
  CHECK(say("click Drop1") == "ok");
  CHECK(events == "duc");
  events.clear();
  say("press Drop1");
  CHECK(events == "d");
  say("release Drop1");
  CHECK(events == "duc");
  events.clear();
  say("press Drop2");
  say("release Drop1");
  CHECK(events == "u");
  events.clear();
  say("rightclick Drop1");
  CHECK(events == "DU");
  events.clear();
  say("dblclick Drop1");
  CHECK(events == "duC");
}

TEST_CASE_FIXTURE(HandsFixture, "A part without a handler of its own forwards to its container") {
  MessageBoxForm& box = console().MyMsgbox;
  box.show();
  watch(box.OKButton);
  box.Label1.set_container(&box.OKButton);
  CHECK(say("click MyMsgbox.Label1") == "ok");
  CHECK(events == "duc");
  listen(box.Label1.on_click, [this] { events += 'L'; });
  events.clear();
  say("click MyMsgbox.Label1");
  CHECK(events == "duL");
}

TEST_CASE_FIXTURE(HandsFixture, "What can't be seen is refused") {
  CHECK(say("click MyMsgbox.OKButton") == "error not visible");
  form().Text1.visible = false;
  CHECK(say("dblclick Text1") == "error not visible");
  form().Text1.visible = true;
  form().ScreenBottom.visible = false;
  CHECK(say("dblclick Text1") == "error not visible");
  CHECK(say("type Text1 \"x\"") == "error not visible");
  CHECK(say("focus Text1") == "error not visible");
  CHECK(say("set Text1.Text \"x\"") == "error not visible");
  say("minimise");
  CHECK(say("click Drop1") == "error not visible");
  CHECK(say("key 65 0") == "error not visible");
  CHECK(say("close MyMsgbox") == "error not visible");
}

TEST_CASE_FIXTURE(HandsFixture, "What doesn't react is refused") {
  form().Drop1.enabled = false;
  CHECK(say("click Drop1") == "error disabled");
  CHECK(say("click Drop1Label") == "error disabled");
  CHECK(say("press Drop1") == "error disabled");
  CHECK(say("rightclick Drop1") == "error disabled");
  form().Text1.enabled = false;
  CHECK(say("type Text1 \"x\"") == "error disabled");
}

TEST_CASE_FIXTURE(HandsFixture, "A menu entry needs all entries above it") {
  form().Port.visible = true;
  form().Port.enabled = true;
  CHECK(say("click Com2") == "ok");
  form().Port.enabled = false;
  CHECK(say("click Com2") == "error disabled");
  form().Port.visible = false;
  CHECK(say("click Com2") == "error not visible");
}

TEST_CASE_FIXTURE(HandsFixture, "A modal window keeps the hands from the others") {
  console().MyMsgbox.modal = true;
  console().MyMsgbox.show();
  CHECK(say("click Com2") == "error disabled");
  CHECK(say("key 65 0") == "error disabled");
  CHECK(say("quit") == "error disabled");
  CHECK(say("click MyMsgbox.OKButton") == "ok");
  CHECK(say("click Com2") == "ok");
}

TEST_CASE_FIXTURE(HandsFixture, "A check box toggles and an option button is chosen alone") {
  CheckBox box(form(), "Box");
  OptionButton first(form(), "First");
  OptionButton second(form(), "Second");
  OptionButton elsewhere(form(), "Elsewhere");
  elsewhere.set_container(&form().ScreenBottom);
  elsewhere.value = true;
  listen(box.on_click, [&] { CHECK(box.value == 1); });
  CHECK(say("click Box") == "ok");
  CHECK(say("get Box.Value") == "= 1");
  box.on_click.forget_handler();
  say("click Box");
  CHECK(say("get Box.Value") == "= 0");
  say("click First");
  say("click Second");
  CHECK(say("get First.Value") == "= false");
  CHECK(say("get Second.Value") == "= true");
  CHECK(say("get Elsewhere.Value") == "= true");
}

TEST_CASE_FIXTURE(HandsFixture, "Keys are pressed one by one and entered at the caret") {
  TextBox box(form(), "Box");
  box.text = "ad";
  box.sel_start = 1;
  CHECK(say("type Box \"bc\\b\"") == "ok");
  CHECK(box.text == "abd");
  CHECK(form().focused() == &box);
  listen(box.on_key_press, [](int& key) {
    if (key == 'x') key = 0;
    if (key == 'y') key = 'Y';
  });
  say("type Box \"xy\"");
  CHECK(box.text == "abYd");
  say("type Box \"\\u00e9\\r\\u001b\"");
  CHECK(box.text ==
        "abY\xE9"
        "d");
}

TEST_CASE_FIXTURE(HandsFixture, "Keys go to what has the focus by then") {
  TextBox first(form(), "First");
  TextBox second(form(), "Second");
  listen(first.on_key_press, [&](int& key) {
    if (key != '\r') return;
    key = 0;
    second.set_focus();
  });
  say("type First \"a\\rb\"");
  CHECK(first.text == "a");
  CHECK(second.text == "b");
  listen(second.on_key_press, [&](int&) { second.visible = false; });
  CHECK(say("type Second \"cde\"") == "ok");
  CHECK(second.text == "bc");
}

TEST_CASE_FIXTURE(HandsFixture, "Setting a text box is the user's replacing of its text") {
  TextBox box(form(), "Box");
  int changes = 0;
  listen(box.on_change, [&] { ++changes; });
  CHECK(say("set Box \"abc\"") == "ok");
  CHECK(say("set Box.Text \"abc\"") == "ok");
  CHECK(changes == 1);
  CHECK(say("get Box.SelStart") == "= 3");
  box.enabled = false;
  CHECK(say("set Box \"x\"") == "error disabled");
  CHECK(say("set Box.SelStart 1") == "ok");
}

TEST_CASE_FIXTURE(HandsFixture, "The focus goes and comes") {
  TextBox box(form(), "Box");
  watch(box);
  CHECK(say("blur Box") == "error without the focus");
  CHECK(say("focus Box") == "ok");
  CHECK(say("blur Box") == "ok");
  CHECK(events == "+-");
  CHECK(say("focus Lineweir") == "ok");
  CHECK(say("blur Lineweir") == "ok");
}

TEST_CASE_FIXTURE(HandsFixture, "Entries are chosen and dragged by their number") {
  ListBox list(form(), "Entries");
  list.add_item("a");
  list.add_item("b");
  std::string dragged;
  listen(list.on_drag,
         [&](int from, int to) { dragged = std::to_string(from) + std::to_string(to); });
  CHECK(say("select Entries 1") == "ok");
  CHECK(list.list_index == 1);
  CHECK(say("select Entries 2") == "error no such entry");
  CHECK(say("select Entries -1") == "error no such entry");
  CHECK(say("drag Entries 0 1") == "ok");
  CHECK(dragged == "01");
  CHECK(say("drag Entries 0 2") == "error no such entry");
  CHECK(say("select Drop1 0") == "error a user can't do that to Drop1");
}

TEST_CASE_FIXTURE(HandsFixture, "A grid's selection moves to a cell") {
  Grid grid(form(), "Cells", 3, 2);
  int moves = 0;
  listen(grid.on_sel_change, [&] { ++moves; });
  CHECK(say("cell Cells 2 0") == "ok");
  CHECK(say("get Cells.Row") == "= 2");
  CHECK(moves == 1);
  CHECK(say("cell Cells 3 0") == "error no such cell");
  CHECK(say("cell Cells -1 0") == "error no such cell");
}

TEST_CASE_FIXTURE(HandsFixture, "The main window is resized, minimised and restored") {
  int resizes = 0;
  listen(form().on_resize, [&] { ++resizes; });
  CHECK(say("resize 9000 8000") == "ok");
  CHECK(say("get Lineweir.Width") == "= 9000");
  CHECK(say("get Lineweir.Height") == "= 8000");
  CHECK(say("minimise") == "ok");
  CHECK(say("get Lineweir.WindowState") == "= 1");
  CHECK(say("resize 9000 8000") == "error not visible");
  CHECK(say("restore") == "ok");
  CHECK(say("get Lineweir.WindowState") == "= 0");
  CHECK(resizes == 3);
  CHECK(say("resize 0 8000") == "error not a number in range: 0");
  CHECK(say("resize 9000 999999999") == "error not a number in range: 999999999");
}

TEST_CASE_FIXTURE(HandsFixture, "A key comes to the main form, then to what has the focus") {
  TextBox box(form(), "Box");
  box.set_focus();
  std::string seen;
  bool swallow = false;
  listen(form().on_key_down, [&](int& code, int shift) {
    seen += 'F' + std::to_string(shift);
    if (swallow) code = 0;
  });
  listen(box.on_key_down, [&](int&, int) { seen += 'B'; });
  CHECK(say("key 65 1") == "ok");
  CHECK(seen == "F1B");
  swallow = true;
  say("key 65 0");
  CHECK(seen == "F1BF0");
  CHECK(say("key 256 0") == "error not a number in range: 256");
  CHECK(say("key 65 8") == "error not a number in range: 8");
}

TEST_CASE_FIXTURE(HandsFixture, "An element may go while it is being clicked") {
  auto label = std::make_unique<Label>(form(), "Passing");
  listen(label->on_mouse_down, [&](int, int) { label.reset(); });
  CHECK(say("click Passing") == "ok");
  label = std::make_unique<Label>(form(), "Passing");
  listen(label->on_click, [&] { label.reset(); });
  CHECK(say("click Passing") == "ok");
  CHECK(say("click Passing") == "error no such path: Passing");
}

TEST_CASE_FIXTURE(HandsFixture, "Timers and lines are out of a user's reach") {
  CHECK(say("click Timer1") == "error a user can't do that to Timer1");
  CHECK(say("click HourHand") == "error a user can't do that to HourHand");
  CHECK(say("type PortOn \"x\"") == "error a user can't do that to PortOn");
}

TEST_CASE_FIXTURE(HandsFixture, "A form is clicked and closed") {
  CHECK(say("click AboutLineweir") == "ok");
  CHECK(say("forms") == "= [\"Lineweir\",\"AboutBox\"]");
  CHECK(say("click AboutBox") == "ok");
  CHECK(say("forms") == "= [\"Lineweir\"]");
  say("click AboutLineweir");
  CHECK(say("close AboutBox") == "ok");
  CHECK(say("forms") == "= [\"Lineweir\"]");
}

}  // namespace
}  // namespace lineweir::test

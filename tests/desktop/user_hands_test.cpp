#include <doctest/doctest.h>

#include <QWindow>
#include <string>
#include <vector>

#include "forms/picture_names.h"
#include "shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

using Events = std::vector<std::string>;

void record(Control& control, Events& events) {
  listen(control.on_mouse_down, [&events](int button, int shift) {
    events.push_back("down " + std::to_string(button) + " " + std::to_string(shift));
  });
  listen(control.on_mouse_up,
         [&events](int button, int) { events.push_back("up " + std::to_string(button)); });
  listen(control.on_click, [&events] { events.push_back("click"); });
}

TEST_SUITE("the user's hands") {
  TEST_CASE("a click on a key is a press, a release and a click") {
    test::ShownConsole desk;
    Events events;
    record(desk.form().NextButton, events);
    QTest::mouseClick(&desk.widget(desk.form().NextButton), Qt::LeftButton);
    CHECK(events == Events{"down 1 0", "up 1", "click"});
  }

  TEST_CASE("a release outside the key is no click") {
    test::ShownConsole desk;
    Events events;
    record(desk.form().NextButton, events);
    ElementWidget& key = desk.widget(desk.form().NextButton);
    QTest::mousePress(&key, Qt::LeftButton);
    QTest::mouseRelease(&key, Qt::LeftButton, {}, QPoint(-20, -20));
    CHECK(events == Events{"down 1 0", "up 1"});
  }

  TEST_CASE("two quick presses are two clicks") {
    test::ShownConsole desk;
    Events events;
    record(desk.form().Drop1, events);
    ElementWidget& key = desk.widget(desk.form().Drop1);
    QTest::mouseClick(&key, Qt::LeftButton);
    // The second press of a quick pair comes as a double click.
    QTest::mouseDClick(&key, Qt::LeftButton);
    QTest::mouseRelease(&key, Qt::LeftButton);
    CHECK(events == Events{"down 1 0", "up 1", "click", "down 1 0", "up 1", "click"});
  }

  TEST_CASE("the right button tells its number and clicks nothing") {
    test::ShownConsole desk;
    Events events;
    record(desk.form().LineName(2), events);
    QTest::mouseClick(&desk.widget(desk.form().LineName(2)), Qt::RightButton);
    CHECK(events == Events{"down 2 0", "up 2"});
  }

  TEST_CASE("a double click on a row's text reaches its handler") {
    test::ShownConsole desk;
    int double_clicks = 0;
    listen(desk.form().LineName(2).on_dbl_click, [&] { ++double_clicks; });
    QTest::mouseDClick(&desk.widget(desk.form().LineName(2)), Qt::LeftButton);
    CHECK(double_clicks == 1);
  }

  TEST_CASE("a disabled key feels nothing") {
    test::ShownConsole desk;
    Events events;
    record(desk.form().Dial, events);
    desk.form().Dial.enabled = false;
    desk.settle();
    QTest::mouseClick(&desk.widget(desk.form().Dial), Qt::LeftButton);
    CHECK(events.empty());
  }

  TEST_CASE("what lies on a key leaves the mouse to the key") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    desk.console.rows.HybridPictureSet(3, 1, 1);
    desk.settle();
    for (const auto& [key, middle] :
         {std::pair<const Control*, const Control*>{&form.OnHybrid1(3), &form.CIcon1(3)},
          {&form.Drop1, &form.Drop1Label},
          {&form.NextButton, &form.CenterLabel1}}) {
      ElementWidget& widget = desk.widget(*key);
      CAPTURE(key->name());
      CHECK(desk.widget(*middle).isVisible());
      const QPoint at = desk.canvas().origin_of(widget) + widget.rect().center();
      CHECK(desk.canvas().childAt(at) == &widget);
    }
  }

  TEST_CASE("a key with the focus is pressed by Space and by Enter") {
    test::ShownConsole desk;
    for (const auto code : {Qt::Key_Space, Qt::Key_Return}) {
      Events events;
      record(desk.form().OnHybrid1(2), events);
      ElementWidget& key = desk.widget(desk.form().OnHybrid1(2));
      QTest::keyClick(&key, code);
      CHECK(events == Events{"down 1 0", "up 1", "click"});
    }
  }

  TEST_CASE("Tab goes from key to key and tells the form") {
    test::ShownConsole desk;
    desk.window().activateWindow();
    ElementWidget& first = desk.widget(desk.form().OnHybrid1(0));
    first.setFocus(Qt::TabFocusReason);
    REQUIRE(test::wait_for([&] { return first.hasFocus(); }));
    CHECK(desk.form().focused() == &desk.form().OnHybrid1(0));
    QTest::keyClick(&first, Qt::Key_Tab);
    CHECK(desk.form().focused() != nullptr);
    CHECK(desk.form().focused() != &desk.form().OnHybrid1(0));
  }

  TEST_CASE("a key that has gone with its own click is survived") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const int extra = form.DataRow.upper_bound();
    form.load_row(extra);
    form.OnHybrid1(extra).move(0, 0, 300, 300);
    form.OnHybrid1(extra).visible = true;
    desk.settle();
    ElementWidget& key = desk.widget(form.OnHybrid1(extra));
    listen(form.OnHybrid1(extra).on_mouse_up, [&](int, int) { form.unload_row(extra); });
    QTest::mouseClick(&key, Qt::LeftButton);
    desk.settle();
    CHECK_FALSE(form.OnHybrid1.loaded(extra));
  }
}

struct PressedKey {
  int code = 0;
  int shift = 0;
};

TEST_SUITE("keys of the main form") {
  TEST_CASE("keys reach the form before the control that has the focus") {
    test::ShownConsole desk;
    std::vector<PressedKey> keys;
    listen(desk.form().on_key_down, [&](int& code, int shift) {
      keys.push_back({code, shift});
      code = 0;
    });
    int clicks = 0;
    listen(desk.form().OnHybrid1(0).on_click, [&] { ++clicks; });
    desk.window().activateWindow();
    desk.widget(desk.form().OnHybrid1(0)).setFocus();
    REQUIRE(test::wait_for([&] { return desk.widget(desk.form().OnHybrid1(0)).hasFocus(); }));
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_Space);
    REQUIRE(keys.size() == 1);
    CHECK(keys[0].code == 32);
    // The handler has swallowed it.
    CHECK(clicks == 0);
  }

  TEST_CASE("a key that the form leaves alone goes on to the control") {
    test::ShownConsole desk;
    listen(desk.form().on_key_down, [](int&, int) {});
    int clicks = 0;
    listen(desk.form().OnHybrid1(0).on_click, [&] { ++clicks; });
    desk.window().activateWindow();
    desk.widget(desk.form().OnHybrid1(0)).setFocus();
    REQUIRE(test::wait_for([&] { return desk.widget(desk.form().OnHybrid1(0)).hasFocus(); }));
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_Space);
    CHECK(clicks == 1);
  }

  TEST_CASE("codes and shift states are those that the core knows") {
    test::ShownConsole desk;
    PressedKey last;
    listen(desk.form().on_key_down, [&](int& code, int shift) {
      last = {code, shift};
      code = 0;
    });
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
      last = {};
      QTest::keyClick(desk.window().windowHandle(), key, modifiers);
      return last;
    };
    CHECK(press(Qt::Key_1).code == 49);
    CHECK(press(Qt::Key_0).code == 48);
    CHECK(press(Qt::Key_N).code == 78);
    // The manual's.
    CHECK(press(Qt::Key_F1).code == 0);
    CHECK(press(Qt::Key_F2).code == 113);
    CHECK(press(Qt::Key_F7).code == 118);
    CHECK(press(Qt::Key_Escape).code == 27);
    CHECK(press(Qt::Key_1, Qt::ShiftModifier).shift == 1);
    CHECK(press(Qt::Key_1, Qt::ControlModifier).shift == 2);
    CHECK(press(Qt::Key_1, Qt::ControlModifier | Qt::ShiftModifier).shift == 3);
    CHECK(press(Qt::Key_1, Qt::AltModifier).shift == 4);
    CHECK(press(Qt::Key_1, Qt::AltModifier | Qt::ShiftModifier).shift == 5);
    // What shift makes of the digit row of a common keyboard.
    CHECK(press(Qt::Key_Exclam, Qt::ShiftModifier).code == 49);
    CHECK(press(Qt::Key_ParenRight, Qt::ShiftModifier).code == 48);
  }
}

}  // namespace
}  // namespace lineweir

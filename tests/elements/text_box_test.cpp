#include "elements/text_box.h"

#include <doctest/doctest.h>

#include "elements/form.h"
#include "support/listen.h"
#include "support/property_check.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

struct BoxForm {
  Form form{"Form"};
  TextBox box{form, "Text1"};

  void type(std::string_view keys) {
    for (const char key : keys) box.enter(static_cast<unsigned char>(key));
  }
};

TEST_SUITE("elements/text box") {
  TEST_CASE("characters are entered at the caret, which moves on") {
    BoxForm form;
    form.type("held");
    CHECK(form.box.text == "held");
    CHECK(form.box.sel_start.get() == 4);

    form.box.sel_start = 0;
    form.type("up");
    CHECK(form.box.text == "upheld");
    CHECK(form.box.sel_start.get() == 2);
  }

  TEST_CASE("Backspace takes the character before the caret, and none at the beginning") {
    BoxForm form;
    form.type("abc");
    form.box.sel_start = 2;
    form.type("\b");
    CHECK(form.box.text == "ac");
    form.type("\b\b\b");
    CHECK(form.box.text == "c");
    CHECK(form.box.sel_start.get() == 0);
  }

  TEST_CASE("Enter breaks the line only in a box of several lines") {
    BoxForm form;
    form.type("a\rb");
    CHECK(form.box.text == "ab");

    form.box.multi_line = true;
    form.box.sel_start = 1;
    form.type("\r");
    CHECK(form.box.text == "a\r\nb");
    CHECK(form.box.sel_start.get() == 3);
  }

  TEST_CASE("other control characters, and what is no character, are passed over") {
    BoxForm form;
    RecordingWatch watch(form.form);
    for (const int key : {-1, 0, 1, 9, 10, 27, 31, 256, 100000}) form.box.enter(key);
    CHECK(form.box.text == "");
    CHECK(watch.take().empty());
  }

  TEST_CASE("characters above 127 are bytes of their own") {
    BoxForm form;
    form.box.enter(0xE4);
    form.box.enter(255);
    CHECK(form.box.text == "\xE4\xFF");
  }

  TEST_CASE("a caret outside the text counts as its nearest end") {
    BoxForm form;
    form.box.text = "ab";
    form.box.sel_start = 99;
    form.type("c");
    CHECK(form.box.text == "abc");
    form.box.sel_start = -5;
    form.type("_");
    CHECK(form.box.text == "_abc");
  }

  TEST_CASE("the caret has moved when the change event runs") {
    BoxForm form;
    int caret = -1;
    listen(form.box.on_change, [&] { caret = form.box.sel_start; });
    form.type("x");
    CHECK(caret == 1);
  }

  TEST_CASE("what the user's hand makes of the text may be changed before the box takes it") {
    BoxForm form;
    listen(form.box.on_edit, [](std::string& text, int& caret) {
      text = text.substr(0, 2);
      caret = std::min(caret, 2);
    });
    form.type("abc");
    CHECK(form.box.text == "ab");
    CHECK(form.box.sel_start.get() == 2);
    form.box.edit("wxyz", 4);
    CHECK(form.box.text == "wx");
    // The program's own text is no edit.
    form.box.text = "abcd";
    CHECK(form.box.text == "abcd");
  }

  TEST_CASE("caret_to_end stands behind the last character") {
    BoxForm form;
    form.box.text = "abc";
    form.box.caret_to_end();
    CHECK(form.box.sel_start.get() == 3);
  }

  TEST_CASE("any keys leave the caret inside the text and count as they should") {
    check_property([](const std::vector<int>& keys, const std::string& text, int caret) {
      BoxForm form;
      form.box.text = text;
      form.box.sel_start = caret;
      std::size_t length = text.size();
      for (const int key : keys) {
        form.box.enter(key);
        const bool printable = key >= ' ' && key <= 255;
        const std::size_t now = form.box.text.get().size();
        if (printable) RC_ASSERT(now == length + 1);
        if (!printable) RC_ASSERT(now <= length);
        if (now != length) {
          RC_ASSERT(form.box.sel_start.get() >= 0);
          RC_ASSERT(static_cast<std::size_t>(form.box.sel_start.get()) <= now);
        }
        length = now;
      }
    });
  }
}

}  // namespace
}  // namespace lineweir::test

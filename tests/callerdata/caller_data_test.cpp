#include "callerdata/caller_data.h"

#include <doctest/doctest.h>

#include <array>

#include "support/entry_form.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

TEST_SUITE("callerdata/form 4") {
  TEST_CASE("it opens with the fields in use closed up and the focus in the first") {
    EntryForm test;
    test.use_only({2, 3, 9});
    test.open(4);
    CHECK(test.form().visible);
    CHECK(test.form().caption == "Caller Data - Line 5");
    CHECK(test.console.lines.CurrentDataLine == 4);
    CHECK(test.focused() == 2);
    const std::vector<std::pair<int, int>> tops = {{2, 120}, {3, 495}, {9, 870}};
    for (const auto& [entry, top] : tops) {
      CAPTURE(entry);
      CHECK(test.box(entry).top == top);
      CHECK(test.form().Label(entry).top == top);
      CHECK(test.box(entry).visible);
      CHECK(test.box(entry).enabled);
      CHECK(test.form().Label(entry).visible);
    }
    for (const int entry : {1, 4, 5, 6, 7, 8, 10}) {
      CAPTURE(entry);
      CHECK_FALSE(test.box(entry).visible);
      CHECK_FALSE(test.box(entry).enabled);
      CHECK_FALSE(test.form().Label(entry).visible);
    }
  }

  TEST_CASE("each field shows what the record holds or, where that is empty, the row") {
    EntryForm test;
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      test.shown(3, entry).caption = " row" + std::to_string(entry) + " ";
      test.shown(4, entry).caption = " row" + std::to_string(entry) + " ";
      test.record(4).set(entry_field(entry).field, " r" + std::to_string(entry) + " ");
    }
    test.open(3);
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CHECK(test.text(entry) == "row" + std::to_string(entry));
    }
    test.open(4);
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CHECK(test.text(entry) == "r" + std::to_string(entry));
    }
  }

  TEST_CASE("the extra field has the user's title") {
    EntryForm test;
    test.console.Lineweir.CaptionLabel(user_column).caption = "  Sponsor ";
    test.open(0);
    CHECK(test.form().Label(10).caption == "Sponsor");
  }

  TEST_CASE("without the right it says so and closes after 100 ms") {
    EntryForm test;
    test.console.program.CallerDataAllowed = false;
    test.console.Lineweir.left = 300;
    test.console.Lineweir.top = 200;
    test.open(0);
    CHECK(test.take_messages() == Texts{"Caller Data Entry not allowed in this user profile"});
    CHECK(test.console.MyMsgbox.left == 2300);
    CHECK(test.console.MyMsgbox.top == 1200);
    test.platform.loop.advance(platform::Milliseconds(99));
    CHECK(test.form().loaded());
    test.platform.loop.advance(platform::Milliseconds(1));
    CHECK_FALSE(test.form().loaded());
    CHECK_FALSE(test.form().UnloadTimer.enabled);

    test.console.program.CallerDataAllowed = true;
    test.open(0);
    test.platform.loop.advance(platform::Milliseconds(500));
    CHECK(test.form().loaded());
  }

  TEST_CASE("Enter goes to the next field in use, and from the last one saves") {
    EntryForm test;
    test.use_only({1, 2, 4});
    test.open(0);
    test.type(1, "Ann\r");
    CHECK(test.focused() == 2);
    // Field 3 is off.
    test.type(2, "12 Main St\r");
    CHECK(test.focused() == 4);
    CHECK(test.form().loaded());
    test.type(4, "NY\r");
    CHECK_FALSE(test.form().loaded());
    CHECK(test.shown(0, 1).caption == "Ann");
    CHECK(test.shown(0, 2).caption == "12 Main St");
    CHECK(test.record(0)[CallerField::State] == "NY");
  }

  TEST_CASE("Enter in the tenth field saves") {
    EntryForm test;
    test.open(0);
    test.type(10, "x\r");
    CHECK_FALSE(test.form().loaded());
    CHECK(test.record(0)[CallerField::UserField].starts_with("x "));
  }

  TEST_CASE("with no field in use Enter in any field saves at once") {
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CAPTURE(entry);
      EntryForm test;
      test.use_only({});
      test.open(0);
      CHECK(test.focused() == 0);
      int key = '\r';
      test.box(entry).on_key_press(key);
      CHECK(key == 0);
      CHECK_FALSE(test.form().loaded());
    }
  }

  TEST_CASE("the gender field knows four letters and nothing else") {
    EntryForm test;
    test.open(0);
    for (int code = 1; code < 256; ++code) {
      if (code == '\r') continue;
      CAPTURE(code);
      test.box(8).text = "before";
      int key = code;
      test.box(8).on_key_press(key);
      CHECK(key == 0);
      const bool female = code == 'F' || code == 'f';
      const bool male = code == 'M' || code == 'm';
      CHECK(test.text(8) == (female ? "Female" : male ? "Male" : "before"));
    }
    test.type(8, "\r");
    CHECK(test.focused() == 9);
  }

  TEST_CASE("in the other fields all other keys pass") {
    EntryForm test;
    test.open(0);
    for (const int entry : {1, 2, 3, 4, 5, 6, 7, 9, 10}) {
      for (int code = 1; code < 256; ++code) {
        if (code == '\r') continue;
        int key = code;
        test.box(entry).on_key_press(key);
        CHECK(key == code);
      }
    }
  }

  TEST_CASE("without the right nothing is saved, and the text stays") {
    EntryForm test;
    test.connect_socket();
    test.open(2);
    test.type(1, "Ann");
    test.console.program.CallerDataAllowed = false;
    test.save();
    CHECK(test.take_messages() == Texts{"Caller Data Entry not allowed in this user profile"});
    CHECK(test.platform.winsock1.take_writes().empty());
    CHECK(test.shown(2, 1).caption == "");
    CHECK(test.record(2)[CallerField::CallerName] == "");
    test.platform.loop.advance(platform::Milliseconds(500));
    CHECK(test.form().loaded());
    CHECK(test.text(1) == "Ann");
    // By Enter too.
    test.type(10, "\r");
    CHECK(test.take_messages().size() == 1);
    test.form().close();
    test.console.program.CallerDataAllowed = true;
    test.open(2);
    CHECK(test.text(1) == "Ann");
    test.save();
    CHECK(test.shown(2, 1).caption == "Ann");
  }

  TEST_CASE("a field takes as many characters as its column of the log, and says so") {
    EntryForm test;
    test.open(0);
    constexpr std::array<std::size_t, 10> rooms = {30, 40, 25, 15, 12, 15, 10, 6, 100, 100};
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      if (entry == 8) continue;
      CAPTURE(entry);
      const std::size_t room = rooms[static_cast<std::size_t>(entry - 1)];
      test.type(entry, std::string(room, '7'));
      CHECK_FALSE(test.form().NoticeLabel.visible);
      test.type(entry, "8");
      CHECK(test.text(entry) == std::string(room, '7'));
      CHECK(test.form().NoticeLabel.visible);
      CHECK(test.form().NoticeLabel.caption == test.form().Label(entry).caption.get() +
                                                   " takes no more than " + std::to_string(room) +
                                                   " characters");
      test.type(entry, "\b");
      CHECK_FALSE(test.form().NoticeLabel.visible);
    }
    test.save();
    CHECK(test.shown(0, 7).caption == std::string(9, '7'));
  }

  TEST_CASE("what is pasted is cut at the field's room, and a number loses its separators first") {
    EntryForm test;
    test.open(0);
    test.box(1).edit(std::string(31, 'x'), 31);
    CHECK(test.text(1) == std::string(30, 'x'));
    CHECK(test.box(1).sel_start.get() == 30);
    CHECK(test.form().NoticeLabel.visible);
    test.box(6).edit("+1 (312) 555-0100", 17);
    CHECK(test.text(6) == "+13125550100");
    CHECK(test.box(6).sel_start.get() == 12);
    CHECK_FALSE(test.form().NoticeLabel.visible);
    test.box(6).text = "";
    test.type(6, "1 (312) 555-0100");
    CHECK(test.text(6) == "13125550100");
  }

  TEST_CASE("fields that aren't in use keep what the line has") {
    EntryForm test;
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      test.shown(7, entry).caption = "old";
      if (entry % 2 == 0) test.record(7).set(entry_field(entry).field, "own");
    }
    test.use_only({1, 8});
    test.open(7);
    test.type(1, "Ann");
    test.type(8, "f");
    test.save();
    // The name had been there, and the caret stands behind it.
    CHECK(test.shown(7, 1).caption == "oldAnn");
    CHECK(test.record(7)[CallerField::CallerName] == "oldAnn");
    CHECK(test.shown(7, 8).caption == "Female");
    CHECK(test.record(7)[CallerField::Gender] == "Female");
    for (const int entry : {2, 3, 4, 5, 6, 7, 9, 10}) {
      CAPTURE(entry);
      const std::string kept = entry % 2 == 0 ? "own" : "old";
      CHECK(test.shown(7, entry).caption == kept);
      CHECK(trimmed(test.record(7)[entry_field(entry).field]) == kept);
    }
  }

  TEST_CASE("the fixed fields of the record cut what is too long") {
    EntryForm test;
    test.open(0);
    test.box(7).text = "12345678901";
    test.box(8).text = "Unknown";
    test.save();
    CHECK(test.record(0)[CallerField::Station] == "1234567890");
    CHECK(test.record(0)[CallerField::Gender] == "Unknow");
    CHECK(test.shown(0, 7).caption == "12345678901");
  }
}

}  // namespace
}  // namespace lineweir::test

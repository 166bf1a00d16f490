#include "callerdata/caller_data.h"

#include <doctest/doctest.h>

#include "support/entry_form.h"

namespace lineweir::test {
namespace {

TEST_SUITE("callerdata/what is typed is never lost") {
  TEST_CASE("a second opening on the same line only comes to the front") {
    EntryForm test;
    test.open(3);
    test.type(1, "Ann");
    test.type(2, "Ma");
    test.shown(3, 1).caption = "from elsewhere";
    test.open(3);
    CHECK(test.text(1) == "Ann");
    CHECK(test.focused() == 2);
  }

  TEST_CASE("an opening on another line keeps the text for its own") {
    EntryForm test;
    test.shown(5, 1).caption = "Bob";
    test.open(3);
    test.type(1, "Ann");
    test.open(5);
    CHECK(test.form().caption == "Caller Data - Line 6");
    CHECK(test.text(1) == "Bob");
    CHECK(test.focused() == 1);
    test.type(3, "Bath");
    test.open(3);
    CHECK(test.text(1) == "Ann");
    CHECK(test.text(3) == "");
    test.open(5);
    CHECK(test.text(1) == "Bob");
    CHECK(test.text(3) == "Bath");
    // Nothing of it is in a row before it is saved.
    CHECK(test.shown(3, 1).caption == "");
    CHECK(test.shown(5, 3).caption == "");
  }

  TEST_CASE("closing the window keeps the text for the next opening") {
    EntryForm test;
    test.open(3);
    test.type(1, "Ann");
    test.form().close();
    CHECK_FALSE(test.form().loaded());
    test.open(3);
    CHECK(test.text(1) == "Ann");
  }

  TEST_CASE("a text that was not changed is no draft: the next opening shows the row") {
    EntryForm test;
    test.shown(3, 1).caption = "Ann";
    test.open(3);
    test.form().close();
    test.shown(3, 1).caption = "Anna";
    test.open(3);
    CHECK(test.text(1) == "Anna");
  }

  TEST_CASE("a saved text is no draft any more") {
    EntryForm test;
    test.open(3);
    test.type(1, "Ann");
    test.open(5);
    test.open(3);
    test.save();
    test.record(3).set(CallerField::CallerName, "Anna");
    test.open(3);
    CHECK(test.text(1) == "Anna");
  }

  TEST_CASE("typing it all back to what the row shows leaves no draft") {
    EntryForm test;
    test.open(3);
    test.type(1, "A");
    test.open(5);
    test.open(3);
    test.type(1, "\b");
    test.open(5);
    test.shown(3, 1).caption = "Anna";
    test.open(3);
    CHECK(test.text(1) == "Anna");
  }

  TEST_CASE("the text of a call that has ended stays until the next call, whose form hasn't it") {
    EntryForm test;
    test.box_sends("R03");
    test.open(3);
    test.type(1, "Ann");
    test.form().close();
    test.box_sends("F03");
    test.open(3);
    CHECK(test.text(1) == "Ann");
    test.form().close();

    test.box_sends("R03");
    test.open(3);
    CHECK(test.text(1) == "");
  }

  TEST_CASE("the caret stands behind what each field shows") {
    EntryForm test;
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      test.shown(0, entry).caption = std::string(static_cast<std::size_t>(entry % 4 + 1), '1');
    }
    test.open(0);
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CAPTURE(entry);
      CHECK(test.box(entry).sel_start == static_cast<int>(test.text(entry).size()));
    }
    test.box(8).sel_start = 0;
    int key = 'f';
    test.box(8).on_key_press(key);
    CHECK(test.box(8).sel_start == 6);
  }

  TEST_CASE("a notice of a full field goes when the field is typed in again") {
    EntryForm test;
    test.open(0);
    test.box(8).edit("Female", 6);
    test.box(1).edit(std::string(200, 'x'), 200);
    CHECK(test.form().NoticeLabel.visible);
    test.box(1).edit("Ann", 3);
    CHECK_FALSE(test.form().NoticeLabel.visible);
  }
}

}  // namespace
}  // namespace lineweir::test

#include "callerdata/caller_data.h"

#include <doctest/doctest.h>

#include "serverlink/packet_text.h"
#include "support/entry_form.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

std::string fields_text(std::string_view sender, const std::vector<std::string>& fields) {
  std::string text = std::string(sender) + '\2';
  for (std::size_t i = 0; i < 10; ++i) text += (i < fields.size() ? fields[i] : "") + '\2';
  return text;
}

// The frame of caller data as it stands on the wire.
std::string frame(int line, int group, int console, std::string buffer) {
  std::string bytes = "\4\4\6";
  for (const int field : {line, group, 255, console, 255}) bytes += static_cast<char>(field);
  bytes += TextWrit_SizeEncode(static_cast<int>(buffer.size()));
  if (buffer.size() % 2 == 1) buffer += '\xFF';
  return bytes + buffer + "\5\5";
}

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

  TEST_CASE("the first six fields come from the row, the others from the record, trimmed") {
    EntryForm test;
    for (int entry = 1; entry <= 10; ++entry) {
      test.shown(3, entry).caption = " row " + std::to_string(entry) + " ";
      test.record(3).set(entry_field(entry).field, " rec" + std::to_string(entry) + " ");
    }
    test.open(3);
    for (int entry = 1; entry <= 10; ++entry) {
      CAPTURE(entry);
      const std::string expected = entry <= 6 ? "row " : "rec";
      CHECK(test.text(entry) == expected + std::to_string(entry));
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
    for (int entry = 1; entry <= 10; ++entry) {
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

  TEST_CASE("saving writes all ten fields, also those not in use") {
    EntryForm test;
    for (int entry = 1; entry <= 10; ++entry) {
      test.shown(7, entry).caption = "old";
      test.record(7).set(entry_field(entry).field, "old");
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
      CHECK(test.shown(7, entry).caption == "");
      CHECK(trimmed(test.record(7)[entry_field(entry).field]).empty());
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

  TEST_CASE("on the serial link nothing goes out") {
    EntryForm test;
    test.platform.winsock1.stand_connected();
    test.platform.comm1.open();
    test.open(0);
    test.type(1, "Ann");
    test.save();
    CHECK(test.platform.winsock1.take_writes().empty());
    CHECK(test.platform.comm1.take_writes().empty());
    CHECK(test.platform.remote_objects.take_calls().empty());
    CHECK_FALSE(test.form().loaded());
  }

  TEST_CASE("over the socket one frame goes out with eleven texts") {
    EntryForm test;
    test.connect_socket();
    test.console.caller_data.OperatorName = " Jo ";
    test.console.program.GroupNumber = 3;
    test.console.program.ConsoleNumber = 2;
    test.open(4);
    test.box(1).text = "  Ann Lee ";
    test.box(3).text = "Albany";
    test.box(7).text = " WXYZ ";
    test.box(8).text = "Female";
    test.box(10).text = "vip";
    test.save();
    CHECK(test.platform.winsock1.take_writes() ==
          Texts{frame(4, 3, 2,
                      fields_text("Jo", {"Ann Lee", "", "Albany", "", "", "", "WXYZ", "Female", "",
                                         "vip"}))});
    // The row and the texts of any length have what was typed, the fixed fields the trimmed text.
    CHECK(test.shown(4, 1).caption == "  Ann Lee ");
    CHECK(test.record(4)[CallerField::CallerName] == "  Ann Lee ");
    CHECK(test.record(4)[CallerField::Station] == "WXYZ      ");
    CHECK_FALSE(test.form().loaded());
  }

  TEST_CASE("codes 0 around a text don't go out") {
    EntryForm test;
    test.connect_socket();
    test.open(0);
    test.box(1).text = std::string("\0\0Ann\0", 6);
    test.box(7).text = std::string("\0KQ\0", 4);
    test.save();
    CHECK(test.platform.winsock1.take_writes() ==
          Texts{frame(
              0, 1, 0,
              fields_text(test.console.program.ClientId, {"Ann", "", "", "", "", "", "KQ"}))});
    CHECK(test.record(0)[CallerField::Station] == "KQ        ");
  }

  TEST_CASE("characters that part fields and frames become blanks") {
    EntryForm test;
    test.connect_socket();
    test.open(0);
    test.box(1).text = "A\2B\3C\4\4D\5\5E\r\nF";
    test.save();
    CHECK(test.shown(0, 1).caption == "A B C  D  E  F");
    CHECK(test.platform.winsock1.take_writes() ==
          Texts{frame(0, 1, 0, fields_text(test.console.program.ClientId, {"A B C  D  E  F"}))});
  }

  TEST_CASE("over the remote objects the property of the line is written, which counts from 1") {
    EntryForm test;
    test.connect_remote();
    test.console.caller_data.OperatorName = "Jo";
    test.console.program.GroupNumber = 3;
    // The remote objects go before the socket.
    test.connect_socket();
    test.open(4);
    test.type(1, "Ann");
    test.save();
    const auto calls = test.platform.remote_objects.take_calls();
    REQUIRE(calls.size() == 1);
    CHECK(calls[0].member == "CallerDataServer");
    REQUIRE(calls[0].arguments.size() == 3);
    CHECK(std::get<std::int64_t>(calls[0].arguments[0]) == 5);
    CHECK(std::get<std::int64_t>(calls[0].arguments[1]) == 3);
    CHECK(std::get<std::string>(calls[0].arguments[2]) == fields_text("Jo", {"Ann"}));
    CHECK(test.platform.winsock1.take_writes().empty());
  }

  TEST_CASE("clearing a line's data is the empty text on both roads") {
    EntryForm test;
    test.console.caller_data.tell_data_cleared(4);
    test.connect_socket();
    test.console.caller_data.tell_data_cleared(4);
    CHECK(test.platform.winsock1.take_writes() == Texts{frame(4, 1, 0, "")});
    test.connect_remote();
    test.console.caller_data.tell_data_cleared(4);
    const auto calls = test.platform.remote_objects.take_calls();
    REQUIRE(calls.size() == 1);
    CHECK(std::get<std::int64_t>(calls[0].arguments[0]) == 5);
    CHECK(std::get<std::string>(calls[0].arguments[2]) == "");
  }

  TEST_CASE(
      "without a connection it says so, and the row and the record are changed all the same") {
    EntryForm test;
    test.console.Lineweir.WinsockMenu.checked = true;
    test.open(2);
    test.type(1, "Ann");
    test.save();
    CHECK(test.take_messages() == Texts{"Lineweir is not currently connected to a server."});
    CHECK(test.shown(2, 1).caption == "Ann");
    CHECK(test.record(2)[CallerField::CallerName] == "Ann");
    // The text waits for another try.
    CHECK(test.form().loaded());
    CHECK(test.text(1) == "Ann");
    test.connect_socket();
    test.save();
    CHECK(test.platform.winsock1.take_writes().size() == 1);
    CHECK_FALSE(test.form().loaded());
  }

  TEST_CASE("another failure is tried again and then reported, and the record stays changed") {
    EntryForm test;
    test.console.Lineweir.NetworkConnectionOption.checked = true;
    test.open(2);
    test.type(1, "Ann");
    test.save();
    CHECK(test.take_trace() ==
          Texts{"Form4_Command3D1_Click Error - The remote objects are not connected"});
    CHECK(test.record(2)[CallerField::CallerName] == "Ann");
    CHECK(test.text(1) == "Ann");
  }

  TEST_CASE("a line that the table doesn't have is reported") {
    EntryForm test;
    test.open(10);
    CHECK(test.take_trace() == Texts{"Form4_Form_Load Error - Subscript out of range"});
    test.save();
    CHECK(test.take_trace().at(0).starts_with("Form4_Command3D1_Click Error - "));
  }
}

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
    test.shown(3, 1).caption = "Anna";
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

  TEST_CASE("a form that is open while its call ends keeps its text for saving") {
    EntryForm test;
    test.box_sends("N03");
    test.open(3);
    test.type(1, "Ann");
    test.box_sends("F03");
    CHECK(test.text(1) == "Ann");
    test.save();
    CHECK(test.record(3)[CallerField::CallerName] == "Ann");
  }
}

}  // namespace
}  // namespace lineweir::test

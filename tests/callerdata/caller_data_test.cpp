#include "callerdata/caller_data.h"

#include <doctest/doctest.h>

#include <array>
#include <map>

#include "support/entry_form.h"
#include "support/server_packet.h"
#include "wire/packet_text.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

std::string fields_text(std::string_view sender, const std::vector<std::string>& fields) {
  std::string text = std::string(sender) + '\2';
  for (std::size_t i = 0; i < entry_field_count; ++i)
    text += (i < fields.size() ? fields[i] : "") + '\2';
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
    test.console.program.OperatorName = " Jo ";
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
    test.box(1).text = "\1A\2B\3C\4\4D\5\5E\r\nF";
    test.save();
    CHECK(test.shown(0, 1).caption == " A B C  D  E  F");
    CHECK(test.platform.winsock1.take_writes() ==
          Texts{frame(0, 1, 0, fields_text(test.console.program.ClientId, {"A B C  D  E  F"}))});
  }

  TEST_CASE("over the remote objects the property of the line is written, which counts from 1") {
    EntryForm test;
    test.connect_remote();
    test.console.program.OperatorName = "Jo";
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
    test.console.data_sender.tell_data_cleared("Test", 4);
    test.connect_socket();
    test.console.data_sender.tell_data_cleared("Test", 4);
    CHECK(test.platform.winsock1.take_writes() == Texts{frame(4, 1, 0, "")});
    test.connect_remote();
    test.console.data_sender.tell_data_cleared("Test", 4);
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

TEST_SUITE("callerdata/another console's data while Form4 is open") {
  // The details as another console sends them: the fields given, by entry.
  std::string from_another(const std::map<int, std::string>& fields) {
    std::vector<std::string> texts(10);
    for (const auto& [entry, text] : fields) texts[static_cast<std::size_t>(entry - 1)] = text;
    return fields_text("Tom", texts);
  }

  void arrives(EntryForm & test, int line, const std::string& data) {
    test.connect_socket();
    test.receive(line, data);
  }

  TEST_CASE("fields that weren't touched follow, and saving sends all as shown") {
    EntryForm test;
    test.shown(4, 1).caption = "Ann";
    test.open(4);
    test.type(9, "Bridge");
    test.box(9).sel_start = 3;
    arrives(test, 4, from_another({{1, "Ann Lee"}, {3, "Salem"}, {7, "KLWR"}, {8, "Female"}}));
    CHECK(test.text(1) == "Ann Lee");
    CHECK(test.text(3) == "Salem");
    CHECK(test.text(7) == "KLWR");
    CHECK(test.text(9) == "Bridge");
    CHECK(test.box(9).sel_start.get() == 3);
    CHECK(test.focused() == 9);
    // Nobody else has written a comment.
    CHECK_FALSE(test.form().NoticeLabel.visible);
    test.platform.winsock1.take_writes();
    test.save();
    CHECK(
        test.platform.winsock1.take_writes() ==
        Texts{frame(4, 1, 0,
                    fields_text(test.console.program.ClientId, {"Ann Lee", "", "Salem", "", "", "",
                                                                "KLWR", "Female", "Bridge"}))});
    for (const auto& [entry, text] : std::map<int, std::string>{
             {1, "Ann Lee"}, {3, "Salem"}, {7, "KLWR"}, {8, "Female"}, {9, "Bridge"}}) {
      CHECK(trimmed(test.record(4)[entry_field(entry).field]) == text);
      CHECK(test.shown(4, entry).caption == text);
    }
  }

  TEST_CASE("a touched field says what the other one wrote, until both are of one mind") {
    EntryForm test;
    test.open(4);
    test.type(1, "Bo");
    arrives(test, 4, from_another({{1, "Bob"}}));
    CHECK(test.text(1) == "Bo");
    CHECK(test.form().NoticeLabel.caption == "Changed elsewhere: Caller Name \"Bob\"");
    test.type(1, "b");
    CHECK_FALSE(test.form().NoticeLabel.visible);
  }

  TEST_CASE("fields that aren't in use follow too") {
    EntryForm test;
    test.use_only({1});
    test.open(4);
    test.type(1, "Ann");
    arrives(test, 4, from_another({{3, "Salem"}}));
    test.save();
    CHECK(test.record(4)[CallerField::City] == "Salem");
    CHECK(test.shown(4, 3).caption == "Salem");
  }

  TEST_CASE("data of another line, and this console's own, change nothing") {
    EntryForm test;
    test.console.program.OperatorName = "Tom";
    test.open(4);
    arrives(test, 4, from_another({{1, "Ann"}}));
    CHECK(test.text(1) == "");
    test.console.program.OperatorName = "Sue";
    arrives(test, 3, from_another({{1, "Ann"}}));
    CHECK(test.text(1) == "");
  }

  TEST_CASE("a draft follows too when its form opens again") {
    EntryForm test;
    test.open(4);
    test.type(1, "Ann");
    test.type(2, "Main St");
    test.form().close();
    arrives(test, 4, from_another({{2, "Elm St"}, {3, "Salem"}}));
    test.open(4);
    CHECK(test.text(1) == "Ann");
    CHECK(test.text(2) == "Main St");
    CHECK(test.text(3) == "Salem");
    CHECK(test.form().NoticeLabel.caption == "Changed elsewhere: Street Address \"Elm St\"");
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

#include "callerdata/caller_data.h"

#include <doctest/doctest.h>

#include <map>

#include "support/caller_data_frame.h"
#include "support/entry_form.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

TEST_SUITE("callerdata/another console's data while Form4 is open") {
  // The details as another console sends them: the fields given, by entry.
  std::string from_another(const std::map<int, std::string>& fields) {
    CallerDetails data;
    data.sender = "Tom";
    for (const auto& [entry, text] : fields)
      data.fields[static_cast<std::size_t>(entry - 1)] = text;
    return encode_caller_data(data);
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
    CHECK(test.platform.winsock1.take_writes() ==
          Texts{data_frame(
              4, 1, 0,
              fields_text(test.console.program.ClientId,
                          {"Ann Lee", "", "Salem", "", "", "", "KLWR", "Female", "Bridge"}))});
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

}  // namespace
}  // namespace lineweir::test

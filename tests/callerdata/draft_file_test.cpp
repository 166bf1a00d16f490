#include "callerdata/draft_file.h"

#include <doctest/doctest.h>

#include "forms/call_log_columns.h"
#include "letters/code_page_letters.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

const CodePageLetters letters;

EntryDraft draft_of(int line, const std::string& file, const std::string& value,
                    const EntryTexts& had, const EntryTexts& typed) {
  platform::LoggedCall call{file, std::string(call_log_table), {}, {}};
  for (const CallLogColumn& column : call_log_columns) {
    call.columns.push_back({std::string(column.name), value});
  }
  return {0, line, {had, typed}, EndedCall{0, call}};
}

TEST_SUITE("callerdata/draft file") {
  TEST_CASE("what was written is read again") {
    const std::vector<EntryDraft> drafts = {
        draft_of(0, "", "", {}, {"Ann"}),
        draft_of(19, "calls, \"new\".lwl", "1/5/2026", {"\xC4nne", "a,b"}, {"", "line\r\nend"})};
    CHECK(drafts_of_files(letters, {draft_file_text(letters, drafts)}) == drafts);
    CHECK(draft_file_text(letters, {}) == "");
    // One whose call may be on its line still.
    std::vector<EntryDraft> seen = {drafts.front()};
    seen.front().ended->last_seen = LastSeen{17, {2026, 12, 31, 23, 59, 58}, "a.example, b\xE4"};
    CHECK(drafts_of_files(letters, {draft_file_text(letters, seen)}) == seen);
    // One whose record isn't logged yet.
    std::vector<EntryDraft> unlogged = {drafts.back()};
    unlogged.front().unlogged = true;
    CHECK(drafts_of_files(letters, {draft_file_text(letters, unlogged)}) == unlogged);
    // One whose row is to be brought up to date.
    platform::LoggedCall& record = unlogged.front().ended->record;
    record.replaced = record.columns;
    record.replaced.front().value = "Anne";
    CHECK(drafts_of_files(letters, {draft_file_text(letters, unlogged)}) == unlogged);
  }

  TEST_CASE("what has no log to go to doesn't wait for one") {
    EntryDraft draft = draft_of(0, "", "x", {}, {"Ann"});
    draft.unlogged = true;
    const auto read = drafts_of_files(letters, {draft_file_text(letters, {draft})});
    CHECK_FALSE(read.at(0).unlogged);
  }

  TEST_CASE("any texts come back") {
    check_property([](const std::string& name, const std::string& comments) {
      EntryTexts typed;
      typed[0] = name;
      typed[8] = comments;
      const std::vector<EntryDraft> drafts = {draft_of(3, "log", "", {}, typed)};
      RC_ASSERT(drafts_of_files(letters, {draft_file_text(letters, drafts)}) == drafts);
    });
  }

  TEST_CASE("what files were holding while they were brought together is there once") {
    const auto draft = [](int line, const std::string& name) {
      return draft_of(line, "log", "", {}, {name});
    };
    const EntryDraft ann = draft(2, "Ann");
    const EntryDraft bob = draft(3, "Bob");
    const auto both = draft_file_text(letters, {ann, ann, bob});
    CHECK(drafts_of_files(letters, {both, draft_file_text(letters, {bob})}) ==
          std::vector<EntryDraft>{ann, ann, bob});
    CHECK(drafts_of_files(letters, {draft_file_text(letters, {ann}), both}) ==
          std::vector<EntryDraft>{ann, ann, bob});
    CHECK(drafts_of_files(letters, {draft_file_text(letters, {bob}),
                                    draft_file_text(letters, {draft(2, "Bob")})})
              .size() == 2);
    CHECK(drafts_of_files(letters, {}).empty());
  }

  TEST_CASE("a file of a release with other fields keeps what both know") {
    EntryTexts typed;
    typed[0] = "Ann";
    std::string text = draft_file_text(letters, {draft_of(2, "log", "", {}, typed)});
    // A field more at the front, as of a later release; one less at the end, as of an earlier one.
    std::string other;
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = text.find("\r\n", begin);
      const std::string line = text.substr(begin, end - begin);
      other += (begin == 0 ? "Further," : "more,") + line.substr(0, line.rfind(',')) + "\r\n";
      begin = end + 2;
    }
    const auto drafts = drafts_of_files(letters, {other});
    REQUIRE(drafts.size() == 1);
    CHECK(drafts.front().line == 2);
    CHECK(drafts.front().work.typed[0] == "Ann");
  }

  TEST_CASE("what is no draft is passed over") {
    const std::string sound = draft_file_text(letters, {draft_of(4, "", "", {}, {"Ann"})});
    for (const char* broken : {"1,2,3\r\n", "\"", "0", "-1,x\r\n", "\0\x01\xff"}) {
      CAPTURE(broken);
      CHECK(drafts_of_files(letters, {broken}).empty());
      CHECK(drafts_of_files(letters, {std::string(broken) + "\r\n" + sound}).size() <= 1);
    }
    CHECK(drafts_of_files(letters, {sound + "1,2\r\n"}).size() == 1);
    // Cut anywhere, as after a loss of power.
    for (std::size_t end = 0; end < sound.size(); ++end) {
      CHECK(drafts_of_files(letters, {sound.substr(0, end)}).size() <= 1);
    }
  }

  TEST_CASE("a draft whose line is no number is none") {
    const std::string sound = draft_file_text(letters, {draft_of(4, "", "", {}, {"Ann"})});
    const std::size_t place = sound.find("\r\n5,") + 2;
    for (const char* number : {"5x", "x5", "0", "-5", "99999999999", "", "5 "}) {
      CAPTURE(number);
      std::string other = sound;
      other.replace(place, 1, number);
      CHECK(drafts_of_files(letters, {other}).empty());
    }
    std::string other = sound;
    other.replace(place, 1, "1");
    CHECK(drafts_of_files(letters, {other}).at(0).line == 0);
  }

  TEST_CASE("when and where a call was last seen is known whole or not at all") {
    std::vector<EntryDraft> drafts = {draft_of(0, "", "", {}, {"Ann"})};
    drafts.front().ended->last_seen = LastSeen{17, {2026, 12, 31, 23, 59, 58}};
    const std::string sound = draft_file_text(letters, drafts);
    const auto with = [&](const std::string& from, const std::string& to) {
      std::string text = sound;
      text.replace(text.find(from), from.size(), to);
      const auto read = drafts_of_files(letters, {text});
      REQUIRE(read.size() == 1);
      return read.front().ended->last_seen.has_value();
    };
    CHECK(with("17", "17"));
    CHECK(with(",17,", ",1,"));
    CHECK_FALSE(with(",17,", ",0,"));
    CHECK_FALSE(with(",17,", ",,"));
    CHECK_FALSE(with("12/31/2026", "soon"));
    CHECK_FALSE(with("11:59:58 PM", "late"));
  }
}

}  // namespace
}  // namespace lineweir::test

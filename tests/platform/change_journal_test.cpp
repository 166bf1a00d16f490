#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>
#include <rapidcheck.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "platform/change_journal/change_code.h"
#include "platform/change_journal/disk_store_journal.h"
#include "platform/change_journal/journal_pieces.h"
#include "platform/temporary_directory.h"
#include "support/property_check.h"

namespace lineweir::platform {
namespace {

using Changes = std::vector<StoreChange>;

rc::Gen<std::string> any_text() { return rc::gen::arbitrary<std::string>(); }
rc::Gen<Moment> any_moment() {
  return rc::gen::map(rc::gen::arbitrary<std::int64_t>(), [](auto count) { return Moment(count); });
}

Account any_account() {
  return {*any_text(),
          *any_text(),
          *rc::gen::container<std::map<int, std::string>>(rc::gen::arbitrary<int>(), any_text()),
          *any_text(),
          *rc::gen::arbitrary<bool>(),
          *any_moment()};
}

CallRecord any_call() {
  CallRecord call;
  call.id = *rc::gen::arbitrary<std::int64_t>();
  call.group = *rc::gen::arbitrary<int>();
  call.line = *rc::gen::arbitrary<int>();
  call.number = *any_text();
  call.began = *any_moment();
  call.answered = *any_moment();
  call.aired = *any_moment();
  call.ended = *any_moment();
  call.told_by = *any_text();
  for (std::string& text : call.told) text = *any_text();
  for (int steps = *rc::gen::inRange(0, 5); steps > 0; --steps) {
    call.steps.push_back({*any_moment(), *any_text(), *any_text()});
  }
  return call;
}

StoreChange any_flagged() {
  return FlaggedCaller{.key = *any_text(),
                       .number = *any_text(),
                       .flag = static_cast<CallerFlag>(*rc::gen::inRange(0, 4)),
                       .reason = *any_text(),
                       .until = *any_text(),
                       .by = *any_text(),
                       .at = *any_moment()};
}

StoreChange any_change() {
  switch (*rc::gen::inRange(0, 12)) {
    case 5:
      return AccountSeen{*any_text(), *any_moment()};
    case 6:
      return AccountProfile{*any_text(), *any_text()};
    case 7:
      return any_flagged();
    case 8:
      return StudioPlace{*rc::gen::arbitrary<int>(), *any_text(), *any_text()};
    case 9:
      return AccountPassword{*any_text(), *any_text()};
    case 10:
      return AccountLock{*any_text(), *rc::gen::arbitrary<bool>()};
    case 11:
      return AccountRights{*any_text(), *rc::gen::arbitrary<int>(), *any_text()};
    case 0:
      return any_account();
    case 1:
      return AccountRemoval{*any_text()};
    case 2:
      return any_call();
    case 3:
      return GroupMemory{*rc::gen::arbitrary<int>(),
                         *rc::gen::arbitrary<int>(),
                         *any_text(),
                         {*any_text(), *any_text(), *any_text()}};
    default:
      return AuditEvent{*any_text(), *any_moment(), *any_text(), *any_text(), *any_text()};
  }
}

// The loop's thread in a test: what is posted is kept.
struct KeptPoster final : Poster {
  void post(std::function<void()> call) override {
    const std::lock_guard lock(guard);
    calls.push_back(std::move(call));
  }
  std::mutex guard;
  std::vector<std::function<void()>> calls;
};

struct JournalDesk {
  TemporaryDirectory folder;
  std::filesystem::path file = folder.path() / "server.journal";
  KeptPoster poster;

  // As of the next process.
  StoreJournal::Left left() { return DiskStoreJournal(file, poster).left(); }
  bool is_told_of_trouble() {
    for (int waits = 0; waits < 500; ++waits) {
      {
        const std::lock_guard lock(poster.guard);
        if (!poster.calls.empty()) return true;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
  }
  std::string bytes() const {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void set_bytes(const std::string& bytes) const { std::ofstream(file, std::ios::binary) << bytes; }
};

AuditEvent event(int number) { return {std::to_string(number), Moment{7}, {}, "login", "\xff"}; }

}  // namespace

TEST_CASE("a change becomes bytes and itself again, whatever its texts and numbers") {
  test::check_property([] {
    const StoreChange change = any_change();
    RC_ASSERT(decoded(encoded(change)) == change);
  });
}

TEST_CASE("a journal that an earlier version has written is read") {
  const std::string lock = "\x83\x64lock\x63\x61nn\xf5";
  CHECK(encoded(AccountLock{"ann", true}) == lock);
  CHECK(decoded(lock) == StoreChange(AccountLock{"ann", true}));
  CallRecord call;
  call.id = 300;
  call.group = 2;
  call.line = 9;
  call.number = "212";
  call.began = Moment(1);
  call.steps = {{Moment(4), "u", "air"}};
  const std::string call_bytes =
      std::string("\x8c\x64\x63\x61ll\x19\x01\x2c\x02\x09\x63\x32\x31\x32\x01") +
      std::string(3, '\0') + "\x60" + static_cast<char>(0x80 + told_field_count) +
      std::string(told_field_count, '\x60') + "\x81\x83\x04\x61u\x63\x61ir";
  CHECK(encoded(call) == call_bytes);
  CHECK(decoded(call_bytes) == StoreChange(call));
}

TEST_CASE("bytes that are no change are none") {
  CHECK_FALSE(decoded(""));
  CHECK_FALSE(decoded("event"));
  test::check_property([] { decoded(*any_text()); });
  test::check_property([] {
    std::string bytes = encoded(any_change());
    const auto place = *rc::gen::inRange<std::size_t>(0, bytes.size());
    bytes[place] = *rc::gen::arbitrary<char>();
    // It may be another change; it must not be taken for what it isn't.
    if (const auto change = decoded(bytes)) RC_ASSERT(decoded(encoded(*change)) == *change);
    RC_ASSERT_FALSE(decoded(bytes + "x").has_value());
    RC_ASSERT_FALSE(decoded(std::string_view(bytes).substr(0, bytes.size() - 1)).has_value());
  });
}

TEST_CASE("pieces come back up to the first that isn't whole") {
  test::check_property([] {
    const auto contents = *rc::gen::container<std::vector<std::string>>(any_text());
    std::string bytes;
    for (const std::string& content : contents) append_piece(bytes, content);
    const auto cut = *rc::gen::inRange<std::size_t>(0, bytes.size() + 1);
    const auto pieces = whole_pieces(std::string_view(bytes).substr(0, cut));
    RC_ASSERT(pieces.size() <= contents.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) RC_ASSERT(pieces[i] == contents[i]);
    RC_ASSERT(cut < bytes.size() || pieces.size() == contents.size());
  });
  test::check_property([] { whole_pieces(*any_text()); });
}

TEST_CASE("what was appended is there for the next process, and gone when it was cleared") {
  JournalDesk desk;
  CHECK(desk.left().changes.empty());
  { DiskStoreJournal(desk.file, desk.poster).clear(); }
  CHECK_FALSE(std::filesystem::exists(desk.file));
  {
    DiskStoreJournal journal(desk.file, desk.poster);
    journal.append(3, {event(1), event(2)});
    journal.append(3, {event(3)});
  }
  CHECK(desk.left().epoch == 3);
  CHECK(desk.left().changes == Changes{event(1), event(2), event(3)});
  struct stat found {};
  REQUIRE(::stat(desk.file.c_str(), &found) == 0);
  CHECK((found.st_mode & 0777) == 0600);
  {
    DiskStoreJournal journal(desk.file, desk.poster);
    journal.clear();
    journal.append(4, {event(5)});
  }
  CHECK(desk.left().epoch == 4);
  CHECK(desk.left().changes == Changes{event(5)});
  { DiskStoreJournal(desk.file, desk.poster).clear(); }
  CHECK(desk.left().changes.empty());
  CHECK(desk.bytes().empty());
}

TEST_CASE("a file that was cut or changed gives what is whole before that") {
  JournalDesk desk;
  { DiskStoreJournal(desk.file, desk.poster).append(3, {event(1), event(2)}); }
  const std::string whole = desk.bytes();
  desk.set_bytes(whole.substr(0, whole.size() - 1));
  CHECK(desk.left().changes == Changes{event(1)});
  std::string changed = whole;
  changed.back() = static_cast<char>(changed.back() ^ 1);
  desk.set_bytes(changed);
  CHECK(desk.left().changes == Changes{event(1)});
  desk.set_bytes("something else, from the beginning on");
  CHECK(desk.left().changes.empty());
}

TEST_CASE("what there was no room for comes behind what was kept, once there is room again") {
  JournalDesk desk;
  ::signal(SIGXFSZ, SIG_IGN);
  rlimit unbounded{};
  REQUIRE(::getrlimit(RLIMIT_FSIZE, &unbounded) == 0);
  DiskStoreJournal journal(desk.file, desk.poster);
  const auto comes = [&](bool kept) {
    for (int waits = 0; waits < 500 && journal.has_kept_all() != kept; ++waits) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return journal.has_kept_all() == kept;
  };
  CHECK(journal.has_kept_all());
  journal.append(3, {event(1)});
  REQUIRE(comes(true));
  // Half of the next piece has room.
  rlimit full = unbounded;
  full.rlim_cur = desk.bytes().size() + 9;
  REQUIRE(::setrlimit(RLIMIT_FSIZE, &full) == 0);
  journal.append(3, {event(2)});
  journal.append(3, {event(3)});
  CHECK(desk.is_told_of_trouble());
  CHECK_FALSE(journal.has_kept_all());
  ::setrlimit(RLIMIT_FSIZE, &unbounded);
  SUBCASE("by itself") { CHECK(comes(true)); }
  SUBCASE("with what is appended then") {
    journal.append(3, {event(4)});
    CHECK(comes(true));
    CHECK(desk.left().changes == Changes{event(1), event(2), event(3), event(4)});
  }
  CHECK(desk.left().epoch == 3);
  const Changes left = desk.left().changes;
  REQUIRE(left.size() >= 3);
  CHECK(Changes(left.begin(), left.begin() + 3) == Changes{event(1), event(2), event(3)});
  journal.clear();
  journal.append(4, {event(5)});
  CHECK(comes(true));
  CHECK(desk.left().changes == Changes{event(5)});
}

TEST_CASE("what is appended behind a piece that isn't whole takes its place") {
  JournalDesk desk;
  { DiskStoreJournal(desk.file, desk.poster).append(3, {event(1), event(2)}); }
  const std::string whole = desk.bytes();
  desk.set_bytes(whole.substr(0, whole.size() - 1));
  { DiskStoreJournal(desk.file, desk.poster).append(3, {event(3)}); }
  CHECK(desk.left().changes == Changes{event(1), event(3)});
}

TEST_CASE("a journal that can't be written is told of once, and the rest goes on") {
  JournalDesk desk;
  desk.file = desk.folder.path() / "missing" / "server.journal";
  std::vector<std::string> troubles;
  DiskStoreJournal journal(desk.file, desk.poster);
  journal.on_trouble = [&](const std::string& trouble) { troubles.push_back(trouble); };
  for (int i = 0; i < 3; ++i) journal.append(1, {event(i)});
  CHECK(desk.is_told_of_trouble());
  const std::lock_guard lock(desk.poster.guard);
  for (const auto& call : desk.poster.calls) call();
  REQUIRE(troubles.size() == 1);
  CHECK(troubles[0].find("No such file or directory") != std::string::npos);
}

}  // namespace lineweir::platform

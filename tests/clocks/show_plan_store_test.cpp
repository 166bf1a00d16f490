#include "clocks/show_plan_store.h"

#include <doctest/doctest.h>

#include <set>

#include "clocks/plan_builder.h"
#include "platform/scripted/memory_files.h"
#include "support/failure_number.h"

namespace lineweir::test {
namespace {

// Files among which some can't be read or written.
class StubbornFiles final : public platform::Files {
 public:
  std::optional<std::string> read(const std::string& path) const override {
    return unreadable.contains(path) ? std::nullopt : files.read(path);
  }
  std::optional<std::string> read_short(const std::string& path,
                                        std::size_t longest) const override {
    return unreadable.contains(path) ? std::nullopt : files.read_short(path, longest);
  }
  std::optional<std::string> why_unreadable(const std::string& path) const override {
    return unreadable.contains(path) ? std::optional("Can't read it") : std::nullopt;
  }
  void replace(const std::string& path, std::string_view content) override {
    refuse_if_unwritable(path);
    files.replace(path, content);
  }
  void append(const std::string& path, std::string_view content) override {
    refuse_if_unwritable(path);
    files.append(path, content);
  }
  bool exists(const std::string& path) const override { return files.exists(path); }
  std::string current_directory() const override { return files.current_directory(); }
  std::unique_ptr<platform::ConsoleFile> console_file(const std::string& name) override {
    return files.console_file(name);
  }

  platform::MemoryFiles files;
  std::set<std::string> unreadable;
  std::set<std::string> unwritable;

 private:
  void refuse_if_unwritable(const std::string& path) const {
    if (unwritable.contains(path)) throw Failure(failure_number::file_access, "Can't write it");
  }
};

struct Store {
  StubbornFiles files;
  ShowPlanStore store{files};
};

ShowPlan morning() { return plan_of("06:00:00", "09:00:00", {{"06:30:00", "News"}}); }
ShowPlan evening() { return plan_of("19:00:00", "20:00:00", {{"19:30:00", "Music"}}); }

TEST_SUITE("clocks/show plan store") {
  TEST_CASE("loading reads all 42 records and takes the file's name") {
    Store test;
    test.files.replace("morning.txt", encode_show_plan(morning()));
    test.store.plan = evening();
    test.store.load_plan("morning.txt");
    CHECK(test.store.plan == morning());
    CHECK(test.store.TheDataFileName == "morning.txt");
    CHECK(test.store.is_open());
  }

  TEST_CASE("a short file blanks the entries that it doesn't hold") {
    Store test;
    test.files.replace("short.txt", encode_show_plan(morning()).substr(0, 62));
    test.store.plan = evening();
    test.store.load_plan("short.txt");
    CHECK(test.store.plan == plan_of("06:00:00", "09:00:00"));
  }

  TEST_CASE("a name without a file makes an empty one") {
    Store test;
    test.store.load_plan("new.txt");
    CHECK(test.files.read("new.txt") == "");
    CHECK(test.store.plan == ShowPlan{});
  }

  TEST_CASE("the default file is NoName.txt, shown as NoName.TXT") {
    Store test;
    test.files.replace("NoName.txt", encode_show_plan(morning()));
    test.store.load_default_plan();
    CHECK(test.store.plan == morning());
    CHECK(test.store.TheDataFileName == "NoName.TXT");
    test.store.save_plan(evening());
    CHECK(test.store.plan == evening());
    CHECK(test.files.read("NoName.txt") == encode_show_plan(evening()));
    CHECK_FALSE(test.files.exists("NoName.TXT"));
  }

  TEST_CASE("while the default plan serves for another one, that one's path is kept") {
    Store test;
    test.store.load_default_plan_for("MORNING.TXT");
    CHECK(test.store.TheDataFileName == "NoName.TXT");
    CHECK(test.store.path_to_store() == "MORNING.TXT");
    test.store.save_plan(evening());
    CHECK_FALSE(test.files.exists("MORNING.TXT"));
    test.store.load_plan("evening.txt");
    CHECK(test.store.path_to_store() == "evening.txt");
  }

  TEST_CASE("a file that can't be made leaves plan and open file as they were") {
    Store test;
    test.store.load_plan("old.txt");
    test.store.plan = morning();
    test.files.unwritable = {"nowhere/new.txt"};
    CHECK(failure_number_of([&] { test.store.load_plan("nowhere/new.txt"); }) ==
          failure_number::path_not_found);
    CHECK(test.store.plan == morning());
    CHECK(test.store.TheDataFileName == "old.txt");
  }

  TEST_CASE("a file that can't be read leaves plan and open file as they were") {
    Store test;
    test.store.load_plan("old.txt");
    test.store.plan = morning();
    test.files.replace("locked.txt", "");
    test.files.unreadable = {"locked.txt"};
    CHECK(failure_number_of([&] { test.store.load_plan("locked.txt"); }) ==
          failure_number::file_access);
    CHECK(test.store.plan == morning());
    CHECK(test.store.TheDataFileName == "old.txt");
  }

  TEST_CASE("a new plan is 42 blank records, in memory and in the file") {
    Store test;
    test.store.load_plan("old.txt");
    test.store.plan = morning();
    test.store.new_plan("new.txt");
    CHECK(test.files.read("new.txt") == std::string(1302, ' '));
    CHECK(test.store.plan == ShowPlan{});
    CHECK(test.store.TheDataFileName == "new.txt");
  }

  TEST_CASE("a new plan whose file can't be written changes nothing") {
    Store test;
    test.store.load_plan("old.txt");
    test.store.plan = morning();
    test.files.unwritable = {"new.txt"};
    CHECK(failure_number_of([&] { test.store.new_plan("new.txt"); }) ==
          failure_number::file_access);
    CHECK(test.store.plan == morning());
    CHECK(test.store.TheDataFileName == "old.txt");
  }

  TEST_CASE("saving replaces the file as a whole") {
    Store test;
    test.files.replace("show.txt", std::string(5000, 'z'));
    test.store.load_plan("show.txt");
    test.store.save_plan(morning());
    CHECK(test.files.read("show.txt") == encode_show_plan(morning()));
  }

  TEST_CASE("a plan that can't be saved leaves plan and open file as they were") {
    Store test;
    test.store.load_plan("old.txt");
    test.store.save_plan(morning());
    test.files.unwritable = {"old.txt", "new.txt"};
    CHECK(failure_number_of([&] { test.store.save_plan(evening()); }) ==
          failure_number::file_access);
    CHECK(failure_number_of([&] { test.store.save_plan_as("new.txt", evening()); }) ==
          failure_number::file_access);
    CHECK(test.store.plan == morning());
    CHECK(test.store.TheDataFileName == "old.txt");
    CHECK(test.files.read("old.txt") == encode_show_plan(morning()));
  }

  TEST_CASE("unsaved changes are undone as a whole, saved ones stay") {
    Store test;
    test.store.load_plan("show.txt");
    test.store.save_plan(morning());
    ShowPlan noon = morning();
    noon.ShowTimes(3) = "12:00:00";
    test.store.change_unsaved(noon);
    CHECK(test.store.plan == noon);
    test.store.change_unsaved(evening());
    test.store.undo_unsaved();
    CHECK(test.store.plan == morning());
    test.store.undo_unsaved();
    CHECK(test.store.plan == morning());

    test.store.change_unsaved(noon);
    test.store.save_plan(evening());
    test.store.undo_unsaved();
    CHECK(test.store.plan == evening());
    test.store.change_unsaved(noon);
    test.store.save_plan_as("other.txt", evening());
    test.store.undo_unsaved();
    CHECK(test.store.plan == evening());
    // Another plan was opened behind the editor's back.
    test.store.change_unsaved(noon);
    test.store.load_plan("show.txt");
    test.store.undo_unsaved();
    CHECK(test.store.plan == evening());
  }

  TEST_CASE("what another console saved meanwhile is seen once unsaved changes are undone") {
    Store test;
    test.store.load_plan("show.txt");
    test.store.save_plan(morning());
    ShowPlan changed = morning();
    changed.ShowTimes(3) = "12:00:00";
    test.store.change_unsaved(changed);
    ShowPlan by_another = morning();
    by_another.ShowTimes(2) = "09:30:00";
    test.files.replace("show.txt", encode_show_plan(by_another));
    test.store.read_first_34();
    CHECK(test.store.plan == changed);
    test.store.undo_unsaved();
    CHECK(test.store.plan == by_another);
  }

  TEST_CASE("saving under another name opens that file, and the old one stays") {
    Store test;
    test.store.save_plan_as("a.txt", morning());
    test.store.save_plan_as("b.txt", evening());
    CHECK(test.store.plan == evening());
    CHECK(test.files.read("a.txt") == encode_show_plan(morning()));
    CHECK(test.files.read("b.txt") == encode_show_plan(evening()));
    CHECK(test.store.TheDataFileName == "b.txt");
  }

  TEST_CASE("nothing is saved while no file is open") {
    Store test;
    CHECK(failure_number_of([&] { test.store.save_plan(morning()); }) ==
          failure_number::file_access);
    test.store.load_plan("show.txt");
    test.store.close();
    CHECK_FALSE(test.store.is_open());
    CHECK(failure_number_of([&] { test.store.save_plan(morning()); }) ==
          failure_number::file_access);
  }

  TEST_CASE("rereading sees the first 34 times that another console saved, and nothing else") {
    Store test;
    test.store.load_plan("show.txt");
    ShowPlan saved;
    for (int entry = 1; entry <= show_entry_count; ++entry) {
      saved.ShowTimes(entry) = "12:00:00";
      saved.ShowTexts(entry) = "Saved";
      test.store.plan.ShowTimes(entry) = "11:00:00";
      test.store.plan.ShowTexts(entry) = "Kept";
    }
    test.files.replace("show.txt", encode_show_plan(saved));
    test.store.read_first_34();
    CHECK(test.store.plan.ShowTimes(1).trimmed() == "12:00:00");
    CHECK(test.store.plan.ShowTimes(34).trimmed() == "12:00:00");
    CHECK(test.store.plan.ShowTimes(35).trimmed() == "11:00:00");
    CHECK(test.store.plan.ShowTexts(5).trimmed() == "Kept");
  }

  TEST_CASE("rereading a short, missing or unreadable file leaves the rest as it was") {
    Store test;
    test.store.load_plan("show.txt");
    test.store.plan = morning();
    test.files.replace("show.txt", "07:00:00");
    test.store.read_first_34();
    CHECK(test.store.plan.ShowTimes(1).trimmed() == "07:00:00");
    CHECK(test.store.plan.ShowTimes(2).trimmed() == "09:00:00");
    test.files.unreadable = {"show.txt"};
    test.files.replace("show.txt", encode_show_plan(evening()));
    test.store.read_first_34();
    CHECK(test.store.plan.ShowTimes(1).trimmed() == "07:00:00");
    test.store.close();
    test.store.read_first_34();
    CHECK(test.store.plan.ShowTimes(1).trimmed() == "07:00:00");
  }
}

}  // namespace
}  // namespace lineweir::test

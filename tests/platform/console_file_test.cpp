// The files that several consoles keep in one folder, each its own.

#include "platform/console_file.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "base/failure.h"
#include "other_process.h"
#include "platform/disk/disk_files.h"
#include "temporary_directory.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace lineweir::test;

namespace {

using Texts = std::vector<std::string>;

struct Folder {
  TemporaryDirectory directory;
  DiskFiles files{directory.path()};

  std::unique_ptr<ConsoleFile> console() { return files.console_file("Drafts.csv"); }
  std::unique_ptr<ConsoleFile> console(const std::string& content) {
    auto file = console();
    file->replace(content);
    return file;
  }
  std::string content(const std::string& name) const { return files.read(name).value_or("none"); }
  Texts names() const {
    Texts found;
    for (const auto& entry : std::filesystem::directory_iterator(directory.path())) {
      found.push_back(entry.path().filename().string());
    }
    std::ranges::sort(found);
    return found;
  }
};

}  // namespace

TEST_CASE("The files of consoles are numbered from the second on") {
  CHECK(console_file_name("Drafts.csv", 1) == "Drafts.csv");
  CHECK(console_file_name("Drafts.csv", 12) == "Drafts-12.csv");
  CHECK(console_file_name("Drafts", 2) == "Drafts-2");
}

TEST_CASE_FIXTURE(Folder,
                  "Each console writes a file of its own, and what it replaces is replaced") {
  const auto first = console("one");
  const auto second = console("two");
  first->replace("one and more");
  second->replace("two and more");
  CHECK(names() == Texts{"Drafts-2.csv", "Drafts.csv"});
  CHECK(content("Drafts.csv") == "one and more");
  CHECK(content("Drafts-2.csv") == "two and more");
  first->replace("");
  CHECK(names() == Texts{"Drafts-2.csv"});
  first->replace("one again");
  CHECK(content("Drafts.csv") == "one again");
}

TEST_CASE_FIXTURE(Folder, "What is left goes to one console, which brings it together") {
  console("one").reset();
  const auto running = console();
  // Nobody has taken over what is left, so that it isn't overwritten.
  running->replace("two");
  CHECK(content("Drafts.csv") == "one");
  console("three").reset();
  const auto heir = console();
  const auto late = console();
  CHECK(heir->take_over() == Texts{"one", "three"});
  CHECK(late->take_over().empty());
  late->replace("four");
  CHECK(names() == Texts{"Drafts-2.csv", "Drafts-3.csv", "Drafts-4.csv", "Drafts.csv"});
  heir->replace("one, three");
  CHECK(names() == Texts{"Drafts-2.csv", "Drafts-4.csv", "Drafts.csv"});
  CHECK(content("Drafts.csv") == "one, three");
  CHECK(content("Drafts-2.csv") == "two");
  heir->replace("");
  CHECK(names() == Texts{"Drafts-2.csv", "Drafts-4.csv"});
}

TEST_CASE_FIXTURE(Folder, "What was taken over and not replaced is there for the next start") {
  console("one").reset();
  const auto running = console();
  running->replace("two");
  CHECK(console()->take_over() == Texts{"one"});
  CHECK(console()->take_over() == Texts{"one"});
}

TEST_CASE_FIXTURE(Folder,
                  "A file that somebody deletes is made again, and not in another's place") {
  const auto first = console("one");
  std::filesystem::remove(directory.path() / "Drafts.csv");
  const auto second = console("two");
  first->replace("one and more");
  CHECK(content("Drafts.csv") == "two");
  CHECK(content("Drafts-2.csv") == "one and more");
}

TEST_CASE_FIXTURE(Folder, "A file that can't be written is a failure, and keeps what it had") {
  const auto file = console("one");
  const auto elsewhere = directory.path().string() + ".away";
  std::filesystem::rename(directory.path(), elsewhere);
  int number = 0;
  try {
    file->replace("two");
  } catch (const Failure& failure) {
    number = failure.number();
  }
  CHECK(number == failure_number::file_access);
  std::filesystem::rename(elsewhere, directory.path());
  CHECK(content("Drafts.csv") == "one");
  file->replace("two");
  CHECK(names() == Texts{"Drafts.csv"});
  CHECK(content("Drafts.csv") == "two");
}

TEST_CASE_FIXTURE(Folder, "Consoles that start at the same moment share out what is left") {
  constexpr int left = 6;
  for (int round = 0; round < 20; ++round) {
    {
      std::vector<std::unique_ptr<ConsoleFile>> consoles;
      for (int i = 0; i < left; ++i)
        consoles.push_back(console(std::string(static_cast<std::size_t>(1 + i), 'x')));
    }
    const auto start = [&](const OtherProcess::Tell& tell, const std::function<void()>& await) {
      const auto file = console();
      tell(0);
      await();
      for (const std::string& content : file->take_over()) tell(static_cast<int>(content.size()));
      tell(0);
      await();
    };
    OtherProcess one(start);
    OtherProcess two(start);
    CHECK(one.next() == 0);
    CHECK(two.next() == 0);
    one.go_on();
    two.go_on();
    std::vector<int> taken;
    for (const OtherProcess* process : {&one, &two}) {
      for (int size = process->next(); size > 0; size = process->next()) taken.push_back(size);
    }
    std::ranges::sort(taken);
    CHECK(taken == std::vector<int>{1, 2, 3, 4, 5, 6});
    one.go_on();
    two.go_on();
    one.wait();
    two.wait();
    const auto last = console();
    last->take_over();
    last->replace("");
    CHECK(names().empty());
  }
}

TEST_CASE_FIXTURE(Folder,
                  "Killed at any moment of its writing, a console leaves one whole content") {
  std::mt19937 random(1);
  int unfinished = 0;
  for (int life = 0; life < 40; ++life) {
    OtherProcess process([&](const OtherProcess::Tell& tell, const std::function<void()>&) {
      const auto file = console();
      file->take_over();
      for (int i = 0; i < 2000; ++i) {
        file->replace(
            std::string(1000 + static_cast<std::size_t>(i), static_cast<char>('a' + i % 26)));
        if (i == 0) tell(0);
      }
    });
    CHECK(process.next() == 0);
    ::usleep(static_cast<useconds_t>(random() % 20000));
    process.kill();
    unfinished += WIFSIGNALED(process.wait()) ? 1 : 0;
    const Texts contents = console()->take_over();
    REQUIRE(contents.size() == 1);
    CHECK(contents[0].size() >= 1000);
    CHECK(contents[0].find_first_not_of(contents[0].front()) == std::string::npos);
  }
  CHECK(unfinished > 0);
}

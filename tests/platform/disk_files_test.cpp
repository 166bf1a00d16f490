#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include "platform/disk/disk_files.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <random>

#include "in_child.h"
#include "letters/code_page_letters.h"
#include "letters/path_text.h"
#include "support/failure_number.h"
#include "temporary_directory.h"

using namespace lineweir;
using lineweir::test::failure_number_of;
using lineweir::test::in_child;
using lineweir::test::in_child_without_power;
using namespace lineweir::platform;
namespace fs = std::filesystem;

namespace {

struct DiskFilesFixture {
  TemporaryDirectory directory;
  DiskFiles files{directory.path()};

  std::string content(const std::string& name) const { return directory.content(name); }

  std::vector<std::string> names() const { return directory.names(); }
};

}  // namespace

TEST_CASE_FIXTURE(DiskFilesFixture, "What is written is read back byte for byte") {
  std::string content(200000, '\0');
  for (std::size_t i = 0; i < content.size(); ++i) content[i] = static_cast<char>(i * 31);
  files.replace("Writ.inf", content);
  CHECK(files.read("Writ.inf") == content);
  CHECK(files.exists("Writ.inf"));

  files.replace("Writ.inf", "");
  CHECK(files.read("Writ.inf") == "");
  CHECK(names() == std::vector<std::string>{"Writ.inf"});
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A file that isn't there reads as nothing") {
  CHECK_FALSE(files.read("Writ.inf"));
  CHECK_FALSE(files.exists("Writ.inf"));
  CHECK_FALSE(files.read(""));
  CHECK_FALSE(files.exists(""));
}

TEST_CASE_FIXTURE(DiskFilesFixture, "Directories and pipes are no files to read") {
  fs::create_directory(directory.path() / "Shows");
  REQUIRE(::mkfifo((directory.path() / "pipe").c_str(), 0600) == 0);
  CHECK_FALSE(files.read("Shows"));
  CHECK_FALSE(files.exists("Shows"));
  CHECK_FALSE(files.read("pipe"));
  CHECK(failure_number_of([&] { files.replace("Shows", "x"); }) == 75);
  CHECK(failure_number_of([&] { files.replace("pipe", "x"); }) == 75);
  CHECK(failure_number_of([&] { files.append("pipe", "x"); }) == 75);
}

TEST_CASE_FIXTURE(DiskFilesFixture,
                  "A file is read only if it is short enough, where that is asked") {
  files.replace("plan", "12345");
  CHECK(files.read_short("plan", 5) == "12345");
  CHECK_FALSE(files.read_short("plan", 4));
  CHECK_FALSE(files.read_short("nowhere", 5));
  fs::resize_file(directory.path() / "plan", std::uintmax_t{1} << 40);
  CHECK_FALSE(files.read_short("plan", 100));
}

TEST_CASE_FIXTURE(DiskFilesFixture, "Paths are relative to the working directory or absolute") {
  fs::create_directory(directory.path() / "Shows");
  files.replace("Shows/Monday.txt", "monday");
  CHECK(content("Shows/Monday.txt") == "monday");
  CHECK(files.read((directory.path() / "Shows" / "Monday.txt").string()) == "monday");
  CHECK(files.current_directory() == directory.path().string());
  CHECK(DiskFiles(directory.path() / "").current_directory() == directory.path().string());
  CHECK(fs::path(DiskFiles("Shows").current_directory()).is_absolute());
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A name that differs only in case finds the file") {
  fs::create_directory(directory.path() / "Shows");
  files.replace("Shows/Monday.txt", "monday");
  CHECK(files.read("shows/MONDAY.TXT") == "monday");
  CHECK(files.exists("SHOWS/monday.txt"));
  std::string capitals = (directory.path() / "Shows/Monday.txt").string();
  std::ranges::transform(capitals, capitals.begin(),
                         [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  CHECK(files.read(capitals) == "monday");

  files.replace("SHOWS/MONDAY.TXT", "tuesday");
  files.append("Shows/MONDAY.txt", "!");
  CHECK(content("Shows/Monday.txt") == "tuesday!");
  files.replace("SHOWS/New.txt", "new");
  CHECK(content("Shows/New.txt") == "new");
  CHECK(names() == std::vector<std::string>{"Shows"});
}

TEST_CASE_FIXTURE(DiskFilesFixture, "Of names that differ only in case the exact one is taken") {
  std::ofstream(directory.path() / "a.txt") << "lower";
  std::ofstream(directory.path() / "A.TXT") << "upper";
  CHECK(files.read("a.txt") == "lower");
  CHECK(files.read("A.TXT") == "upper");
  CHECK(files.read("A.txt") == "upper");
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A zero character ends a path") {
  using namespace std::string_literals;
  files.replace("a\0b"s, "x");
  CHECK(names() == std::vector<std::string>{"a"});
  CHECK(files.read("a\0c"s) == "x");
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A link and the permissions survive a replacement") {
  files.replace("real.txt", "old");
  fs::permissions(directory.path() / "real.txt", fs::perms{0640});
  fs::create_symlink("real.txt", directory.path() / "link.txt");
  files.replace("link.txt", "new");
  CHECK(fs::is_symlink(directory.path() / "link.txt"));
  CHECK(content("real.txt") == "new");
  CHECK(fs::status(directory.path() / "real.txt").permissions() == fs::perms{0640});
}

TEST_CASE_FIXTURE(DiskFilesFixture, "Appending makes the file and adds to its end") {
  files.append("LWDebug.txt", "one\r\n");
  files.append("LWDebug.txt", "two\r\n");
  CHECK(content("LWDebug.txt") == "one\r\ntwo\r\n");
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A file in the making takes its place when it is finished") {
  files.replace("calls.csv", "old");
  const auto making = files.begin_replace("calls.csv");
  making->append("one,");
  making->append(std::string(5 << 20, 'x'));
  CHECK(content("calls.csv") == "old");
  making->append(",end");
  making->finish();
  CHECK(content("calls.csv") == "one," + std::string(5 << 20, 'x') + ",end");
  CHECK(names() == std::vector<std::string>{"calls.csv"});
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A file in the making that isn't finished leaves nothing") {
  files.begin_replace("calls.csv")->append("one");
  CHECK(names().empty());
  files.replace("calls.csv", "old");
  files.begin_replace("calls.csv")->append("one");
  CHECK(content("calls.csv") == "old");
  CHECK(names() == std::vector<std::string>{"calls.csv"});
  CHECK(failure_number_of([&] { files.begin_replace("nowhere/a.csv"); }) == 75);
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A failure names the path and the reason") {
  const std::string path = (directory.path() / "nowhere" / "a.txt").string();
  const std::string text = "Can't write " + path + ": No such file or directory";
  CHECK_THROWS_WITH_AS(files.replace("nowhere/a.txt", "x"), text.c_str(), Failure);
  CHECK_THROWS_WITH_AS(files.append("nowhere/a.txt", "x"), text.c_str(), Failure);
  CHECK(failure_number_of([&] { files.replace("nowhere/a.txt", "x"); }) == 75);
  CHECK(failure_number_of([&] { files.append("/dev/full", "x"); }) == 75);
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A disk that is full leaves the old content and nothing else") {
  files.replace("Writ.inf", "old");
  const int number = in_child([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, 4096};
    if (::setrlimit(RLIMIT_FSIZE, &small) != 0) return 1;
    return failure_number_of([&] { files.replace("Writ.inf", std::string(10000, 'x')); });
  });
  CHECK(number == 75);
  CHECK(content("Writ.inf") == "old");
  CHECK(names() == std::vector<std::string>{"Writ.inf"});
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A file that is read-only is not replaced") {
  files.replace("Writ.inf", "old");
  fs::permissions(directory.path() / "Writ.inf", fs::perms{0444});
  fs::permissions(directory.path(), fs::perms{0777});
  const int number = in_child_without_power(
      [&] { return failure_number_of([&] { files.replace("Writ.inf", "new"); }); });
  CHECK(number == 75);
  CHECK(content("Writ.inf") == "old");
  CHECK(names() == std::vector<std::string>{"Writ.inf"});
}

namespace {

// A content that tells whether it is whole: its number, its length and a filling.
std::string numbered_content(unsigned number) {
  const std::string head = std::to_string(number) + " ";
  return head + std::string(number * 7919 % 60000, static_cast<char>('a' + number % 26)) + "\n";
}

}  // namespace

TEST_CASE_FIXTURE(DiskFilesFixture,
                  "A file that can't be read says why; one that isn't there doesn't") {
  CHECK_FALSE(files.why_unreadable("Writ.inf"));
  files.replace("Writ.inf", "content");
  CHECK_FALSE(files.why_unreadable("writ.INF"));
  files.replace("Writ.inf", "");
  CHECK_FALSE(files.why_unreadable("Writ.inf"));

  const auto says = [&](const std::string& name, const std::string& reason) {
    return files.why_unreadable(name) ==
           "Can't read " + (directory.path() / name).string() + ": " + reason;
  };
  fs::create_directory(directory.path() / "folder");
  CHECK(says("folder", "Is a directory"));
  REQUIRE(::mkfifo((directory.path() / "pipe").c_str(), 0666) == 0);
  CHECK(says("pipe", "Invalid argument"));
  fs::create_symlink("nowhere", directory.path() / "link");
  CHECK(says("link", "No such file or directory"));
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A file that may not be read says so") {
  files.replace("Writ.inf", "content");
  fs::permissions(directory.path(), fs::perms::owner_all | fs::perms::others_exec);
  fs::permissions(directory.path() / "Writ.inf", fs::perms::none);
  const auto why = [&] {
    const auto said = files.why_unreadable("Writ.inf");
    return said && said->ends_with("Permission denied") ? 0 : 2;
  };
  CHECK(in_child_without_power(why) == 0);
}

TEST_CASE_FIXTURE(DiskFilesFixture,
                  "File names are UTF-8 on the disk, texts of a set in the console") {
  const CodePageLetters polish(*find_code_page("windows-1250"));
  DiskFiles polish_files(directory.path(), polish);
  const std::string lodz = polish.from_utf8("Łódź.txt");
  polish_files.replace(lodz, "plan");
  CHECK(names() == std::vector<std::string>{"Łódź.txt"});
  CHECK(*polish_files.read(lodz) == "plan");
  CHECK(*polish_files.read(polish.from_utf8("Łódź.TXT")) == "plan");
  // A name that the set doesn't hold, and one that isn't UTF-8.
  files.replace("Иван.txt", "other");
  files.replace("caf\xE9.txt", "old");
  CHECK(*polish_files.read(path_text(polish, "Иван.txt")) == "other");
  CHECK(*polish_files.read(path_text(polish, "caf\xE9.txt")) == "old");
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A file is read in pieces, and only a plain one") {
  files.replace("calls.csv", "abcdefg");
  const auto file = files.open("CALLS.csv");
  REQUIRE(file);
  CHECK(file->size() == 7);
  CHECK(file->read(4) == "abcd");
  CHECK(file->read(4) == "efg");
  CHECK(file->read(4) == "");
  CHECK_FALSE(files.open("gone.csv"));
  CHECK_FALSE(files.open("."));
}

TEST_CASE_FIXTURE(DiskFilesFixture, "One file is known in any spelling and by any link") {
  files.replace("calls.lwl", "log");
  files.replace("other.lwl", "log");
  fs::create_directory(directory.path() / "sub");
  fs::create_symlink(directory.path() / "calls.lwl", directory.path() / "link.lwl");
  fs::create_hard_link(directory.path() / "calls.lwl", directory.path() / "hard.lwl");
  fs::create_directory_symlink(directory.path(), directory.path() / "sub" / "up");
  const std::string whole = (directory.path() / "calls.lwl").string();
  for (const std::string& same :
       {std::string("calls.lwl"), std::string("./calls.lwl"), std::string("sub/../calls.lwl"),
        std::string("sub/up/calls.lwl"), std::string("CALLS.LWL"), std::string("link.lwl"),
        std::string("hard.lwl"), whole}) {
    CAPTURE(same);
    CHECK(files.same_file(same, "calls.lwl"));
    CHECK(files.same_file("calls.lwl", same));
  }
  CHECK_FALSE(files.same_file("other.lwl", "calls.lwl"));
  // Files that aren't there yet have their names.
  CHECK(files.same_file("sub/up/calls.lwl-wal", "calls.lwl-wal"));
  CHECK_FALSE(files.same_file("calls.lwl-shm", "calls.lwl-wal"));
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A program killed while it replaces leaves a whole content") {
  std::mt19937 random(20240229);
  unsigned number = 1;
  files.replace("Writ.inf", numbered_content(number));

  for (int kill = 0; kill < 60; ++kill) {
    int done[2];
    REQUIRE(::pipe(done) == 0);
    const pid_t child = ::fork();
    REQUIRE(child >= 0);
    if (child == 0) {
      for (unsigned next = number + 1;; ++next) {
        files.replace("Writ.inf", numbered_content(next));
        if (::write(done[1], ".", 1) != 1) ::_exit(1);
      }
    }
    ::close(done[1]);

    // Some replacements, then a random part of one more.
    char byte = 0;
    unsigned acknowledged = number;
    for (auto wanted = random() % 5; wanted > 0; --wanted) {
      REQUIRE(::read(done[0], &byte, 1) == 1);
      ++acknowledged;
    }
    for (auto moment = random() % 200000; moment > 0; --moment) asm volatile("");
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    while (::read(done[0], &byte, 1) == 1) ++acknowledged;
    ::close(done[0]);

    const auto found = files.read("Writ.inf");
    REQUIRE(found);
    number = static_cast<unsigned>(std::stoul(*found));
    CHECK(*found == numbered_content(number));
    CHECK(number >= acknowledged);
    CHECK(number <= acknowledged + 1);
  }
}

TEST_CASE_FIXTURE(DiskFilesFixture, "A guarded file is never opened, by whatever name") {
  GuardedFiles guard;
  const DiskFiles free_files(directory.path());
  DiskFiles guarded_files(directory.path(), utf8_letters(), &guard);
  files.replace("calls.mdb", "calls");
  files.replace("calls.mdb-wal", "beside");
  fs::create_symlink("calls.mdb", directory.path() / "link");
  struct stat status {};
  REQUIRE(::stat((directory.path() / "calls.mdb").c_str(), &status) == 0);
  const GuardedFiles::Identity calls(status.st_dev, status.st_ino);

  // A lock of this process, as another process sees it.
  const auto locked = [&] {
    return in_child([&] {
             const int other = ::open((directory.path() / "calls.mdb").c_str(), O_RDWR);
             struct flock lock {};
             lock.l_type = F_WRLCK;
             return ::fcntl(other, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? 1 : 0;
           }) != 0;
  };
  const int handle = ::open((directory.path() / "calls.mdb").c_str(), O_RDWR);
  struct flock lock {};
  lock.l_type = F_WRLCK;
  REQUIRE(::fcntl(handle, F_SETLK, &lock) == 0);
  guard.guard(calls);
  guard.guard(calls);
  guard.let_go(calls);
  for (const char* name : {"calls.mdb", "CALLS.mdb", "link", "calls.mdb-wal"}) {
    CAPTURE(name);
    CHECK_FALSE(guarded_files.read(name));
    CHECK_FALSE(guarded_files.open(name));
    CHECK(guarded_files.why_unreadable(name));
    CHECK(guarded_files.same_file(name, name));
    CHECK(failure_number_of([&] { guarded_files.replace(name, "x"); }) == 75);
    CHECK(failure_number_of([&] { guarded_files.append(name, "x"); }) == 75);
    CHECK(failure_number_of([&] { guarded_files.begin_replace(name); }) == 75);
  }
  CHECK(locked());
  CHECK(content("calls.mdb") == "calls");
  guard.let_go(calls);
  CHECK(guarded_files.read("calls.mdb") == "calls");
  // That has ended the lock, which is why nobody may.
  CHECK_FALSE(locked());
  ::close(handle);
}

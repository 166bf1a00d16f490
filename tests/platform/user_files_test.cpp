// Files that answer late or never, with threads and on the disk.

#include <doctest/doctest.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "base/failure.h"
#include "core/console.h"
#include "forms/call_log_columns.h"
#include "other_process.h"
#include "platform/disk/disk_files.h"
#include "platform/disk/file_descriptor.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "platform/threaded/threaded_user_files.h"
#include "temporary_directory.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace lineweir::test;

namespace {

using Texts = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

struct Folder {
  TemporaryDirectory directory;
  std::shared_ptr<DiskFiles> files = std::make_shared<DiskFiles>(directory.path());
  ThreadedUserFiles user_files{
      {.files = files, .is_database = [](const std::string& path) { return path == "calls.mdb"; }}};

  std::string path(const std::string& name) const { return (directory.path() / name).string(); }
  void make_pipe(const std::string& name) const {
    REQUIRE(::mkfifo(path(name).c_str(), 0600) == 0);
  }
  Texts names() const { return directory.names(); }
};

// False when the condition doesn't hold within 10 seconds.
bool await(const std::function<bool()>& condition) {
  const auto limit = Clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (Clock::now() > limit) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

std::string next_piece(FileSource& source) {
  std::optional<std::string> piece;
  REQUIRE(await([&] { return (piece = source.take()).has_value(); }));
  return *piece;
}

std::string rest_of(FileSource& source) {
  std::string content;
  for (std::string piece = next_piece(source); !piece.empty(); piece = next_piece(source)) {
    content += piece;
  }
  return content;
}

// The description of the failure with which the target ends.
std::string failure_of(FileTarget& target) {
  std::string told;
  await([&] {
    try {
      return target.done();
    } catch (const Failure& failure) {
      CHECK(failure.number() == failure_number::file_access);
      told = failure.what();
      return true;
    }
  });
  return told;
}

}  // namespace

TEST_CASE_FIXTURE(Folder, "A file comes whole, piece by piece") {
  std::string content;
  for (int i = 0; i < 500000; ++i) content += std::to_string(i) + "\r\n";
  files->replace("calls.csv", content);
  const auto source = user_files.read("CALLS.csv");
  CHECK(rest_of(*source) == content);
  CHECK(source->size() == content.size());
  CHECK(source->take() == "");
  CHECK_FALSE(source->unreadable());
}

TEST_CASE_FIXTURE(Folder, "A file that isn't there is unreadable, and so is a folder") {
  for (const char* name : {"gone.csv", "."}) {
    const auto source = user_files.read(name);
    CHECK(await([&] { return source->unreadable(); }));
    CHECK_FALSE(source->take());
  }
}

TEST_CASE_FIXTURE(Folder, "What comes slowly is taken as it comes") {
  make_pipe("pipe");
  const auto source = user_files.read("pipe");
  CHECK_FALSE(source->take());
  const FileDescriptor writer(::open(path("pipe").c_str(), O_WRONLY | O_CLOEXEC));
  CHECK_FALSE(source->take());
  REQUIRE(::write(writer.get(), "one", 3) == 3);
  CHECK(next_piece(*source) == "one");
  CHECK_FALSE(source->take());
  REQUIRE(::write(writer.get(), "two", 3) == 3);
  CHECK(next_piece(*source) == "two");
}

TEST_CASE_FIXTURE(Folder, "A file that never answers is abandoned at once") {
  make_pipe("pipe");
  const auto begin = Clock::now();
  for (int i = 0; i < 20; ++i) CHECK_FALSE(user_files.read("pipe")->take());
  CHECK(Clock::now() - begin < std::chrono::seconds(5));
}

TEST_CASE_FIXTURE(Folder, "New content takes the file's place when it is whole") {
  files->replace("out.csv", "the old one");
  const auto target = user_files.write("out.csv", {});
  REQUIRE(await([&] { return target->ready(); }));
  target->append("one ");
  target->append("two");
  CHECK_FALSE(target->done());
  CHECK(files->read("out.csv") == "the old one");
  target->finish();
  REQUIRE(await([&] { return target->done(); }));
  CHECK(files->read("out.csv") == "one two");
  CHECK(names() == Texts{"out.csv"});
}

TEST_CASE("Content that is given up leaves the file as it is and nothing beside it") {
  Folder folder;
  folder.files->replace("out.csv", "the old one");
  {
    ThreadedUserFiles user_files({folder.files, [](const std::string&) { return false; }});
    const auto target = user_files.write("out.csv", {});
    REQUIRE(await([&] { return target->ready(); }));
    target->append("new");
  }
  CHECK(folder.files->read("out.csv") == "the old one");
  CHECK(folder.names() == Texts{"out.csv"});
}

TEST_CASE_FIXTURE(Folder, "Files that are to be spared are, and others fail with their reason") {
  files->replace("own.csv", "kept");
  std::filesystem::create_symlink("own.csv", directory.path() / "link.csv");
  const SparedFiles spared{{{"other.csv", "other"}, {"own.csv", "own"}}, "database"};
  CHECK(failure_of(*user_files.write("link.csv", spared)) == "own");
  CHECK(failure_of(*user_files.write("calls.mdb", spared)) == "database");
  CHECK(failure_of(*user_files.write("nowhere/a.csv", spared)).starts_with("Can't write "));
  CHECK(files->read("own.csv") == "kept");
}

namespace {

// A console with a log, whose files are on the disk.
struct DiskConsole : Folder {
  DiskConsole() {
    platform.databases.create("calls.lwl")->create_table(std::string(call_log_table), columns());
    console.messages.on_shown = [this](const std::string& text) { told += text; };
    console.startup.Main("");
    console.Lineweir.Data1.database_name = "calls.lwl";
    console.Lineweir.ShowDatabaseMenuItem.on_click();
  }

  void import(const std::string& file) {
    platform.dialogs.answer_file(file);
    console.DatabaseViewer.ImportButton.on_click();
  }
  void pass(int milliseconds) { platform.loop.advance(Milliseconds(milliseconds)); }

  ScriptedPlatform platform;
  std::string told;
  Console console{services()};

 private:
  static std::vector<DatabaseColumn> columns() {
    std::vector<DatabaseColumn> found;
    for (const CallLogColumn& column : call_log_columns) {
      found.push_back({column.name.empty() ? "Sponsor" : std::string(column.name),
                       static_cast<int>(column.size)});
    }
    return found;
  }
  Services services() {
    return platform::services_with(platform.services(*files, platform.databases),
                                   {.user_files = &user_files});
  }
};

}  // namespace

TEST_CASE("An import from a pipe that nobody writes to holds nothing, and is cancelled") {
  DiskConsole desk;
  desk.make_pipe("pipe.csv");
  ImportPreviewForm& preview = desk.console.ImportPreview;
  const auto begin = Clock::now();
  desk.import("pipe.csv");
  desk.pass(5000);
  REQUIRE(preview.visible);
  CHECK(preview.ResultLabel.caption == "Waiting for the file");
  preview.ImportCancel.on_click();
  CHECK_FALSE(preview.loaded());
  CHECK(desk.told == "");

  desk.files->replace("calls.csv", "Caller Name\r\nAnn\r\n");
  desk.import("calls.csv");
  CHECK(await([&] {
    desk.pass(1);
    return preview.ResultLabel.caption == "1 call can be imported.";
  }));
  CHECK(Clock::now() - begin < std::chrono::seconds(10));
}

TEST_CASE("The program ends while a file that it imports doesn't answer") {
  const OtherProcess process([](const OtherProcess::Tell& tell, const std::function<void()>&) {
    {
      DiskConsole desk;
      desk.make_pipe("pipe.csv");
      desk.import("pipe.csv");
      desk.pass(1000);
      tell(desk.console.ImportPreview.visible ? 1 : 0);
      desk.console.Lineweir.close();
      tell(desk.platform.ended ? 2 : 0);
    }
    tell(3);
    std::exit(0);
  });
  CHECK(process.next() == 1);
  CHECK(process.next() == 2);
  const auto begin = Clock::now();
  CHECK(process.next() == 3);
  CHECK(process.next() == -1);
  CHECK(Clock::now() - begin < std::chrono::seconds(8));
}

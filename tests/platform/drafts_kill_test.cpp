// Consoles in processes of their own that share a settings folder and are killed: what was typed
// into any of them is there once.

#include <doctest/doctest.h>

#include "core/console.h"
#include "other_process.h"
#include "platform/disk/disk_files.h"
#include "platform/scripted/scripted_platform.h"
#include "temporary_directory.h"

using namespace lineweir;
using namespace lineweir::test;

namespace {

// A console whose files are on the disk.
struct DiskConsole {
  explicit DiskConsole(const std::filesystem::path& folder) : files(folder) {
    console.messages.on_shown = [this](const std::string& text) { told += text; };
    console.startup.Main("");
  }

  void type(int line, const std::string& name) {
    console.caller_data.show_for_line(line);
    console.Form4.TheText(1).text = name;
    platform.loop.advance(std::chrono::seconds(1));
  }

  platform::ScriptedPlatform platform;
  platform::DiskFiles files;
  std::string told;
  Console console{platform.services(files, platform.databases)};
};

int count(const std::string& text, const std::string& word) {
  int found = 0;
  for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++found;
  return found;
}

// A console that is typed into, and runs until it is killed.
OtherProcess start_console(const std::filesystem::path& folder,
                           const std::vector<std::pair<int, std::string>>& typed) {
  return OtherProcess([&](const OtherProcess::Tell& tell, const std::function<void()>& await) {
    DiskConsole console(folder);
    tell(0);
    await();
    for (const auto& [line, name] : typed) console.type(line, name);
    tell(1);
    await();
  });
}

// What consoles that start at the same moment tell of drafts.
std::string told_by_two(const std::filesystem::path& folder) {
  const auto run = [&](const std::string& name) {
    return [&folder, name](const OtherProcess::Tell& tell, const std::function<void()>& await) {
      tell(0);
      await();
      const DiskConsole console(folder);
      platform::DiskFiles(folder).replace(name, console.told);
      tell(1);
      await();
    };
  };
  const OtherProcess one(run("one.txt"));
  const OtherProcess two(run("two.txt"));
  for (const OtherProcess* process : {&one, &two}) REQUIRE(process->next() == 0);
  for (const OtherProcess* process : {&one, &two}) process->go_on();
  for (const OtherProcess* process : {&one, &two}) REQUIRE(process->next() == 1);
  for (const OtherProcess* process : {&one, &two}) process->kill();
  const platform::DiskFiles files(folder);
  return *files.read("one.txt") + *files.read("two.txt");
}

// Two consoles are typed into at the same time, and killed.
void kill_two(const std::filesystem::path& folder) {
  const OtherProcess one = start_console(folder, {{0, "Ann"}, {2, "Bob"}});
  const OtherProcess two = start_console(folder, {{0, "Carla"}, {3, "Dan"}});
  for (const OtherProcess* process : {&one, &two}) {
    REQUIRE(process->next() == 0);
    process->go_on();
  }
  for (const OtherProcess* process : {&one, &two}) REQUIRE(process->next() == 1);
  one.kill();
  two.kill();
}

}  // namespace

TEST_CASE("What was typed into two consoles that are killed is in the next one, once") {
  const TemporaryDirectory folder;
  kill_two(folder.path());
  for (int start = 0; start < 2; ++start) {
    DiskConsole console(folder.path());
    for (const char* name : {"(Ann)", "(Bob)", "(Carla)", "(Dan)"}) {
      CAPTURE(name);
      CHECK(count(console.told, name) == 1);
    }
    // The form shows one of the line's drafts, and behind it the other.
    console.console.caller_data.show_for_line(2);
    CHECK(console.console.Form4.TheText(1).text == "Bob");
  }
}

TEST_CASE("What was typed into two consoles that are killed is shared by two that start at once") {
  for (int round = 0; round < 10; ++round) {
    const TemporaryDirectory folder;
    kill_two(folder.path());
    const std::string told = told_by_two(folder.path());
    for (const char* name : {"(Ann)", "(Bob)", "(Carla)", "(Dan)"}) {
      CAPTURE(name);
      CHECK(count(told, name) == 1);
    }
  }
}

TEST_CASE("A console that is started beside a running one leaves that one's drafts alone") {
  const TemporaryDirectory folder;
  DiskConsole first(folder.path());
  first.type(2, "Ann");
  {
    DiskConsole second(folder.path());
    CHECK(second.told == "");
    second.type(4, "Bob");
    first.type(2, "Anne");
  }
  DiskConsole third(folder.path());
  CHECK(count(third.told, "(Bob)") == 1);
  CHECK(count(third.told, "(Ann") == 0);
}

// The settings file under a process that is killed while it saves.

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <string>

#include "platform/disk/disk_files.h"
#include "state/settings_record.h"
#include "temporary_directory.h"

using namespace lineweir;

namespace {

constexpr int kills = 40;
constexpr int saves = 1000;
constexpr auto file_name = "Writ.inf";

SettingsRecord numbered(int save) {
  SettingsRecord record;
  record.Warning1 = save;
  record.GroupNumber = save;
  record.GreyScreenOn = true;
  record.OperatorName = std::string(30, static_cast<char>('A' + save % 26));
  return record;
}

[[noreturn]] void save_without_end(const std::filesystem::path& folder) {
  platform::DiskFiles files(folder);
  for (int save = 0; save < saves; ++save) {
    files.replace(file_name, encode_settings(numbered(save)));
  }
  ::_exit(0);
}

}  // namespace

TEST_CASE("A process killed at any moment of its saves leaves a whole record") {
  const TemporaryDirectory folder;
  platform::DiskFiles files(folder.path());
  files.replace(file_name, encode_settings(numbered(0)));
  std::mt19937 random(1);
  int unfinished = 0;
  for (int kill_count = 0; kill_count < kills; ++kill_count) {
    const pid_t child = ::fork();
    REQUIRE(child >= 0);
    if (child == 0) save_without_end(folder.path());
    ::usleep(static_cast<useconds_t>(1000 + random() % 40000));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    unfinished += WIFSIGNALED(status) ? 1 : 0;

    const auto bytes = files.read(file_name);
    REQUIRE(bytes);
    CHECK(bytes->size() == settings_record_size);
    const auto record = decode_settings(*bytes);
    REQUIRE(record);
    // All of one save and nothing of another.
    CHECK(*record == numbered(record->Warning1));
  }
  // Otherwise nothing was interrupted, and the test says nothing.
  CHECK(unfinished > 0);
}

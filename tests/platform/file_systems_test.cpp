// Files on file systems that this machine doesn't have: the system's call that tells their kind is
// the test's.

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>
#include <sys/vfs.h>

#include "platform/sqlite/sqlite_engine.h"
#include "support/failure_number.h"
#include "temporary_directory.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

constexpr unsigned long own_disk = 0xEF53;

unsigned long file_system = own_disk;

struct Folder {
  ~Folder() { file_system = own_disk; }

  TemporaryDirectory directory;
  SqliteEngine engine{directory.path()};
};

}  // namespace

extern "C" int statfs(const char*, struct statfs* status) noexcept {
  *status = {};
  status->f_type = static_cast<decltype(status->f_type)>(file_system);
  return 0;
}

TEST_CASE_FIXTURE(Folder, "A log that several machines may share has no log of its own beside it") {
  const auto files_of = [&](const std::string& name) {
    const auto database = engine.create(name);
    database->create_table("Rows", {{"Text", 4}});
    return directory.names().size();
  };
  CHECK(files_of("own.lwl") == 3);
  // NFS, SMB, CIFS, SMB2.
  for (const unsigned long shared : {0x6969UL, 0x517BUL, 0xFF534D42UL, 0xFE534D42UL}) {
    CAPTURE(shared);
    file_system = shared;
    const std::size_t before = directory.names().size();
    CHECK(files_of(std::to_string(shared)) == before + 1);
  }
}

TEST_CASE_FIXTURE(Folder, "What the system shows as a file is never opened as a log") {
  engine.create("calls.lwl")->create_table("Rows", {{"Text", 4}});
  CHECK(test::failure_number_of([&] { engine.open("calls.lwl"); }) == 0);
  // proc, sys, debug and trace.
  for (const unsigned long shown : {0x9FA0UL, 0x62656572UL, 0x64626720UL, 0x74726163UL}) {
    CAPTURE(shown);
    file_system = shown;
    CHECK(test::failure_number_of([&] { engine.open("calls.lwl"); }) == 3343);
  }
}

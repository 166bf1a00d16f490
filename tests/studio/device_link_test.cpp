#include "studio/device_link.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "temporary_folder.h"

using namespace lineweir::studio;
namespace fs = std::filesystem;

TEST_CASE("the link points to the device and goes with the studio") {
  const TemporaryFolder folder;
  {
    const DeviceLink link(folder.path("box"), "/dev/null");
    CHECK(fs::read_symlink(folder.path("box")) == "/dev/null");
  }
  CHECK_FALSE(fs::is_symlink(folder.path("box")));
}

TEST_CASE("a link left by a killed studio is replaced") {
  const TemporaryFolder folder;
  SUBCASE("that points nowhere") { fs::create_symlink("/dev/none/77", folder.path("box")); }
  SUBCASE("that points to this device, whose number was given out again") {
    fs::create_symlink("/dev/null", folder.path("box"));
  }
  const DeviceLink link(folder.path("box"), "/dev/null");
  CHECK(fs::read_symlink(folder.path("box")) == "/dev/null");
}

TEST_CASE("what isn't a stale link stays") {
  const TemporaryFolder folder;
  std::ofstream(folder.path("file")) << "kept";
  fs::create_symlink(folder.path("file"), folder.path("used"));
  CHECK_THROWS_WITH(DeviceLink(folder.path("file"), "/dev/null"),
                    (folder.path("file") + ": exists and is no symbolic link").c_str());
  CHECK_THROWS_WITH(
      DeviceLink(folder.path("used"), "/dev/null"),
      (folder.path("used") + ": is a link to " + folder.path("file") + ", which exists").c_str());
  CHECK_THROWS_WITH(DeviceLink(folder.path("none/box"), "/dev/null"),
                    (folder.path("none/box") + ": No such file or directory").c_str());
  CHECK(fs::file_size(folder.path("file")) == 4);
  CHECK(fs::read_symlink(folder.path("used")) == folder.path("file"));
}

TEST_CASE("a link that somebody else has taken over stays at the end") {
  const TemporaryFolder folder;
  {
    const DeviceLink link(folder.path("box"), "/dev/null");
    fs::remove(folder.path("box"));
    fs::create_symlink("/dev/zero", folder.path("box"));
  }
  CHECK(fs::read_symlink(folder.path("box")) == "/dev/zero");
}

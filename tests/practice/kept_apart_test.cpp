#include "practice/kept_apart.h"

#include <doctest/doctest.h>
#include <unistd.h>

#include <filesystem>

#include "practice/practice_world.h"
#include "support/failure_number.h"
#include "support/scripted_console.h"

namespace lineweir::practice {
namespace {

namespace fs = std::filesystem;

struct Folders {
  Folders() {
    fs::create_directories(own);
    fs::create_directory_symlink(real, own / "way_out");
  }
  ~Folders() { fs::remove_all(real); }

  fs::path real = fs::temp_directory_path() / ("lineweir-apart-" + std::to_string(getpid()));
  fs::path own = real / "Practice";
};

TEST_SUITE("practice/kept apart") {
  TEST_CASE("only what lies in the folder is in it, by whatever path") {
    const Folders folders;
    const OwnFolder own(folders.own);
    for (const std::string& path :
         {std::string("Writ.inf"), std::string("./a/../b.txt"), (folders.own / "x").string(),
          (folders.real / "Practice" / "x").string()}) {
      CAPTURE(path);
      CHECK(own.holds(path));
    }
    for (const std::string& path :
         {std::string("../Writ.inf"), std::string("a/../../Writ.inf"), std::string("."),
          std::string(""), std::string("way_out/Writ.inf"), (folders.real / "calls.mdb").string(),
          std::string("/etc/passwd"), folders.own.string() + "2/x"}) {
      CAPTURE(path);
      CHECK_FALSE(own.holds(path));
    }
  }

  TEST_CASE("nothing outside is written, opened as a log, or set") {
    const Folders folders;
    platform::ScriptedPlatform platform;
    PracticeWorld world(platform.services(), folders.own);
    platform::Services services = world.services();
    const std::string outside = (folders.real / "Writ.inf").string();
    platform.files.replace(outside, "real");
    CHECK(services.files.read(outside) == "real");
    CHECK(test::failure_number_of([&] { services.files.replace(outside, "x"); }) == 75);
    CHECK(test::failure_number_of([&] { services.files.append("../plan.txt", ""); }) == 75);
    CHECK(test::failure_number_of([&] { services.user_files.write(outside, {}); }) == 75);
    CHECK(test::failure_number_of([&] { services.databases.open("../calls.mdb"); }) == 3027);
    CHECK(test::failure_number_of([&] { services.databases.create("../calls.mdb"); }) == 3027);
    CHECK(platform.files.read(outside) == "real");
    CHECK_FALSE(platform.files.exists("../plan.txt"));
    services.files.replace("mine.txt", "x");
    CHECK(platform.files.read("mine.txt") == "x");

    CHECK(test::failure_number_of([&] { services.clock.set({}); }) == 70);
    CHECK(test::failure_number_of([&] { services.comm2.open(); }) == 68);
    CHECK(test::failure_number_of([&] { services.remote_objects.create("Any.Server"); }) == 429);
    services.winsock1.connect("studio", 4000);
    CHECK(services.winsock1.state() == platform::socket_closed);
    CHECK(platform.winsock1.state() == platform::socket_closed);
    CHECK(test::failure_number_of([&] { services.winsock1.send_data("x"); }) == 40006);
  }
}

}  // namespace
}  // namespace lineweir::practice

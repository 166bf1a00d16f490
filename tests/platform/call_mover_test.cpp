// When the journal tries a log again, and how long it keeps one open.

#include <doctest/doctest.h>

#include "journal_desk.h"
#include "platform/journal/call_mover.h"

using namespace lineweir;
using namespace lineweir::test;
using platform::Milliseconds;
namespace fs = std::filesystem;

namespace {

struct MoverFixture {
  MoverFixture() { desk.make_log(); }

  void take(const std::string& name) {
    mover.take({{"run", ++sequence}, {}, call_record("calls.mdb", name)});
  }

  JournalDesk desk;
  platform::SqliteEngine engine{desk.folder.path()};
  platform::CallMover mover{engine};
  std::uint64_t sequence = 0;
};

// A connection that keeps the log's calls from being brought into the file.
class Reader {
 public:
  explicit Reader(const std::string& file) {
    REQUIRE(sqlite3_open(file.c_str(), &connection_) == SQLITE_OK);
    sqlite3_exec(connection_, "BEGIN; SELECT count(*) FROM Calls", nullptr, nullptr, nullptr);
  }
  ~Reader() { sqlite3_close(connection_); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

 private:
  sqlite3* connection_ = nullptr;
};

}  // namespace

TEST_CASE_FIXTURE(MoverFixture, "Each next try lies in the future, whatever the log is kept from") {
  take("caller 0");
  mover.work(Milliseconds{0});
  const Reader reader(desk.path("calls.mdb"));
  take("caller 1");
  mover.work(Milliseconds{1});
  fs::rename(desk.path("calls.mdb"), desk.path("moved.mdb"));
  take("caller 2");
  Milliseconds now{900};
  mover.work(now);
  for (int tries = 0; tries < 20; ++tries) {
    const auto next = mover.next_work();
    REQUIRE(next);
    REQUIRE(*next > now);
    now = *next;
    mover.work(now);
  }
  CHECK(mover.state().waiting == 1);
}

TEST_CASE_FIXTURE(MoverFixture, "A log that is chosen again is tried at once") {
  fs::rename(desk.path("calls.mdb"), desk.path("moved.mdb"));
  take("caller 0");
  mover.work(Milliseconds{0});
  CHECK(mover.state().waiting == 1);
  fs::rename(desk.path("moved.mdb"), desk.path("calls.mdb"));
  mover.use("calls.mdb", log_table, 0);
  mover.work(Milliseconds{0});
  CHECK(mover.state().waiting == 0);
}

TEST_CASE_FIXTURE(MoverFixture,
                  "A log that is no longer in use is let go once its calls are in it") {
  desk.make_log("other.mdb");
  mover.use("calls.mdb", log_table, 0);
  take("caller 0");
  mover.work(Milliseconds{0});
  CHECK(fs::exists(desk.path("calls.mdb-wal")));
  mover.use("other.mdb", log_table, 0);
  mover.work(Milliseconds{1});
  CHECK_FALSE(fs::exists(desk.path("calls.mdb-wal")));
  CHECK(desk.names() == std::vector<std::string>{"caller 0"});
}

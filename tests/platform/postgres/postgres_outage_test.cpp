#include <doctest/doctest.h>

#include <thread>

#include "platform/postgres/postgres_desk.h"

using namespace lineweir;
using namespace lineweir::platform;
using lineweir::test::PostgresCluster;

namespace {

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Writes a call and an event at a time, one behind the other, and each again until it is told to
// be written, as whoever keeps a store does.
class Writer {
 public:
  explicit Writer(PostgresDesk& desk) : desk_(desk) { write(); }

  int written() const { return written_; }
  bool ended() const { return ended_; }
  void end() { ending_ = true; }

 private:
  void write() {
    desk_.store().write({full_call(written_ + 1), event(written_ + 1)}, [this](bool done) {
      if (done) ++written_;
      ended_ = ending_;
      if (ended_) return;
      if (done) return write();
      desk_.loop().schedule(Milliseconds{50}, [this] { write(); });
    });
  }

  PostgresDesk& desk_;
  int written_ = 0;
  bool ending_ = false;
  bool ended_ = false;
};

}  // namespace

TEST_CASE("A database that is killed at any moment loses nothing that was told, nor doubles it") {
  PostgresDesk desk;
  auto& cluster = PostgresCluster::the();
  Writer writer(desk);
  for (int round = 0; round < 6; ++round) {
    const int before = writer.written();
    REQUIRE(desk.run_until([&] { return writer.written() >= before + 5 + round * 3; }));
    cluster.kill();
    REQUIRE(desk.run_until([&] { return !desk.trouble().empty(); }));
    cluster.start();
  }
  const int before = writer.written();
  REQUIRE(desk.run_until([&] { return writer.written() > before; }));
  CHECK(desk.trouble() == "");
  CHECK(has(desk.troubles(), "The connection to the database '"));
  writer.end();
  REQUIRE(desk.run_until([&] { return writer.ended(); }));
  const auto calls = desk.calls();
  const auto verdict = desk.verify();
  REQUIRE(static_cast<int>(calls->size()) == writer.written());
  for (std::size_t i = 0; i < calls->size(); ++i) {
    CHECK((*calls)[i] == full_call(static_cast<std::int64_t>(i) + 1));
  }
  CHECK(verdict->entries == writer.written());
  CHECK(verdict->first_wrong == 0);
}

TEST_CASE("A database that stands still is told, holds nothing up, and is written to afterwards") {
  PostgresDesk desk({.welcome = Milliseconds{500}, .answer = Milliseconds{500}});
  Writer writer(desk);
  REQUIRE(desk.run_until([&] { return writer.written() > 5; }));
  int beats = 0;
  std::function<void()> beat = [&] {
    ++beats;
    desk.loop().schedule(Milliseconds{10}, beat);
  };
  beat();
  PostgresCluster::the().stand_still();
  REQUIRE(desk.run_until([&] { return !desk.trouble().empty(); }));
  CHECK(has(desk.trouble(), "has not answered for 1 second; see whether it hangs"));
  // Whoever asks meanwhile is told so.
  CHECK_FALSE(desk.load());
  PostgresCluster::the().go_on();
  CHECK(beats > 20);
  beat = [] {};
  const int before = writer.written();
  REQUIRE(desk.run_until([&] { return writer.written() > before + 3; }));
  CHECK(desk.trouble() == "");
  writer.end();
  REQUIRE(desk.run_until([&] { return writer.ended(); }));
  CHECK(static_cast<int>(desk.calls()->size()) == writer.written());
  CHECK(desk.verify()->entries == writer.written());
  CHECK(desk.verify()->first_wrong == 0);
}

TEST_CASE("A store finds by itself that its database is back") {
  PostgresDesk desk;
  REQUIRE(desk.load());
  PostgresCluster::the().kill();
  REQUIRE(desk.run_until([&] { return !desk.trouble().empty(); }));
  CHECK_FALSE(desk.load());
  CHECK(has(desk.trouble(), " can't be reached: "));
  CHECK(has(desk.trouble(), "; see that PostgreSQL runs there and lets this user in."));
  PostgresCluster::the().start();
  REQUIRE(desk.run_until([&] { return desk.trouble().empty(); }));
}

TEST_CASE("A store whose database hangs ends at once") {
  auto desk = std::make_unique<PostgresDesk>();
  REQUIRE(desk->load());
  PostgresCluster::the().stand_still();
  bool told = false;
  desk->store().write({event(1)}, [&](bool) { told = true; });
  desk->store().backup(desk->file("b.db"), [&](const std::string&) { told = true; });
  const auto begin = std::chrono::steady_clock::now();
  desk->end();
  CHECK(std::chrono::steady_clock::now() - begin < std::chrono::seconds(3));
  CHECK_FALSE(told);
  PostgresCluster::the().go_on();
}

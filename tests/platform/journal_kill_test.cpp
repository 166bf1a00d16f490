// A console that is killed, or whose disk doesn't answer: what its journal has acknowledged is in
// the log in the end, once and in its order.

#include <doctest/doctest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <utility>

#include "journal_desk.h"
#include "other_process.h"

using namespace lineweir;
using namespace lineweir::test;

namespace {

// While it is closed, whatever brings a file to the disk waits, in this process and those that are
// forked from it.
struct DiskGate {
  std::mutex mutex;
  std::condition_variable opened;
  bool closed = false;
  int waiting = 0;

  void pass() {
    std::unique_lock lock(mutex);
    ++waiting;
    opened.notify_all();
    opened.wait(lock, [&] { return !closed; });
    --waiting;
  }
  void close() {
    const std::lock_guard lock(mutex);
    closed = true;
  }
  void open() {
    const std::lock_guard lock(mutex);
    closed = false;
    opened.notify_all();
  }
  void await_waiting() {
    std::unique_lock lock(mutex);
    opened.wait(lock, [&] { return waiting > 0; });
  }
};

// It is never destroyed, as a thread that a journal has left behind may still stand before it while
// the program ends.
DiskGate& disk_gate() {
  static auto& gate = *new DiskGate;
  return gate;
}

using Names = std::vector<std::string>;

}  // namespace

// In the place of the system's, for all of this program.
extern "C" int fdatasync(int) {
  disk_gate().pass();
  return 0;
}
extern "C" int fsync(int) {
  disk_gate().pass();
  return 0;
}

TEST_CASE("A console whose disk doesn't answer takes call upon call, and a kill loses none") {
  JournalDesk desk;
  desk.make_log();
  OtherProcess console([&](const auto& tell, const auto& await) {
    disk_gate().close();
    desk.start();
    desk.put("caller 0");
    // The keeper has written the first call and waits for the disk.
    disk_gate().await_waiting();
    for (int i = 1; i < 100; ++i) {
      desk.put("caller " + std::to_string(i));
      tell(i);
    }
    await();
  });
  Names expected = {"caller 0"};
  for (int i = 1; i < 100; ++i) {
    REQUIRE(console.next() == i);
    expected.push_back("caller " + std::to_string(i));
  }
  console.kill();
  console.wait();
  desk.start();
  desk.stop();
  CHECK(desk.names() == expected);
  CHECK(desk.journal_files().empty());
}

TEST_CASE("The journal is kept while the log's disk doesn't answer") {
  JournalDesk desk;
  desk.make_log();
  desk.start();
  desk.put("caller 0");
  disk_gate().close();
  desk.put("caller 1");
  disk_gate().await_waiting();
  // Another thread writes the journal, which nothing tells of.
  for (int look = 0; look < 1000 && desk.journal_files().empty(); ++look) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  CHECK(desk.journal_files().size() == 1);
  disk_gate().open();
  desk.stop();
  CHECK(desk.names() == Names{"caller 0", "caller 1"});
}

TEST_CASE("Killed at any moment, five hundred times: each call once, none lost, all in order") {
  constexpr int kills = 500;
  constexpr int most_calls_a_life = 40;
  JournalDesk desk;
  desk.make_log();
  std::mt19937 random(20260105);
  // The numbers of the calls that were acknowledged, from the first to behind the last of a life.
  std::vector<std::pair<int, int>> acknowledged;
  int killed = 0;
  for (int life = 0; life < kills; ++life) {
    const int first = life * most_calls_a_life;
    OtherProcess console([&](const auto& tell, const auto&) {
      desk.start();
      for (int i = first; i < first + most_calls_a_life; ++i) {
        desk.put(std::to_string(i));
        tell(i);
      }
      desk.stop();
    });
    int end = first;
    const auto hear = [&](int wanted) {
      while (end < wanted) {
        const int number = console.next();
        if (number < 0) return;
        end = number + 1;
      }
    };
    hear(first + static_cast<int>(random() % (most_calls_a_life + 1)));
    // At times at once, and at times in the middle of what the threads then do.
    if (random() % 2 == 0) ::usleep(static_cast<useconds_t>(random() % 3000));
    console.kill();
    hear(first + most_calls_a_life);
    killed += WIFSIGNALED(console.wait()) ? 1 : 0;
    acknowledged.emplace_back(first, end);
  }
  desk.start();
  desk.stop();
  MESSAGE("killed " << killed << " of " << kills);
  CHECK(killed > kills / 2);
  CHECK(desk.journal_files().empty());

  std::vector<int> logged;
  for (const std::string& name : desk.names()) logged.push_back(std::stoi(name));
  CHECK(std::ranges::is_sorted(logged));
  CHECK(std::ranges::adjacent_find(logged) == logged.end());
  int lost = 0;
  for (const auto& [first, end] : acknowledged) {
    for (int i = first; i < end; ++i) lost += std::ranges::binary_search(logged, i) ? 0 : 1;
  }
  CHECK(lost == 0);
}

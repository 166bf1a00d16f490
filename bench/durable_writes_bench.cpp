// What it takes until a call outlives the loss of power: in the server's store and in the console's
// journal, and how long the journal holds the thread that shows the window. Beside each stands what
// the disk alone needs for the same bytes.

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bare_table.h"
#include "platform/disk/file_descriptor.h"
#include "platform/disk_journal/disk_call_journal.h"
#include "platform/disk_journal/journal_file.h"
#include "platform/journal/journal_record.h"
#include "platform/pumped_poster.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/sqlite_store/sqlite_store.h"
#include "platform/temporary_directory.h"

namespace lineweir::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int writes = 1000;
constexpr int calls_put = 300;
// Calls end one after the other, and not faster than a journal is written.
constexpr auto between_calls = std::chrono::milliseconds(5);

platform::CallRecord ended_call(std::int64_t id) {
  platform::CallRecord call;
  call.id = id;
  call.group = 1;
  call.number = "555 123 4567";
  call.began = call.answered = call.aired = call.ended = platform::Moment(1767600000000);
  call.told_by = "screener";
  call.told = {"Ann Smith", "12 Main Street", "Salem",
               "MA",        "01970",          "555 123 4567",
               "KLWR",      "Female",         "Wants to talk about the bridge",
               "Gardening"};
  for (const char* action : {"ring", "answer", "ready", "air", "hang up"}) {
    call.steps.push_back({call.began, "screener", action});
  }
  return call;
}

platform::LoggedCall logged_call() {
  return {"calls.mdb",
          "Calls",
          {{"Caller Name", "Ann Smith"},
           {"City", "Salem"},
           {"PhoneNumber", "555 123 4567"},
           {"Comments", "Wants to talk about the bridge"}},
          {}};
}

platform::JournalRecord first_record() {
  platform::JournalRecord record;
  record.name.run = "run";
  record.name.sequence = 1;
  record.call = logged_call();
  return record;
}

void a_call_into_the_store(benchmark::State& state) {
  const TemporaryDirectory folder;
  PumpedPoster poster;
  platform::SqliteStore store(folder.path() / "server.db", poster);
  std::int64_t id = 0;
  for (auto _ : state) {
    bool told = false;
    store.write({ended_call(++id)}, [&](bool written) {
      if (!written) throw std::runtime_error("the store didn't write");
      told = true;
    });
    poster.run_until([&] { return told; });
  }
}
BENCHMARK(a_call_into_the_store)->UseRealTime()->Iterations(writes);

// All that the call holds as one row.
void bare_insert_of_a_call(benchmark::State& state) {
  const TemporaryDirectory folder;
  const platform::CallRecord call = ended_call(1);
  std::vector<std::string> texts = {std::to_string(call.id), std::to_string(call.group),
                                    std::to_string(call.line), call.number, call.told_by};
  for (const platform::Moment at : {call.began, call.answered, call.aired, call.ended}) {
    texts.push_back(std::to_string(at.count()));
  }
  texts.insert(texts.end(), call.told.begin(), call.told.end());
  for (const platform::CallStep& step : call.steps) {
    texts.insert(texts.end(), {std::to_string(step.at.count()), step.user, step.action});
  }
  BareTable bare(folder.path() / "bare.db", static_cast<int>(texts.size()));
  for (auto _ : state) bare.insert(texts);
}
BENCHMARK(bare_insert_of_a_call)->UseRealTime()->Iterations(writes);

void a_call_into_the_journals_file(benchmark::State& state) {
  const TemporaryDirectory folder;
  auto file = platform::JournalFile::make(folder.path() / "calls-1.journal");
  const platform::JournalRecord record = first_record();
  for (auto _ : state) {
    file.append(platform::journal_bytes(record));
    file.sync();
  }
}
BENCHMARK(a_call_into_the_journals_file)->UseRealTime()->Iterations(writes);

void bare_append(benchmark::State& state, bool to_the_disk) {
  const TemporaryDirectory folder;
  const platform::FileDescriptor file(
      ::open((folder.path() / "bare").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
  const std::string bytes = platform::journal_bytes(first_record());
  for (auto _ : state) {
    if (::write(file.get(), bytes.data(), bytes.size()) < 0 ||
        (to_the_disk && ::fdatasync(file.get()) != 0)) {
      throw std::runtime_error("the disk doesn't take it");
    }
  }
}
BENCHMARK_CAPTURE(bare_append, and_sync, true)->UseRealTime()->Iterations(writes);

// While the keeper and the writer bring the calls before it to the disk.
void putting_a_call_into_the_journal(benchmark::State& state) {
  const TemporaryDirectory folder;
  platform::SqliteEngine(folder.path())
      .create("calls.mdb")
      ->create_table("Calls",
                     {{"Caller Name", 30}, {"City", 20}, {"PhoneNumber", 20}, {"Comments", 80}});
  PumpedPoster poster;
  platform::DiskCallJournal journal(
      {.folder = folder.path(),
       .make_engine = [&] { return std::make_unique<platform::SqliteEngine>(folder.path()); },
       .post = [&](auto call) { poster.post(std::move(call)); }});
  for (auto _ : state) {
    std::this_thread::sleep_for(between_calls);
    const auto begun = Clock::now();
    journal.put(logged_call());
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begun).count());
  }
}
BENCHMARK(putting_a_call_into_the_journal)->UseManualTime()->Iterations(calls_put);

// What a journal that wrote the call itself would need at least.
BENCHMARK_CAPTURE(bare_append, alone, false)->UseRealTime()->Iterations(writes);

}  // namespace
}  // namespace lineweir::bench

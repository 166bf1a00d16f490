// A call log of a million calls on the disk: opening the viewer, looking for words, scrolling,
// putting in order, the caller's memory, and what one call costs to log. Beside the last stands a
// bare insert of the same call, which is as safe and is the limit.

#include <benchmark/benchmark.h>

#include <unistd.h>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>

#include "bare_table.h"
#include "callerdata/call_log.h"
#include "callerdata/caller_history.h"
#include "core/console.h"
#include "forms/call_log_columns.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/sqlite/sqlite_engine.h"

namespace {

using namespace lineweir;
using Clock = std::chrono::steady_clock;

constexpr int calls = 1000000;
constexpr int columns = static_cast<int>(call_log_columns.size());

std::string number(int caller) {
  return "555 " + std::to_string(1000000 + caller * 7919 % 1000000);
}

std::vector<std::string> call(int i, std::mt19937& random) {
  static const std::vector<std::string> names = {"Ann", "Bob", "Carla", "David", "Eve", "Frank"};
  static const std::vector<std::string> families = {"Smith", "Jones", "Garcia", "Brown", "Lee"};
  static const std::vector<std::string> cities = {"Salem", "Boston", "Denver", "Austin", "Reno"};
  const auto any = [&](const std::vector<std::string>& from) {
    return from[random() % from.size()];
  };
  const int day = static_cast<int>(static_cast<std::int64_t>(i) * 3650 / calls);
  return {any(names) + " " + any(families),
          std::to_string(random() % 1000) + " Main Street",
          any(cities),
          "MA",
          std::to_string(10000 + random() % 90000),
          number(i % (calls / 4)),
          "Wants to talk about subject " + std::to_string(random() % 5000),
          "KLWR      ",
          "Male  ",
          std::to_string(day % 365 / 31 + 1) + "/" + std::to_string(day % 28 + 1) + "/" +
              std::to_string(2016 + day / 365),
          "00:01:30",
          "10:15:00 AM",
          "00:04:10",
          "Gardening"};
}

// The log, made once for all figures and removed at the end.
struct Log {
  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("lineweir_bench_" + std::to_string(::getpid()));
  std::unique_ptr<platform::SqliteEngine> engine;

  Log() {
    std::filesystem::create_directory(folder);
    engine = std::make_unique<platform::SqliteEngine>(folder);
    const std::string table(call_log_table);
    const auto database = engine->create("calls.mdb");
    database->create_table(table, new_log_columns("User"));
    database->index_numbers(table, log_position(CallerField::PhoneNumber));
    const auto rows = database->open_recordset(table);
    std::mt19937 random(20260105);
    const auto start = Clock::now();
    database->in_transaction([&] {
      for (int i = 0; i < calls; ++i) {
        const auto values = call(i, random);
        rows->add_new();
        for (int column = 0; column < columns; ++column) {
          rows->set_field(column, values[static_cast<std::size_t>(column)]);
        }
        rows->update();
      }
    });
    const std::chrono::duration<double> took = Clock::now() - start;
    std::printf("a million calls stored in one step: %.1f s, %.0f MB\n", took.count(),
                static_cast<double>(std::filesystem::file_size(folder / "calls.mdb")) / 1e6);
  }
  ~Log() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
};

Log& log() {
  static Log made;
  return made;
}

struct Desk {
  platform::ScriptedPlatform platform;
  Console console{platform.services(platform.files, *log().engine)};
  DatabaseViewerForm& form = console.DatabaseViewer;

  Desk() {
    console.startup.Main("");
    console.call_log.choose("calls.mdb");
  }

  void open() { console.Lineweir.ShowDatabaseMenuItem.on_click(); }
  void close() { form.unload(); }

  // Works until nothing is left; gives the longest slice.
  double finish() {
    double longest = 0;
    while (form.WorkTimer.enabled) {
      const auto start = Clock::now();
      form.WorkTimer.on_timer();
      const std::chrono::duration<double, std::milli> took = Clock::now() - start;
      longest = std::max(longest, took.count());
    }
    return longest;
  }
};

Desk& desk() {
  static Desk made;
  return made;
}

void opening_until_the_first_calls_show(benchmark::State& state) {
  desk();
  for (auto _ : state) {
    desk().open();
    benchmark::DoNotOptimize(desk().form.DBGrid1.cell(1, 0));
    state.PauseTiming();
    desk().close();
    state.ResumeTiming();
  }
}
BENCHMARK(opening_until_the_first_calls_show)->Unit(benchmark::kMillisecond);

void opening_as_a_whole(benchmark::State& state) {
  double longest = 0;
  for (auto _ : state) {
    desk().open();
    longest = std::max(longest, desk().finish());
    desk().close();
  }
  state.counters["longest_slice_ms"] = longest;
}
BENCHMARK(opening_as_a_whole)->Unit(benchmark::kMillisecond);

void search(benchmark::State& state, const char* words, bool whole) {
  desk().open();
  desk().finish();
  double longest = 0;
  for (auto _ : state) {
    desk().form.SearchText.text = words;
    if (whole) longest = std::max(longest, desk().finish());
    state.PauseTiming();
    state.counters["found"] = desk().form.DBGrid1.rows.get();
    desk().form.SearchText.text = "";
    desk().finish();
    state.ResumeTiming();
  }
  if (whole) state.counters["longest_slice_ms"] = longest;
  desk().close();
}
BENCHMARK_CAPTURE(search, first_calls, "smith", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, many, "smith salem", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, none, "nobody", true)->Unit(benchmark::kMillisecond);

void scrolling_a_page_of_40_calls(benchmark::State& state) {
  desk().open();
  desk().finish();
  std::mt19937 random(1);
  for (auto _ : state) {
    const int top = 1 + static_cast<int>(random() % (calls - 50));
    for (int row = top; row < top + 40; ++row) {
      benchmark::DoNotOptimize(desk().form.DBGrid1.row_texts(row));
    }
  }
  desk().close();
}
BENCHMARK(scrolling_a_page_of_40_calls)->Unit(benchmark::kMillisecond);

void sorting(benchmark::State& state) {
  desk().open();
  desk().finish();
  double longest = 0;
  for (auto _ : state) {
    desk().form.SortList.list_index = -1;
    desk().form.SortList.select(static_cast<int>(state.range(0)) + 1);
    longest = std::max(longest, desk().finish());
  }
  state.counters["longest_slice_ms"] = longest;
  desk().close();
}
BENCHMARK(sorting)->ArgName("column")->Arg(0)->Arg(6)->Arg(9)->Unit(benchmark::kMillisecond);

void following_a_new_call(benchmark::State& state) {
  desk().open();
  desk().finish();
  const auto database = log().engine->open("calls.mdb");
  const auto rows = database->open_recordset(std::string(call_log_table));
  for (auto _ : state) {
    state.PauseTiming();
    rows->add_new();
    rows->set_field(0, "Ann");
    rows->update();
    state.ResumeTiming();
    desk().form.FollowTimer.on_timer();
  }
  desk().close();
}
BENCHMARK(following_a_new_call)->Unit(benchmark::kMillisecond)->Iterations(200);

void callers_memory(benchmark::State& state) {
  std::mt19937 random(1);
  double longest = 0;
  for (auto _ : state) {
    const auto start = Clock::now();
    const auto known = find_history(desk().console.call_log.recordset(), desk().platform.letters,
                                    number(static_cast<int>(random() % (calls / 2))));
    benchmark::DoNotOptimize(known);
    const std::chrono::duration<double, std::milli> took = Clock::now() - start;
    longest = std::max(longest, took.count());
  }
  state.counters["longest_ms"] = longest;
}
BENCHMARK(callers_memory)->Unit(benchmark::kMillisecond);

void logging_a_call(benchmark::State& state) {
  Console& console = desk().console;
  for (auto _ : state) {
    CallerRecord& record = console.lines.CallerData(0);
    record.set(CallerField::CallerName, "Ann Smith");
    record.set(CallerField::PhoneNumber, "555 123 4567");
    console.call_log.log(0);
  }
}
BENCHMARK(logging_a_call)->Unit(benchmark::kMillisecond)->Iterations(2000);

void bare_insert_of_a_call(benchmark::State& state) {
  const std::filesystem::path file = log().folder / "bare.db";
  {
    bench::BareTable bare(file, columns);
    std::mt19937 random(1);
    const auto values = call(0, random);
    for (auto _ : state) {
      bare.insert(values);
      bare.checkpoint();
    }
  }
  std::filesystem::remove(file);
}
BENCHMARK(bare_insert_of_a_call)->Unit(benchmark::kMillisecond)->Iterations(2000);

void importing(benchmark::State& state) {
  std::string text = "Caller Name,City,PhoneNumber,Comments,Date\r\n";
  for (int i = 0; i < state.range(0); ++i) {
    text += "Ann Smith,Salem,555 123 4567,Wants to talk about the bridge,1/5/2016\r\n";
  }
  desk().platform.files.replace("old.csv", text);
  desk().open();
  desk().finish();
  ImportPreviewForm& preview = desk().console.ImportPreview;
  for (auto _ : state) {
    state.PauseTiming();
    desk().platform.dialogs.answer_file("old.csv");
    desk().form.ImportButton.on_click();
    while (preview.ReadTimer.enabled) preview.ReadTimer.on_timer();
    preview.ImportOk.on_click();
    state.ResumeTiming();
    preview.StoreTimer.on_timer();
    state.PauseTiming();
    desk().finish();
    state.ResumeTiming();
  }
  desk().close();
}
BENCHMARK(importing)
    ->ArgName("calls")
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace

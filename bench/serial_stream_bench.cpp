// What the box's stream and the two timers that follow it cost.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "support/scripted_console.h"
#include "wire/serial_buffer.h"

namespace lineweir::test {
namespace {

constexpr std::size_t megabyte = 1'000'000;
constexpr std::size_t piece_length = 100;

// Reports of all ten lines, each another than the one before, so that each is a change.
std::vector<std::string> changing_reports() {
  std::vector<std::string> reports;
  for (const char letter : std::string("RSNHPF")) {
    for (const char line : std::string("0123456789")) reports.push_back({letter, '0', line});
  }
  return reports;
}

std::string joined(const std::vector<std::string>& texts, std::size_t begin, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += texts[(begin + i) % texts.size()];
  return text;
}

// Text that looks like a report everywhere and is one nowhere, so that all of it stays.
std::string garbage() {
  std::string text;
  while (text.size() < megabyte) text += "0N0H0F Line 0A";
  text.resize(megabyte);
  return text;
}

void items_through_buffer(benchmark::State& state) {
  const auto items = static_cast<std::size_t>(state.range(0));
  const std::string piece = joined(changing_reports(), 0, items);
  SerialBuffer buffer;
  for (auto _ : state) {
    buffer.append(piece);
    const StatusScan scan = buffer.scan(lines_of_small_layout);
    buffer.drop(scan.consumed);
    benchmark::DoNotOptimize(scan.items.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(items_through_buffer)->Arg(1)->Arg(10)->ArgName("items");

void items_through_console(benchmark::State& state) {
  const auto items = static_cast<std::size_t>(state.range(0));
  const auto reports = changing_reports();
  std::vector<std::string> pieces;
  for (std::size_t begin = 0; begin < reports.size(); begin += items) {
    pieces.push_back(joined(reports, begin, items));
  }
  ScriptedConsole test("");
  std::size_t next = 0;
  for (auto _ : state) {
    test.box_sends(pieces[next]);
    next = (next + 1) % pieces.size();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(items_through_console)->Arg(1)->Arg(10)->ArgName("items");

void megabyte_of_garbage(benchmark::State& state) {
  const std::string text = garbage();
  for (auto _ : state) {
    SerialBuffer buffer;
    for (std::size_t begin = 0; begin < text.size(); begin += piece_length) {
      buffer.append(std::string_view(text).substr(begin, piece_length));
      const StatusScan scan = buffer.scan(lines_of_small_layout);
      buffer.drop(scan.consumed);
    }
    benchmark::DoNotOptimize(buffer.text().data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(megabyte_of_garbage)->Unit(benchmark::kMillisecond);

// The limit for anything that looks at each byte: one search for a byte that isn't there.
void megabyte_through_memchr(benchmark::State& state) {
  const std::string text = garbage();
  for (auto _ : state) benchmark::DoNotOptimize(std::memchr(text.data(), '~', text.size()));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(megabyte_through_memchr)->Unit(benchmark::kMillisecond);

void ten_items_through_memchr(benchmark::State& state) {
  const std::string text = joined(changing_reports(), 0, 10);
  for (auto _ : state) benchmark::DoNotOptimize(std::memchr(text.data(), '~', text.size()));
}
BENCHMARK(ten_items_through_memchr);

// A console whose every line rings, with one timer running.
struct RingingConsole : ScriptedConsole {
  RingingConsole(int line_count, Timer TimerElements::*running) : ScriptedConsole("") {
    MainForm& form = console.Lineweir;
    form.Line20Mode.checked = line_count > lines_of_small_layout;
    console.layout.set_line_count(line_count);
    console.layout.RedefineScreen();
    for (int line = 0; line < line_count; ++line) {
      console.lines.StatusLetter(line) = 'R';
      console.lines.ClockRunning(line) = 1;
      console.lines.ClockBase(line) = "10:00:00";
    }
    for (Element* element : form.elements()) {
      if (element->kind() == ElementKind::Timer) static_cast<Timer*>(element)->enabled = false;
    }
    (form.*running).enabled = true;
  }
};

// A tick each tenth of a second, of which every tenth shows another time.
void Timer1_tick(benchmark::State& state) {
  RingingConsole test(static_cast<int>(state.range(0)), &TimerElements::Timer1);
  for (auto _ : state) test.platform.loop.advance(platform::Milliseconds(100));
}
BENCHMARK(Timer1_tick)->Arg(10)->Arg(20)->ArgName("ringing");

// Light and dark in turn.
void Timer5_tick(benchmark::State& state) {
  RingingConsole test(static_cast<int>(state.range(0)), &TimerElements::Timer5);
  for (auto _ : state) test.console.Lineweir.Timer5.tick();
}
BENCHMARK(Timer5_tick)->Arg(10)->Arg(20)->ArgName("ringing");

void console_start(benchmark::State& state) {
  for (auto _ : state) {
    ScriptedConsole test("");
    benchmark::DoNotOptimize(test.console.lines.LineCount);
  }
}
BENCHMARK(console_start)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace lineweir::test

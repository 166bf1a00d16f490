// A week of virtual time at a console with 600 calls an hour, by one of its ways to the studio:
//
//   endurance_week box|socket|objects|server [HOURS]
//
// Prints a line of JSON for each hour: what the process holds and has used, the calls that were
// made, noted and logged, and what was wrong. Ends with 1 if anything was. scripts/endurance runs
// it and tells the rest.

#include <dirent.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "base/text.h"
#include "endurance/week_people.h"
#include "lines/status_letters.h"

namespace {

using namespace lineweir;
using namespace std::chrono_literals;
using endurance::WeekPeople;
using endurance::WeekStudio;

constexpr int hours_of_a_week = 168;
constexpr platform::Milliseconds turn = 500ms;
constexpr platform::Milliseconds settling = 30s;
constexpr int most_faults_told = 5;

double processor_seconds() {
  rusage used{};
  ::getrusage(RUSAGE_SELF, &used);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(used.ru_utime) + seconds(used.ru_stime);
}

double memory_megabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
  }
  return 0;
}

int open_handles() {
  DIR* folder = ::opendir("/proc/self/fd");
  int count = 0;
  while (::readdir(folder) != nullptr) ++count;  // NOLINT(concurrency-mt-unsafe)
  ::closedir(folder);
  // Itself, its parent, and the folder's own.
  return count - 3;
}

// Looks whether the console shows what is so, once nothing is on the way.
class Witness {
 public:
  explicit Witness(WeekStudio& studio) : studio_(studio) {}

  void look_at_rows(bool all_free) {
    Console& console = *studio_.desk().console;
    for (int line = 0; line < endurance::week_lines; ++line) {
      const char truth = studio_.letter(line);
      const char shown = console.lines.StatusLetter(line);
      const std::string row = "line " + std::to_string(line + 1);
      if ((shown == ' ' ? 'F' : shown) != truth) {
        fault(row + " shows '" + shown + "' and is '" + truth + "'");
      }
      if (!all_free) continue;
      if (truth != 'F') fault(row + " has a caller who has hung up");
      if (!trimmed(console.Lineweir.LineName(line).caption.get()).empty() ||
          !trimmed(console.Lineweir.LineStatus(line).caption.get()).empty()) {
        fault(row + " isn't blank");
      }
      if (console.lines.ClockRunning(line) != 0) fault(row + " has a running clock");
    }
    if (all_free && console.lines.TheNextCall != no_line) fault("a next call is left");
    if (!console.Lineweir.no_link.get().empty()) fault("there is no link");
  }

  // The people do nothing that has to be told them.
  void look_at_messages() {
    for (const std::string& text : std::exchange(studio_.desk().messages, {})) {
      fault("the console says: " + text);
    }
  }

  // Each of those that were noted is in the log once, and nobody else; how many are there.
  std::size_t look_at_log(const std::vector<std::string>& noted) {
    Console& console = *studio_.desk().console;
    platform::Recordset& rows = console.call_log.recordset();
    std::multiset<std::string> logged;
    platform::RowScan scan;
    scan.behind = last_row_;
    scan.limit = 100'000;
    scan.columns = {column_of_name(rows)};
    rows.scan(scan, [&](platform::RowId row, auto values) {
      last_row_ = row;
      logged.emplace(trimmed(values[0]));
    });
    for (const std::string& name : noted) {
      if (logged.count(name) != 1) {
        fault(name + " was logged " + std::to_string(logged.count(name)) + " times");
      }
      logged.erase(name);
    }
    for (const std::string& name : logged) {
      if (!name.empty()) fault(name + " was logged and not noted");
    }
    return noted.size();
  }

  void fault(const std::string& what) { faults_.push_back(what); }
  std::vector<std::string> take_faults() { return std::exchange(faults_, {}); }

 private:
  static int column_of_name(platform::Recordset& rows) {
    for (std::size_t i = 0; i < rows.fields().size(); ++i) {
      if (rows.fields()[i].name == "Caller Name") return static_cast<int>(i);
    }
    return 0;
  }

  WeekStudio& studio_;
  std::optional<platform::RowId> last_row_;
  std::vector<std::string> faults_;
};

// The number of faults.
std::size_t play(WeekStudio& studio, platform::VirtualEventLoop& loop, int hours) {
  std::size_t all_faults = 0;
  WeekPeople people(studio);
  Witness witness(studio);
  double used = processor_seconds();
  std::int64_t calls = 0;
  studio.take_written_calls();
  for (int hour = 1; hour <= hours; ++hour) {
    const platform::Milliseconds end = loop.now() + 1h;
    while (loop.now() < end) {
      loop.run([&] { people.act(); });
      loop.advance(turn);
    }
    witness.look_at_rows(false);
    witness.look_at_messages();
    people.end_all_calls();
    loop.advance(settling);
    witness.look_at_rows(true);
    const std::vector<std::string> noted = people.take_noted();
    const std::size_t logged = witness.look_at_log(noted);
    const std::int64_t made = people.calls() - std::exchange(calls, people.calls());
    const std::size_t written = studio.take_written_calls();
    if (studio.writes_calls_down() && written != static_cast<std::size_t>(made)) {
      witness.fault("the studio has written down " + std::to_string(written) + " calls of " +
                    std::to_string(made));
    }
    const double now_used = processor_seconds();
    std::vector<std::string> faults = witness.take_faults();
    const std::size_t fault_count = faults.size();
    all_faults += fault_count;
    if (faults.size() > most_faults_told) faults.resize(most_faults_told);
    const nlohmann::json told = {{"hour", hour},
                                 {"memory", memory_megabytes()},
                                 {"handles", open_handles()},
                                 {"processor", now_used - std::exchange(used, now_used)},
                                 {"calls", made},
                                 {"without_line", people.without_line()},
                                 {"logged", logged},
                                 {"fault_count", fault_count},
                                 {"faults", faults}};
    std::printf("%s\n",
                told.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
    std::fflush(stdout);
  }
  return all_faults;
}

}  // namespace

int main(int argc, char** argv) {
  platform::VirtualEventLoop loop;
  const auto studio = argc < 2 ? nullptr : endurance::make_week_studio(argv[1], loop);
  if (studio == nullptr) {
    std::fputs("usage: endurance_week box|socket|objects|server [HOURS]\n", stderr);
    return 2;
  }
  return play(*studio, loop, argc > 2 ? std::atoi(argv[2]) : hours_of_a_week) == 0 ? 0 : 1;
}

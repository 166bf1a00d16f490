// Measures the programs' windows from outside, side by side: time from the start to the first
// paint, resident memory, and the processor time that the console needs with every line ringing.
//
//   window_figures RUNS SECONDS    in a folder with the console's settings, on a display
//
// The starts are measured in an empty folder, without settings and so without a port to wait for.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int patience_milliseconds = 20000;

class Program {
 public:
  Program(const std::filesystem::path& path, const std::filesystem::path& folder) {
    int ends[2];
    if (pipe(ends) != 0) std::exit(1);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    std::string name = path.string();
    char* arguments[] = {name.data(), nullptr};
    started_ = Clock::now();
    if (posix_spawn(&process_, name.c_str(), &actions, nullptr, arguments, environ) != 0) {
      std::fprintf(stderr, "can't start %s\n", name.c_str());
      std::exit(1);
    }
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    output_ = ends[0];
  }
  ~Program() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
    close(output_);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // Milliseconds from the start to the report of the first paint.
  double await_paint() {
    pollfd readable{output_, POLLIN, 0};
    if (poll(&readable, 1, patience_milliseconds) <= 0) {
      std::fprintf(stderr, "no first paint\n");
      std::exit(1);
    }
    return std::chrono::duration<double, std::milli>(Clock::now() - started_).count();
  }

  double resident_megabytes() const {
    std::ifstream status("/proc/" + std::to_string(process_) + "/status");
    for (std::string line; std::getline(status, line);) {
      if (line.starts_with("VmRSS:")) return std::atof(line.c_str() + 6) / 1024;
    }
    return 0;
  }

  double processor_seconds() const {
    std::ifstream stat("/proc/" + std::to_string(process_) + "/stat");
    std::string text((std::istreambuf_iterator<char>(stat)), {});
    std::istringstream fields(text.substr(text.rfind(')') + 2));
    std::string skipped;
    for (int i = 0; i < 11; ++i) fields >> skipped;
    double user = 0;
    double system = 0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
  }

 private:
  pid_t process_ = 0;
  int output_ = -1;
  Clock::time_point started_;
};

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char* argv[]) {
  const int runs = argc > 1 ? std::atoi(argv[1]) : 15;
  const int seconds = argc > 2 ? std::atoi(argv[2]) : 60;
  setenv("LINEWEIR_REPORT_PAINT", "1", 1);
  const auto programs = std::filesystem::canonical("/proc/self/exe").parent_path();

  std::vector<double> bare_paint;
  std::vector<double> console_paint;
  std::vector<double> bare_memory;
  std::vector<double> console_memory;
  for (int run = 0; run < runs; ++run) {
    for (const bool bare : {true, false}) {
      const auto empty = std::filesystem::absolute("empty");
      std::filesystem::remove_all(empty);
      std::filesystem::create_directory(empty);
      Program program(programs / (bare ? "bare_window" : "lineweir"), empty);
      (bare ? bare_paint : console_paint).push_back(program.await_paint());
      std::this_thread::sleep_for(std::chrono::milliseconds(500));
      (bare ? bare_memory : console_memory).push_back(program.resident_megabytes());
    }
  }
  std::printf("first paint, ms:     bare %6.1f  console %6.1f  ratio %.2f\n", median(bare_paint),
              median(console_paint), median(console_paint) / median(bare_paint));
  std::printf("resident memory, MB: bare %6.1f  console %6.1f  ratio %.2f\n", median(bare_memory),
              median(console_memory), median(console_memory) / median(bare_memory));

  Program console(programs / "lineweir", std::filesystem::current_path());
  console.await_paint();
  std::this_thread::sleep_for(std::chrono::seconds(5));
  const double before = console.processor_seconds();
  std::this_thread::sleep_for(std::chrono::seconds(seconds));
  const double used = console.processor_seconds() - before;
  std::printf("processor time of the running console: %.2f s in %d s, %.2f %% of a core\n", used,
              seconds, 100 * used / seconds);
  return 0;
}

#include "desk/desk_program.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <deque>
#include <fstream>
#include <limits>
#include <ostream>
#include <stdexcept>

#include "desk/desk.h"
#include "desk/line_input.h"
#include "studio/device_link.h"
#include "studio/pseudo_terminal.h"
#include "studio/stop_signal.h"

namespace lineweir::desk {
namespace {

using Clock = std::chrono::steady_clock;
using exchange::Moment;

// No hand presses two keys faster. The console takes characters that come together for one key.
constexpr Moment between_keys{50};

constexpr const char* clear_screen = "\x1b[H\x1b[J";

class DeskProgram {
 public:
  DeskProgram(const DeskOptions& options, std::ostream& out)
      : options_(options),
        out_(out),
        desk_(options.layout),
        on_screen_(isatty(STDOUT_FILENO) == 1) {
    if (!options.link.empty()) link_.emplace(options.link, terminal_.device());
    if (!options.log.empty() && options.log != "-") {
      log_file_.open(options.log);
      if (!log_file_) throw std::runtime_error(options.log + ": can't be written");
    }
    out_ << "device " << terminal_.device() << std::endl;
  }

  void run() {
    draw_on_screen();
    std::array<pollfd, 3> watched{{{terminal_.descriptor(), POLLIN, 0},
                                   {stop_.descriptor(), POLLIN, 0},
                                   {STDIN_FILENO, POLLIN, 0}}};
    while (!(over_ && keys_.empty()) && (watched[1].revents & POLLIN) == 0) {
      poll(watched.data(), watched.size(), wait());
      play_script();
      send_key();
      take_lamps();
      if (watched[2].revents != 0 && !take_typing()) watched[2].fd = -1;
    }
    if (!on_screen_) draw();
  }

 private:
  Moment now() const { return std::chrono::duration_cast<Moment>(Clock::now() - start_); }

  // What poll() is to wait: -1 is for ever.
  int wait() const {
    Moment due = exchange::never;
    if (next_ < options_.script.size()) due = options_.script[next_].at;
    if (!keys_.empty()) due = std::min(due, key_due_);
    if (due == exchange::never) return -1;
    const auto left = std::max(due - now(), Moment{0}).count();
    return static_cast<int>(std::min<Moment::rep>(left, std::numeric_limits<int>::max()));
  }

  void play_script() {
    while (!over_ && next_ < options_.script.size() && options_.script[next_].at <= now()) {
      act(options_.script[next_++].action);
    }
  }

  void send_key() {
    if (keys_.empty() || now() < key_due_) return;
    terminal_.write(keys_.front());
    keys_.pop_front();
    key_due_ = now() + between_keys;
  }

  void take_lamps() {
    const std::string bytes = terminal_.read();
    if (bytes.empty()) return;
    const auto noise = desk_.noise();
    const auto changed = desk_.receive(bytes);
    for (const LampPlace& lamp : changed) {
      log("lamp " + lamp_name(desk_.layout(), lamp) + ' ' + lamp_text(desk_.lamp(lamp)));
    }
    if (desk_.noise() != noise) log("noise " + std::to_string(desk_.noise() - noise));
    if (!changed.empty()) draw_on_screen();
  }

  // False once nobody types any more.
  bool take_typing() {
    std::array<char, 1024> buffer;
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) return false;
    for (const std::string& line :
         typing_.receive({buffer.data(), static_cast<std::size_t>(count)})) {
      if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
      message_.clear();
      if (const auto action = parse_action(line, desk_.layout(), message_)) act(*action);
      if (!on_screen_ && !message_.empty()) out_ << message_ << std::endl;
    }
    draw_on_screen();
    return true;
  }

  void act(const DeskAction& action) {
    switch (action.kind) {
      case DeskAction::Kind::Press:
        log("key " + action.key);
        if (const auto bytes = desk_.press(action.key)) keys_.push_back(*bytes);
        return;
      case DeskAction::Kind::Show:
        if (!on_screen_) draw();
        return;
      case DeskAction::Kind::Quit:
        over_ = true;
        return;
    }
  }

  void log(const std::string& text) {
    if (options_.log.empty()) return;
    std::ostream& log = options_.log == "-" ? out_ : log_file_;
    log << exchange::format_seconds(now()) << ' ' << text.substr(0, text.find_last_not_of(' ') + 1)
        << std::endl;
  }

  void draw() { out_ << desk_.picture() << std::flush; }

  // With the transcript on the same screen there is no room for a picture that stands still.
  void draw_on_screen() {
    if (!on_screen_ || options_.log == "-") return;
    out_ << clear_screen << "device " << terminal_.device() << "\n\n"
         << desk_.picture() << '\n'
         << message_ << (message_.empty() ? "" : "\n")
         << "Type a key's name (main 3, next, dial 5) and Enter; quit ends.\n> " << std::flush;
  }

  const DeskOptions& options_;
  std::ostream& out_;
  const studio::StopSignal stop_;
  studio::PseudoTerminal terminal_;
  std::optional<studio::DeviceLink> link_;
  std::ofstream log_file_;
  Desk desk_;
  LineInput typing_;
  std::string message_;
  const bool on_screen_;
  // Pressed and not yet sent.
  std::deque<std::string> keys_;
  Moment key_due_{0};
  bool over_ = false;
  std::size_t next_ = 0;
  const Clock::time_point start_ = Clock::now();
};

}  // namespace

void run_desk(const DeskOptions& options, std::ostream& out) { DeskProgram(options, out).run(); }

}  // namespace lineweir::desk

// The real window with the simulated studio on its serial line, in real time: both seats of a busy
// show are worked with real keys, and what the rows show is held against the studio's own table.
// The show ends when enough has been seen, behind 4 seconds, or LINEWEIR_SHOW_SECONDS;
// LINEWEIR_SHOW_PICTURE names a picture of the window, taken half way.

#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <QApplication>
#include <QPixmap>
#include <QTest>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/console.h"
#include "desktop/desktop.h"
#include "desktop/element_widget.h"
#include "desktop/form_canvas.h"
#include "desktop/main_window.h"
#include "desktop/program.h"
#include "forms/picture_names.h"
#include "lines/status_letters.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "studio/boxed_exchange.h"
#include "studio/pseudo_terminal.h"

namespace lineweir::test {
namespace {

using namespace std::chrono_literals;
using platform::Milliseconds;

studio::BoxedExchangeOptions busy_show() {
  studio::BoxedExchangeOptions options;
  options.seed = 7;
  options.callers = {700ms, 6000ms, 6000ms};
  return options;
}

// The studio at the far end of the console's line. It is served every 20 ms of the loop.
class StudioOnLine {
 public:
  explicit StudioOnLine(platform::QtEventLoop& loop) : exchange(busy_show()), loop_(loop) {
    ::setenv("LINEWEIR_COM1", line_.device().c_str(), 1);
    serve();
  }
  ~StudioOnLine() { loop_.cancel(call_); }
  StudioOnLine(const StudioOnLine&) = delete;
  StudioOnLine& operator=(const StudioOnLine&) = delete;

  // Turns in which neither end has said a thing.
  int silent_turns() const { return silent_turns_; }
  // All turns so far.
  long turns() const { return turns_; }

  // Free and busy lines are blanks to a console.
  char expected_letter(int line) const {
    const char letter = exchange.letter(line);
    return letter == 'F' || letter == 'B' ? ' ' : letter;
  }

  studio::BoxedExchange exchange;

 private:
  void serve() {
    ++turns_;
    const Milliseconds now = loop_.now();
    const std::string heard = line_.read();
    exchange.receive(heard, now);
    exchange.advance(now);
    exchange.take_records();
    const std::string said = exchange.take_output();
    if (!said.empty()) line_.write(said);
    silent_turns_ = said.empty() && heard.empty() ? silent_turns_ + 1 : 0;
    call_ = loop_.schedule(20ms, [this] { serve(); });
  }

  platform::QtEventLoop& loop_;
  studio::PseudoTerminal line_;
  platform::EventLoop::CallId call_ = 0;
  int silent_turns_ = 0;
  long turns_ = 0;
};

struct WindowOnLine {
  WindowOnLine() {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main({});
    desktop.flush();
    console.Lineweir.PortOn.on_click();
  }
  ~WindowOnLine() { comm1.close(); }

  QWidget& window() { return *desktop.main_frame().window(); }

  ElementWidget& widget(const Control& control) {
    return *desktop.main_frame().main_window()->canvas().widget_of(control);
  }

  void press(Qt::Key key) { QTest::keyClick(window().windowHandle(), key); }

  platform::QtEventLoop loop;
  StudioOnLine studio{loop};
  platform::ScriptedPlatform rest;
  platform::QtSystemClock clock;
  platform::QtSerialPort comm1{loop, 1200, 1};
  Console console{services()};
  Desktop desktop{console};
  std::vector<std::string> messages;

 private:
  platform::Services services() {
    return platform::services_with(rest.services(),
                                   {.loop = &loop, .clock = &clock, .comm1 = &comm1});
  }
};

// The screener and the host, by turns, each at the keyboard.
class People {
 public:
  explicit People(WindowOnLine& desk) : desk_(desk) {}

  void work() {
    MainForm& form = desk_.console.Lineweir;
    const bool screens = turn_ / turns_in_a_role % 2 == 0;
    if (turn_ % turns_in_a_role == 0) {
      form.MitelPhone1.on_click();
      (screens ? form.ScreenerMode : form.StudioMode).on_click();
    }
    if (screens) {
      desk_.press(holds('P') ? Qt::Key_E : Qt::Key_A);
    } else {
      desk_.press(key_of_host());
    }
    ++turn_;
  }

 private:
  static constexpr int turns_in_a_role = 9;

  Qt::Key key_of_host() const {
    if (!holds('N')) return Qt::Key_N;
    if (!holds('C')) return Qt::Key_X;
    return turn_ % 2 == 0 ? Qt::Key_D : Qt::Key_R;
  }

  bool holds(char letter) const {
    for (int line = 0; line < desk_.console.lines.LineCount; ++line) {
      if (desk_.console.lines.StatusLetter(line) == letter) return true;
    }
    return false;
  }

  WindowOnLine& desk_;
  int turn_ = 0;
};

// Holds what the rows tell against the studio's own table. What has just happened there takes the
// time of its report, three characters, to be heard here; where the line stays silent longer than
// that the two must agree.
class Witness {
 public:
  explicit Witness(WindowOnLine& desk) : desk_(desk) {}

  // After each turn of the studio.
  void look() {
    if (desk_.studio.silent_turns() < turns_of_a_report) return;
    desk_.desktop.flush();
    ++compared;
    for (int line = 0; line < desk_.console.lines.LineCount; ++line) {
      const char letter = desk_.console.lines.StatusLetter(line);
      if (seen.find(letter) == std::string::npos) seen += letter;
      CAPTURE(line);
      CAPTURE(letter);
      const char expected = desk_.studio.expected_letter(line);
      CAPTURE(expected);
      int& apart = turns_apart_[static_cast<std::size_t>(line)];
      apart = letter == expected ? 0 : apart + 1;
      CHECK(apart <= turns_of_a_report);
      check_row(line, letter);
    }
  }

  // Rows in each state of the show, often enough.
  bool has_seen_enough() const {
    constexpr long enough = 100;
    constexpr std::string_view states = " RPSNC";
    return compared >= enough && std::ranges::all_of(states, [this](char letter) {
             return seen.find(letter) != std::string::npos;
           });
  }

  long compared = 0;
  std::string seen;

 private:
  void check_row(int line, char letter) {
    MainForm& form = desk_.console.Lineweir;
    const std::string status = desk_.widget(form.LineStatus(line)).shown_caption().toStdString();
    const std::string& strip = form.DataRow(line).picture;
    if (letter == 'S') {
      const bool next = strip == pictures::DataRowGreen;
      CHECK((next || strip == pictures::DataRowWhite));
      CHECK(status == (next ? "Next" : "Ready"));
      return;
    }
    const bool on_air = is_on_air_or_locked(letter);
    CHECK(strip == (on_air ? pictures::DataRowRed : pictures::DataRowWhite));
    // The other letters' rows tell what the user has chosen to see.
    if (on_air || letter == ringing_letter) CHECK(status == status_text_of(letter));
  }

  static constexpr int turns_of_a_report = 3;

  WindowOnLine& desk_;
  std::array<int, 10> turns_apart_{};
};

std::chrono::seconds length_of_show() {
  const char* text = std::getenv("LINEWEIR_SHOW_SECONDS");
  return std::chrono::seconds(text == nullptr ? 4 : std::max(1, std::atoi(text)));
}

TEST_CASE("through a busy show the window's rows tell what the studio's own table says") {
  WindowOnLine desk;
  REQUIRE(desk.console.Lineweir.PortOn.checked);
  People people(desk);
  Witness witness(desk);
  const Milliseconds start = desk.loop.now();
  const Milliseconds length = length_of_show();
  long seen_turn = 0;
  Milliseconds next_turn = start + 1s;
  bool pictured = false;
  constexpr Milliseconds longest = 60s;
  while (desk.loop.now() - start < length ||
         (!witness.has_seen_enough() && desk.loop.now() - start < longest)) {
    desk.loop.yield();
    const Milliseconds now = desk.loop.now();
    if (desk.studio.turns() != seen_turn) {
      seen_turn = desk.studio.turns();
      witness.look();
    }
    if (now >= next_turn) {
      next_turn = now + 400ms;
      people.work();
    }
    if (!pictured && now - start > length / 2) {
      pictured = true;
      const char* file = std::getenv("LINEWEIR_SHOW_PICTURE");
      if (file != nullptr) desk.window().grab().save(QString::fromLocal8Bit(file));
    }
  }
  MESSAGE("looked " << witness.compared << " times, letters seen: " << witness.seen);
  CHECK(witness.has_seen_enough());
  // People press keys by what they last saw, so that some find nothing to act on.
  for (const std::string& message : desk.messages) {
    CHECK(message == "That command or line is not available at this time!");
  }
}

}  // namespace
}  // namespace lineweir::test

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  lineweir::dress_application();
  return doctest::Context(argc, argv).run();
}

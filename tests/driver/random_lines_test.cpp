#include <doctest/doctest.h>

#include <random>

#include "driver/places.h"
#include "driver_fixture.h"

namespace lineweir::test {
namespace {

constexpr std::string_view verbs[] = {
    "click",
    "dblclick",
    "rightclick",
    "press",
    "release",
    "type",
    "set",
    "get",
    "expect",
    "focus",
    "blur",
    "select",
    "cell",
    "drag",
    "close",
    "list",
    "key",
    "resize",
    "minimise",
    "restore",
    "forms",
    "messages",
    "trace",
    "call",
    "launch",
    "quit",
    "clock",
    "advance",
    "serial Comm1 in",
    "serial Comm1 out",
    "serial Comm2 in",
    "serial Comm1 reply",
    "serial Comm1 fail",
    "socket accept",
    "socket open",
    "socket in",
    "socket reply",
    "socket out",
    "socket drop",
    "remote present",
    "remote result",
    "remote calls",
    "remote callback",
    "remote open",
    "answer file",
    "answer input",
    "answer question",
    "answer font",
    "dialogs",
    "system",
};

constexpr std::string_view values[] = {
    "0",
    "1",
    "-1",
    "5",
    "10",
    "19",
    "255",
    "300",
    "99999999999",
    "1.5",
    "1e300",
    "true",
    "false",
    "null",
    "\"\"",
    "\"N05\"",
    "\"D\"",
    "\"F00R01S02H03\"",
    "\"12:00:00\"",
    "\"\\u0004\\u0004\\u0086\\u0005\\u0005\"",
    "[]",
    "[\"a\"]",
    "{}",
    "yes",
    "cancel",
    "\"x\\r\\b\"",
    "GetCadence",
    "Timer4_Timer",
    "Form_KeyDown",
    "ReturnCommand",
    "Lineweir",
    "MyMsgbox",
    "[",
    "\"",
    "PhoneCommand",
};

class LineMaker {
 public:
  explicit LineMaker(unsigned seed) : random_(seed) {}

  void learn_paths(Console& console) {
    paths_.clear();
    for (Form* form : console.forms()) {
      for (std::string& path : driver::element_paths(console, *form)) {
        paths_.push_back(std::move(path));
      }
      paths_.push_back(form->name());
    }
    for (const char* state :
         {"TheNextCall", "LineTable.StatusLetter(4)", "VisibleLines", "LineCount",
          "CallerData(3).City", "ThePhoneFlag", "Comm1.PortOpen"}) {
      paths_.emplace_back(state);
    }
  }

  std::string line() {
    std::string text(pick(verbs));
    const std::size_t words = below(4);
    for (std::size_t i = 0; i < words; ++i) {
      text += ' ';
      if (below(2) == 0 && !paths_.empty()) {
        text += paths_[below(paths_.size())];
        if (below(3) == 0) text += pick(properties);
      } else {
        text += pick(values);
      }
    }
    if (below(10) == 0) text[below(text.size())] = static_cast<char>(below(256));
    return text;
  }

  std::size_t below(std::size_t end) { return random_() % end; }

 private:
  static constexpr std::string_view properties[] = {
      ".Visible", ".Enabled", ".Caption", ".Text", ".Value", ".Checked",
      ".Left",    ".Width",   ".Height",  ".List", ".Count", ".Interval"};

  template <std::size_t N>
  std::string_view pick(const std::string_view (&texts)[N]) {
    return texts[below(N)];
  }

  std::mt19937 random_;
  std::vector<std::string> paths_;
};

bool is_one_line_of_ascii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

TEST_CASE("Every line gets one reply, whatever it holds") {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    DriverFixture driver;
    LineMaker maker(seed);
    for (int count = 0; count < 1500; ++count) {
      if (!driver.session.launched()) driver.say("launch D");
      if (count % 100 == 0 && driver.session.launched()) {
        maker.learn_paths(driver.session.console());
      }
      const std::string line = maker.line();
      CAPTURE(seed);
      CAPTURE(line);
      const auto reply = driver::carry_out(driver.session, line);
      if (!reply) continue;
      REQUIRE((reply->line == "ok" || reply->line.starts_with("= ") ||
               reply->line.starts_with("error ")));
      REQUIRE(is_one_line_of_ascii(reply->line));
    }
  }
}

TEST_CASE("Lines of any bytes get a reply or none") {
  std::mt19937 random(1);
  LaunchedFixture driver;
  for (int count = 0; count < 5000; ++count) {
    std::string line(random() % 40, ' ');
    for (char& c : line) c = static_cast<char>(random() % 256);
    const auto reply = driver::carry_out(driver.session, line);
    if (reply) REQUIRE(is_one_line_of_ascii(reply->line));
  }
}

}  // namespace
}  // namespace lineweir::test

#include "desktop/command_line.h"

#include <doctest/doctest.h>
#include <stdlib.h>

namespace lineweir {
namespace {

CommandLine parsed(const std::vector<std::string>& words, std::string_view locale = "") {
  return parse_command_line(words, locale);
}

TEST_SUITE("command line") {
  TEST_CASE("the console's argument is the first word that is no option") {
    CHECK(parsed({}).argument == "");
    CHECK(parsed({"D"}).argument == "D");
    CHECK(parsed({"E", "D"}).argument == "E");
    CHECK(parsed({"--charset", "1250", "D"}).argument == "D");
    CHECK(parsed({"D", "--charset=1250"}).argument == "D");
    CHECK(parsed({"-x"}).argument == "-x");
  }

  TEST_CASE("an option that there isn't is told, and is no argument of the console") {
    CHECK(parsed({"D", "--practice", "--charset", "1250"}).unknown_option.empty());
    const CommandLine line = parsed({"--practise", "--nonsense", "D"});
    CHECK(line.unknown_option ==
          "lineweir: there is no option --practise; lineweir --help lists them\n");
    CHECK(line.argument == "D");
    // Qt takes its own off later.
    CHECK(line.problem.empty());
  }

  TEST_CASE("windows need a display, or a platform that is named") {
    using Words = std::vector<std::string>;
    const auto only = [](std::string_view set) {
      return [set](const char* name) { return name == set; };
    };
    CHECK(may_have_windows({}, only("DISPLAY")));
    CHECK(may_have_windows({}, only("WAYLAND_DISPLAY")));
    CHECK(may_have_windows({}, only("QT_QPA_PLATFORM")));
    CHECK(may_have_windows(Words{"D", "-platform", "offscreen"}, only("")));
    CHECK_FALSE(may_have_windows(Words{"D"}, only("HOME")));
  }

  TEST_CASE("the set is that of the locale, unless one is named") {
    CHECK(parsed({}).code_page->name == "windows-1252");
    CHECK(parsed({}, "pl_PL.UTF-8").code_page->name == "windows-1250");
    CHECK(parsed({"--charset", "windows-1251"}, "pl_PL").code_page->name == "windows-1251");
    CHECK(parsed({"--charset=cp1253", "D"}, "pl_PL").code_page->name == "windows-1253");
  }

  TEST_CASE("of the environment's locales the strongest that is told names the letters") {
    const auto set = [](const char* name, const char* value) { ::setenv(name, value, 1); };
    const std::string before = locale_of_letters();
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) ::unsetenv(name);
    CHECK(locale_of_letters() == "");
    set("LANG", "pl_PL.UTF-8");
    CHECK(locale_of_letters() == "pl_PL.UTF-8");
    set("LC_CTYPE", "el_GR.UTF-8");
    CHECK(locale_of_letters() == "el_GR.UTF-8");
    set("LC_ALL", "ru_RU.UTF-8");
    CHECK(locale_of_letters() == "ru_RU.UTF-8");
    set("LC_ALL", "");
    CHECK(locale_of_letters() == "el_GR.UTF-8");
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) ::unsetenv(name);
    if (!before.empty()) set("LANG", before.c_str());
  }

  TEST_CASE("a diagnosis is asked for, beside whatever else is said") {
    CHECK_FALSE(parse_command_line({"D"}, "").diagnose);
    const CommandLine line = parse_command_line({"--diagnose", "--charset", "windows-1250"}, "");
    CHECK(line.diagnose);
    CHECK(line.code_page->name == "windows-1250");
  }

  TEST_CASE("the version is asked for, and nothing else is done then") {
    CHECK_FALSE(parsed({"D"}).version);
    CHECK(parsed({"--version"}).version);
    CHECK(parsed({"--version"}).unknown_option.empty());
  }

  TEST_CASE("practice is asked for by a word of its own, beside the others") {
    CHECK_FALSE(parsed({"D"}).practice);
    const CommandLine line = parsed({"--practice", "--charset", "windows-1250", "D"});
    CHECK(line.practice);
    CHECK(line.argument == "D");
    CHECK(line.code_page->name == "windows-1250");
  }

  TEST_CASE("a set that there isn't is a problem, and help is asked for") {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"--charset", "utf-8"}, {"--charset="}, {"--charset"}}) {
      CHECK_FALSE(parsed(words).problem.empty());
    }
    CHECK(parsed({"--charset", "latin1"}).problem == "lineweir: no such character set: latin1\n");
    CHECK(parsed({"--help"}).help);
    CHECK_FALSE(parsed({"D"}).help);
    CHECK(std::string(usage_text).find("--charset SET") != std::string::npos);
  }
}

}  // namespace
}  // namespace lineweir

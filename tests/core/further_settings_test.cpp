#include "core/further_settings.h"

#include <doctest/doctest.h>

#include "state/settings_record.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_SUITE("core/further settings") {
  TEST_CASE("a choice is read whatever stands around it") {
    ScriptedConsole test;
    const MenuItem& sound = test.console.Lineweir.UrgentSound;
    for (const char* text :
         {"UrgentSound=1", "urgentsound = 1\r\n", "x=2\n\n=\nUrgentSound=1\nlast"}) {
      CAPTURE(text);
      test.console.Lineweir.UrgentSound.checked = false;
      apply_further_settings(test.console, text);
      CHECK(sound.checked);
    }
    for (const char* text : {"UrgentSound=0", "UrgentSound", "UrgentSound=", "UrgentSound=yes"}) {
      CAPTURE(text);
      test.console.Lineweir.UrgentSound.checked = true;
      apply_further_settings(test.console, text);
      CHECK_FALSE(sound.checked);
    }
    test.console.Lineweir.UrgentSound.checked = true;
    apply_further_settings(test.console, std::string("\0\xff=\n==", 6));
    CHECK(sound.checked);
  }

  TEST_CASE("lines that the program doesn't know stay, and nothing is written for a first start") {
    ScriptedConsole test;
    CHECK(with_further_settings(test.console, "") == "");
    CHECK(with_further_settings(test.console, "a=b\r\n# c") == "a=b\n# c\n");
    test.console.Lineweir.UrgentSound.checked = true;
    CHECK(with_further_settings(test.console, "a=b") == "a=b\nUrgentSound=1\n");
    test.console.Lineweir.UrgentSound.checked = false;
    CHECK(with_further_settings(test.console, "UrgentSound=1\na=b") == "UrgentSound=0\na=b\n");
  }

  TEST_CASE("a line of any name is read, set and taken away among the others") {
    const std::string text = "a=1\n# note\nUrgentSound=1\nA b = c=d \n=5\n";
    const auto settings = further_settings_of(text);
    REQUIRE(settings.size() == 4);
    CHECK(settings[3].name == "A b");
    CHECK(settings[3].value == "c=d");
    CHECK(with_further_setting(text, "a B", "x") == "a=1\n# note\nUrgentSound=1\na B=x\n=5\n");
    CHECK(with_further_setting("a=1\n", "b", "2") == "a=1\nb=2\n");
    CHECK(with_further_setting("a=1\nb=2\nA=3\n", "a", "") == "b=2\n");
    CHECK(with_further_setting("", "a", "") == "");
  }

  TEST_CASE("of lines with the same name, which only a hand makes, the one that is written stays") {
    CHECK(with_further_setting("a=1\nb=2\nA=3\n", "a", "4") == "a=4\nb=2\n");
    ScriptedConsole test;
    CHECK(with_further_settings(test.console, "UrgentSound=0\nUrgentSound=1\n") ==
          "UrgentSound=0\n");
  }

  TEST_CASE("the file is written with the settings, and only where it says something else") {
    ScriptedConsole test;
    platform::MemoryFiles& files = test.platform.files;
    const std::string file(further_settings_file);
    test.console.Lineweir.SaveSettingsMenu.on_click();
    CHECK_FALSE(files.exists(file));
    test.console.Lineweir.UrgentSound.checked = true;
    test.console.Lineweir.SaveSettingsMenu.on_click();
    CHECK(files.read(file) == "UrgentSound=1\n");
  }

  TEST_CASE("a file that is too long to be one of these is left alone") {
    ScriptedConsole test;
    platform::MemoryFiles& files = test.platform.files;
    const std::string file(further_settings_file);
    const std::string other(200'000, 'x');
    files.replace(file, other);
    test.console.Lineweir.UrgentSound.checked = true;
    test.console.Lineweir.SaveSettingsMenu.on_click();
    CHECK(files.read(file) == other);
  }
}

}  // namespace
}  // namespace lineweir::test

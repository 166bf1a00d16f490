#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "screen/fonts.h"
#include "state/settings_record.h"
#include "support/scripted_console.h"

namespace lineweir {
namespace {

using platform::Milliseconds;

constexpr std::array extremes = {-32768, -1, 0, 1, 32767};

// A change of an element is one pass of whatever shows it.
class ChangeCount final : public FormWatch {
 public:
  using FormWatch::FormWatch;
  int changes = 0;

 private:
  void changed(Element&, PropertyId) override { ++changes; }
};

// A console on its way from a settings file to the end of its first seconds.
struct StartedConsole {
  explicit StartedConsole(const std::string& settings_file) {
    platform.files.replace(std::string(settings_file_name), settings_file);
    console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
    console.startup.Main("D");
    platform.loop.advance(Milliseconds{2000});
  }

  platform::ScriptedPlatform platform;
  std::vector<std::string> trace;
  Console console{platform.services()};
  ChangeCount count{console.Lineweir};
};

SettingsRecord usual_settings() {
  test::ScriptedConsole desk;
  return desk.console.settings.collect();
}

std::vector<std::size_t> offsets_of_numbers() {
  std::vector<std::size_t> offsets;
  for (const SettingsField& field : settings_fields) {
    if (field.kind == SettingKind::Text) continue;
    for (std::size_t place = 0; place < field.width; place += 2) {
      offsets.push_back(field.offset + place);
    }
  }
  return offsets;
}

std::string with_number(std::string file, std::size_t offset, int value) {
  file[offset] = static_cast<char>(value & 0xFF);
  file[offset + 1] = static_cast<char>((value >> 8) & 0xFF);
  return file;
}

void check_sensible(Console& console) {
  MainForm& form = console.Lineweir;
  CHECK(form.visible);
  CHECK(form.width > 0);
  CHECK(form.height > 0);
  CHECK(form.window_state >= window_normal);
  CHECK(form.window_state <= window_maximised);
  CHECK(console.program.GroupNumber >= 1);
  CHECK(console.program.VisibleLines == console.lines.LineCount);
  const int font = form.LineName(0).font.size;
  CHECK(font >= smallest_font);
  CHECK(font <= largest_font);
  for (int column = 0; column < column_count; ++column) {
    CAPTURE(column);
    CHECK(form.column_labels(column)(0).width >= 0);
    const bool checked = console.DisplayOptionForm.CheckItem(column).value == 1;
    const auto& in_use = console.display.ColumnsInUse;
    CHECK(checked == (std::ranges::find(in_use, column) != in_use.end()));
  }
  // And it can be stored again.
  console.Lineweir.SaveSettingsMenu.on_click();
  CHECK_FALSE(console.MyMsgbox.Label1.caption.get().starts_with("The settings could not"));
}

TEST_CASE(
    "any number in the settings file ends in a sensible console after as much work as usual") {
  const std::string usual = encode_settings(usual_settings());
  const int usual_changes = StartedConsole(usual).count.changes;
  REQUIRE(usual_changes > 0);
  for (const std::size_t offset : offsets_of_numbers()) {
    for (const int value : extremes) {
      CAPTURE(offset);
      CAPTURE(value);
      StartedConsole desk(with_number(usual, offset, value));
      CHECK(desk.count.changes < 3 * usual_changes);
      check_sensible(desk.console);
      for (const std::string& line : desk.trace) {
        // The clocks can do nothing with an offset below 0, which a user can type.
        const bool is_clock = desk.console.clock_state.DelayOffset < 0 &&
                              line.starts_with("Lineweir_Timer1_Timer Error - ");
        CHECK_MESSAGE((is_clock || line.find(" Error - ") == std::string::npos), line);
      }
    }
  }
}

TEST_CASE("so does a file that is cut anywhere") {
  const std::string usual = encode_settings(usual_settings());
  for (std::size_t length = 0; length < usual.size(); length += 7) {
    CAPTURE(length);
    StartedConsole desk(usual.substr(0, length));
    check_sensible(desk.console);
  }
}

}  // namespace
}  // namespace lineweir

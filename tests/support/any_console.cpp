#include "support/any_console.h"

#include <array>
#include <string>
#include <vector>

#include "clocks/plan_builder.h"
#include "support/call_log_file.h"

namespace lineweir::test {
namespace {

constexpr std::array plan_paths = {"NoName.TXT", "/shows/morning.txt", "evening.txt"};

class Choices {
 public:
  explicit Choices(std::uint32_t seed) : random_(seed) {}

  int below(int end) { return static_cast<int>(random_() % static_cast<std::uint32_t>(end)); }
  int between(int first, int last) { return first + below(last - first + 1); }
  bool heads() { return below(2) == 1; }

 private:
  std::mt19937 random_;
};

void choose_columns(Console& console, Choices& choices) {
  DisplayDataForm& form = console.DisplayOptionForm;
  for (int column = first_optional_column; column < column_count; ++column) {
    const bool checked = choices.heads();
    if ((form.CheckItem(column).value == 1) != checked) {
      form.CheckItem(column).value = checked ? 1 : 0;
      form.CheckItem(column).on_click();
    }
    console.display.set_width(column, choices.between(0, 4000));
  }
  for (int swaps = choices.below(5); swaps > 0 && form.List1.list_count() > 0; --swaps) {
    const int count = form.List1.list_count();
    const int from = choices.below(count);
    form.List1.on_drag(from, choices.below(count));
  }
  console.display.collect();
  console.display.RefreshColumnOrder();
}

void choose_lines(Console& console, Choices& choices, int most_lines) {
  const bool twenty = choices.heads() && most_lines == lines_of_large_layout;
  console.Lineweir.Line20Mode.checked = twenty;
  console.layout.set_line_count(twenty ? lines_of_large_layout : lines_of_small_layout);
  console.layout.RedefineScreen();
}

void choose_menus(Console& console, Choices& choices) {
  MainForm& form = console.Lineweir;
  for (MenuItem* item :
       {&form.EventClockMenu, &form.TimeClockMenuItem, &form.AutoDataEntry, &form.SyncTimeMenu,
        &form.DigiClock, &form.TextGrowToggle, &form.ServerShowData, &form.NextBarDisable}) {
    if (choices.heads()) item->on_click();
  }
  form.RemoteCom(choices.between(1, 4)).on_click();
  (choices.heads() ? form.RemoteOn : form.RemoteOff).on_click();
  (choices.heads() ? form.DimLineNumMenu : form.StudioLinNumMenu).on_click();
  (choices.heads() ? form.StudioMode : form.ScreenerMode).on_click();
  if (choices.below(3) == 0) form.PassiveMode.on_click();
  if (form.StudioMode.checked && choices.heads()) form.RemoteNext.on_click();
  if (choices.heads()) form.OptionsButton.on_click();
}

void choose_values(Console& console, Choices& choices) {
  for (bool& in_use : console.caller_data.LogFieldOn) in_use = choices.heads();
  console.program.OperatorName = "Ann " + std::to_string(choices.below(100));
  console.program.MessageFile = "LISTS" + std::to_string(choices.below(100)) + ".LWB";
  console.clock_state.Warning1 = choices.between(0, 3598);
  console.clock_state.Warning2 = choices.between(0, 3598);
  console.clock_state.DelayOffset = choices.below(60);
  console.fonts.FontChange({choices.heads() ? "Serif" : "Sans", choices.between(6, 72),
                            choices.heads(), choices.heads()});
  console.Lineweir.width = choices.between(3000, 20000);
  console.Lineweir.height = choices.between(3000, 20000);
  console.layout.RedefineScreen();
  const std::string plan = plan_paths[static_cast<std::size_t>(choices.below(3))];
  if (plan == default_show_name) {
    console.show_plan.load_default_plan();
  } else {
    console.show_plan.load_plan(plan);
  }
  if (choices.heads()) console.call_log.choose(log_path);
}

}  // namespace

void offer_files(platform::ScriptedPlatform& platform) {
  platform.files.replace("/shows/morning.txt", encode_show_plan(plan_of("06:00:00", "09:00:00")));
  platform.files.replace("evening.txt", encode_show_plan(plan_of("19:00:00", "20:00:00")));
  create_log(platform);
}

void choose_anything(Console& console, std::uint32_t seed, int most_lines) {
  Choices choices(seed);
  choose_lines(console, choices, most_lines);
  choose_menus(console, choices);
  choose_columns(console, choices);
  choose_values(console, choices);
}

}  // namespace lineweir::test

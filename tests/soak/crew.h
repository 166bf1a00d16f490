#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "soak/studio_desk.h"

namespace lineweir::test {

// The two people at one console, by turns: the screener answers, notes who calls and makes ready;
// the host takes the next caller to air and drops. Now and then a caller isn't noted.
class Crew {
 public:
  explicit Crew(StudioDesk& desk) : desk_(desk) {}

  void work() {
    MainForm& form = desk_.console.Lineweir;
    form.MitelPhone1.checked = true;
    const bool screens = turn_ / turns_in_a_role % 2 == 0;
    if (turn_ % turns_in_a_role == 0) (screens ? form.ScreenerMode : form.StudioMode).on_click();
    if (screens) {
      screen(form);
    } else {
      take_to_air(form);
    }
    ++turn_;
    take_log();
  }

  void drop_all() {
    for (int line = 0; line < desk_.console.lines.LineCount; ++line) {
      if (desk_.console.lines.StatusLetter(line) == ' ') continue;
      desk_.console.phone.PhoneCommand("F0" + std::to_string(line), bank_main);
    }
    take_log();
  }

  // Reads what was logged since the last call.
  void take_log() {
    constexpr std::string_view noted = "Caller Name=Caller ";
    for (const std::string& step : desk_.databases.steps) {
      if (step.starts_with(noted)) ++logged_.at(std::stoul(step.substr(noted.size())));
    }
    desk_.databases.steps.clear();
  }

  std::size_t noted_callers() const { return logged_.size(); }
  long logged_otherwise_than_once() const {
    return std::ranges::count_if(logged_, [](int times) { return times != 1; });
  }

 private:
  static constexpr int turns_in_a_role = 7;

  void screen(MainForm& form) {
    bool at_handset = false;
    for (int line = 0; line < desk_.console.lines.LineCount; ++line) {
      if (desk_.console.lines.StatusLetter(line) != 'P') continue;
      at_handset = true;
      if (turn_ % 3 != 0) note_caller(form, line);
    }
    (at_handset ? form.NextButton : form.NextToConfButton).on_click();
  }

  void take_to_air(MainForm& form) {
    bool on_air = false;
    for (int line = 0; line < desk_.console.lines.LineCount; ++line) {
      on_air = on_air || desk_.console.lines.StatusLetter(line) == 'N';
    }
    (on_air ? form.Drop1 : form.NextButton).on_click();
  }

  void note_caller(MainForm& form, int line) {
    CallerRecord& record = desk_.console.lines.CallerData(line);
    if (record.holds_data()) return;
    const std::string name = "Caller " + std::to_string(logged_.size());
    logged_.push_back(0);
    record.set(CallerField::CallerName, name);
    form.LineName(line).caption = name;
  }

  StudioDesk& desk_;
  int turn_ = 0;
  // How often each noted caller was logged.
  std::vector<std::uint8_t> logged_;
};

}  // namespace lineweir::test

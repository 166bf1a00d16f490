#include "boxlink/line_steps.h"

#include <string_view>

#include "core/console.h"
#include "core/text.h"
#include "core/time_text.h"

namespace lineweir {
namespace {

bool one_of(char letter, std::string_view letters) {
  return letters.find(letter) != std::string_view::npos;
}

constexpr std::string_view on_air_letters = "NC";
constexpr std::string_view locked_letters = "LK";
constexpr std::string_view on_air_or_locked_letters = "NCLK";

}  // namespace

void LineSteps::run(LineStep step, const LineReport& report) {
  LineTable& lines = console_.lines;
  MainForm& form = console_.Lineweir;
  const int line = report.line;
  const char old = report.old_letter;
  const bool fresh = lines.FreshConnect;
  CallerRecord& record = lines.CallerData(line);

  switch (step) {
    case LineStep::None:
      return;
    case LineStep::ReleaseNextCall:
      if (lines.TheNextCall != line) return;
      lines.NextCallSet = false;
      lines.TheNextCall = no_line;
      return;
    case LineStep::UnpinNextCall:
      if (lines.TheNextCall == line) lines.NextCallSet = false;
      return;
    case LineStep::CloseHold:
      return close_hold(report);
    case LineStep::CloseAir:
      if (one_of(old, on_air_letters)) close_air(line);
      return;
    case LineStep::CloseAirOrLocked:
      if (one_of(old, on_air_or_locked_letters)) close_air(line);
      return;
    case LineStep::CloseAirOfAny:
      return close_air(line);
    case LineStep::BeginAir:
      return begin_air(report);
    case LineStep::Log:
      return console_.call_log.log(line);
    case LineStep::ClearRecord:
      return record.clear();
    case LineStep::ClearDataUnlessFresh:
      if (!fresh) record.clear_data_fields();
      return;
    case LineStep::ClearTimes:
      return record.clear_times();
    case LineStep::StampHold:
      lines.HoldStamp(line) = date_time_text(now());
      return;
    case LineStep::ClearHoldStamp:
      return lines.HoldStamp(line).clear();
    case LineStep::TellDataCleared:
      return console_.data_sender.tell_data_cleared(line);
    case LineStep::RunClock:
      lines.ClockRunning(line) = 1;
      return;
    case LineStep::StopClock:
      lines.ClockRunning(line) = 0;
      return;
    case LineStep::BlankTime:
      form.LineTime(line).caption = "";
      return;
    case LineStep::BaseNow:
      return base_now(line);
    case LineStep::BaseNowUnlessFresh:
      if (!fresh) base_now(line);
      return;
    case LineStep::BaseOnAirUnlessFresh:
      if (!fresh && !one_of(old, locked_letters)) base_now(line);
      return;
    case LineStep::BaseUnlessRungOrFresh:
      if (!fresh && (lines.ClockBase(line).empty() || old != 'R')) base_now(line);
      return;
    case LineStep::ForgetBase:
      return lines.ClockBase(line).clear();
    case LineStep::BlankRow:
      return form.blank_row_controls(line, 2);
    case LineStep::BlankRowUnlessFresh:
      if (!fresh) form.blank_row_controls(line, 2);
      return;
    case LineStep::BlankCaller:
      return form.blank_row_controls(line, 4);
    case LineStep::BlankCallerUnlessFresh:
      if (!fresh) form.blank_row_controls(line, 4);
      return;
    case LineStep::ForgetLetter:
      lines.StatusLetter(line) = ' ';
      return;
    case LineStep::OpenDataForm:
      return open_data_form(report);
    case LineStep::Blink:
      form.Timer5.enabled = true;
      return;
    case LineStep::ShowText:
      form.LineStatus(line).caption = report.look.status_text;
      return;
    case LineStep::ShowRow:
      return show_row(report, false);
    case LineStep::ShowRowOrNext:
      return show_row(report, true);
  }
}

void LineSteps::close_hold(const LineReport& report) {
  const std::string& since = console_.lines.HoldStamp(report.line);
  if (report.old_letter != 'S' || since.empty()) return;
  console_.lines.CallerData(report.line).set(CallerField::TimeOnHold, time_since(since, now()));
}

void LineSteps::close_air(int line) {
  CallerRecord& record = console_.lines.CallerData(line);
  const auto since = trimmed(record[CallerField::TimePlacedOnAir]);
  if (!since.empty()) record.set(CallerField::TimeOnAir, time_since(since, now()));
}

void LineSteps::begin_air(const LineReport& report) {
  if (one_of(report.old_letter, locked_letters)) return;
  CallerRecord& record = console_.lines.CallerData(report.line);
  record.set(CallerField::TimePlacedOnAir, clock_text(seconds_of_day(now())));
  const std::string& held_since = console_.lines.HoldStamp(report.line);
  if (!held_since.empty()) record.set(CallerField::TimeOnHold, time_since(held_since, now()));
}

void LineSteps::base_now(int line) {
  console_.lines.ClockBase(line) = hms_text(seconds_of_day(now()));
}

void LineSteps::open_data_form(const LineReport& report) {
  const MainForm& form = console_.Lineweir;
  if (!form.AutoDataEntry.checked) return;
  const bool answered = report.old_letter == 'R';
  const bool taken_back = report.old_letter == 'H' && form.ScreenerMode.checked;
  if (answered || taken_back) console_.caller_data.show_for_line(report.line);
}

void LineSteps::show_row(const LineReport& report, bool may_be_next) {
  if (may_be_next && console_.lines.TheNextCall == report.line) {
    console_.rows.show_next(report.line);
  } else {
    console_.rows.set_row_color(report.line, report.look.row);
  }
  console_.rows.DrawMark(report.line);
  console_.rows.HybridPictureSet(report.line, report.look.icon1, report.look.icon2);
}

platform::DateTime LineSteps::now() const { return console_.services.clock.now(); }

}  // namespace lineweir

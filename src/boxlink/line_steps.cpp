#include "boxlink/line_steps.h"

#include <string_view>

#include "base/text.h"
#include "base/time_text.h"
#include "callerdata/call_log.h"
#include "callerdata/caller_data.h"
#include "callerdata/caller_data_sender.h"
#include "callerdata/line_texts.h"
#include "screen/row_display.h"
#include "state/console_state.h"

namespace lineweir {
void LineSteps::run(const RuleStep& step, const LineReport& report) {
  const LineTable& lines = state_.lines;
  const bool has_base = !lines.ClockBase(report.line).empty();
  if (applies(step.when, {report.old_letter, lines.FreshConnect, has_base})) run(step.step, report);
}

void LineSteps::run(LineStep step, const LineReport& report) {
  LineTable& lines = state_.lines;
  MainForm& form = state_.Lineweir;
  const int line = report.line;
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
      return close_hold(line);
    case LineStep::CloseAir:
      return close_air(line);
    case LineStep::BeginAir:
      return begin_air(line);
    case LineStep::Log:
      return call_log_.log(line);
    case LineStep::ForgetCaller:
      return line_texts_.caller_gone(line);
    case LineStep::BeginCall:
      call_log_.leave(line, CallEnd::HungUp);
      return line_texts_.caller_gone(line);
    case LineStep::LeaveCall:
      return call_log_.leave(line, CallEnd::GroupLeft);
    case LineStep::ClearRecord:
      return record.clear();
    case LineStep::ClearData:
      return record.clear_data_fields();
    case LineStep::ClearTimes:
      return record.clear_times();
    case LineStep::StampHold:
      lines.HoldStamp(line) = date_time_text(now());
      return;
    case LineStep::ClearHoldStamp:
      return lines.HoldStamp(line).clear();
    case LineStep::TellDataCleared:
      return data_sender_.tell_data_cleared(report.handler, line);
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
      lines.ClockBase(line) = hms_text(seconds_of_day(now()));
      return;
    case LineStep::ForgetBase:
      return lines.ClockBase(line).clear();
    case LineStep::BlankRow:
      return form.blank_row_controls(line, 2);
    case LineStep::BlankCaller:
      return form.blank_row_controls(line, 4);
    case LineStep::ForgetLetter:
      lines.StatusLetter(line) = idle_letter;
      lines.SetBusy(line) = report.letter == busy_letter ? 1 : 0;
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

void LineSteps::close_hold(int line) {
  const std::string& since = state_.lines.HoldStamp(line);
  if (since.empty()) return;
  state_.lines.CallerData(line).set(CallerField::TimeOnHold, time_since(since, now()));
}

void LineSteps::close_air(int line) {
  CallerRecord& record = state_.lines.CallerData(line);
  const auto since = trimmed(record[CallerField::TimePlacedOnAir]);
  if (!since.empty()) record.set(CallerField::TimeOnAir, time_since(since, now()));
}

void LineSteps::begin_air(int line) {
  state_.lines.CallerData(line).set(CallerField::TimePlacedOnAir,
                                    clock_text(seconds_of_day(now())));
  close_hold(line);
}

void LineSteps::open_data_form(const LineReport& report) {
  const MainForm& form = state_.Lineweir;
  if (!form.AutoDataEntry.checked) return;
  const bool answered = report.old_letter == ringing_letter;
  const bool taken_back = report.old_letter == held_letter && form.ScreenerMode.checked;
  if (answered || taken_back) caller_data_.show_for_answered_line(report.line);
}

void LineSteps::show_row(const LineReport& report, bool may_be_next) {
  if (may_be_next && state_.lines.TheNextCall == report.line) {
    rows_.show_next(report.line);
  } else {
    rows_.set_row_color(report.line, report.look.row);
  }
  rows_.DrawMark(report.line);
  rows_.HybridPictureSet(report.line, report.look.icon1, report.look.icon2);
}

platform::DateTime LineSteps::now() const { return state_.services.clock.now(); }

}  // namespace lineweir

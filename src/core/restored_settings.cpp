#include "core/restored_settings.h"

#include <algorithm>
#include <string>

#include "base/text.h"
#include "boxlink/serial_port_control.h"
#include "callcontrol/next_key.h"
#include "callerdata/call_log_file.h"
#include "callerdata/caller_data.h"
#include "clocks/show_plan_store.h"
#include "clocks/time_offset.h"
#include "core/start_step.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/screen_layout.h"
#include "screen/window_size.h"
#include "state/console_state.h"
#include "state/window_caption.h"
#include "wire/password_scramble.h"
#include "wire/rights_layout.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

std::string upper(std::string_view text) {
  std::string result(trimmed(text));
  std::ranges::transform(result, result.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return result;
}

// A server has taken the handset's item away where the studio has no such handset, and a right
// where the user may not choose another one than the seat's.
bool exists(const MenuItem& handset) { return handset.enabled || handset.withheld; }

bool is_kept_out_of_passive_mode(std::string_view rights) {
  return rights.size() >= rights_length && allows(rights, Right::ForcePassiveOff);
}

}  // namespace

RestoredSettings::RestoredSettings(ConsoleState& state, ShowPlanStore& show_plan,
                                   ScreenLayout& layout, DisplayOptions& display,
                                   WindowSize& window, Fonts& fonts, CallLogFile& call_log_file,
                                   CallerDataEntry& caller_data, SerialPortControl& port)
    : state_(state),
      show_plan_(show_plan),
      layout_(layout),
      display_(display),
      window_(window),
      fonts_(fonts),
      call_log_file_(call_log_file),
      caller_data_(caller_data),
      port_(port) {}

void RestoredSettings::apply(const SettingsRecord& record) {
  start_step(state_, [&] { restore_values(record); });
  start_step(state_, [&] { restore_menus(record); });
  start_step(state_, [&] { restore_group(record); });
  start_step(state_, [&] { restore_port(record); });
  start_step(state_, [&] { restore_switch_console_port(record); });
  start_step(state_, [&] { restore_columns(record); });
}

void RestoredSettings::restore_values(const SettingsRecord& record) {
  LoginState& login = state_.login;
  login.UserName = record.UserName;
  login.DisplayUserName = trimmed(record.DisplayUserName);
  state_.Lineweir.Label1.caption = login.DisplayUserName;
  if (const auto clear = pass_decode(record.UserPassword)) login.UserPassword = *clear;
  login.ServerHost = trimmed(record.ServerHost);
  login.ServerPort = record.ServerPort;
  state_.program.OperatorName = trimmed(record.OperatorName);
  caller_data_.LogFieldOn = record.LogFieldOn;
  state_.clock_state.Warning1 = record.Warning1;
  state_.clock_state.Warning2 = record.Warning2;
  state_.program.MessageFile = upper(record.MessageFile);
  window_.restore({record.WindowHeight, record.WindowWidth, record.WindowState});
}

void RestoredSettings::restore_menus(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  click_if(record.AutoDataOn, form.AutoDataEntry);
  click_if(record.EventClockOn, form.EventClockMenu);
  click_if(record.TimeClockOn, form.TimeClockMenuItem);
  form.DimLineNumMenu.checked = record.LineNamesOn;
  form.StudioLinNumMenu.checked = !record.LineNamesOn;
  form.GreyScreenOption.checked = record.GreyScreenOn;
  form.Line20Mode.checked = record.Line20On;
  layout_.set_line_count(record.Line20On ? lines_of_large_layout : lines_of_small_layout);
}

void RestoredSettings::restore_group(const SettingsRecord& record) {
  // A frame's field holds no other group.
  const bool can_be = record.GroupNumber >= 1 && record.GroupNumber <= no_value;
  state_.program.GroupNumber = can_be ? record.GroupNumber : 1;
  check_present_group(state_);
  renew_start_caption(state_);
}

void RestoredSettings::restore_port(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  if (record.CommPort >= 1 && record.CommPort <= 4) click(form.Com(record.CommPort));
  if (record.CommPort < lowest_way_code && record.PortState) {
    port_.open_at_start();
  } else {
    click(form.Off);
  }
}

void RestoredSettings::restore_switch_console_port(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  if (record.RemotePortNumber >= 1 && record.RemotePortNumber <= 4) {
    click(form.RemoteCom(record.RemotePortNumber));
  }
  click(record.RemoteState ? form.RemoteOn : form.RemoteOff);
}

void RestoredSettings::restore_columns(const SettingsRecord& record) {
  fonts_.restore(record);
  display_.restore(record.ColumnShown, record.ColumnWidth, record.ColumnOrder);
}

void RestoredSettings::restore_database(const SettingsRecord& record) {
  const auto path = trimmed(record.DatabasePath);
  if (!path.empty()) call_log_file_.use_stored(std::string(path), "Lineweir_Form_Load");
}

void RestoredSettings::restore_show_plan(const SettingsRecord* record) {
  ShowPlanStore& plan = show_plan_;
  const std::string path = record == nullptr ? std::string() : upper(record->ShowDataFile);
  if (path.empty()) return plan.load_default_plan();
  const bool is_default = path == upper(default_show_name);
  if (!is_default && !state_.services.files.exists(path)) {
    state_.messages.ShowMessage(plan_not_found(state_.services.letters, path));
    return plan.load_default_plan_for(record->ShowDataFile);
  }
  attempt([&] { plan.load_plan(path); },
          [&](const Failure& failure) {
            if (failure.number() != failure_number::path_not_found)
              react_to_start_failure(state_, failure);
            plan.load_default_plan_for(record->ShowDataFile);
          });
}

void RestoredSettings::restore_phone(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  // By now the server may have said that there is no such key, or that this user may not use it.
  click_if(record.RemoteNextOn && next_key_may_be_used(state_), form.RemoteNext);
  if (record.MitelPhoneChoice == 1 && exists(form.MitelPhone1)) {
    click(form.MitelPhone1);
  } else if (record.MitelPhoneChoice == 2 && exists(form.MitelPhone2)) {
    click(form.MitelPhone2);
  } else {
    form.MitelPhone1.checked = false;
    form.MitelPhone2.checked = false;
  }
}

void RestoredSettings::restore_user_heading(const SettingsRecord& record) {
  const auto heading = trimmed(record.UserFieldName);
  display_.set_heading(user_column, heading.empty() ? column_rules[user_column].heading : heading);
}

void RestoredSettings::restore_mode(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  // The user who was let in meanwhile is held in it by his rights.
  if (form.PassiveMode.checked) return;
  switch (record.ModeCode) {
    case 3:
      return click(is_kept_out_of_passive_mode(state_.login.UserRights) ? form.StudioMode
                                                                        : form.PassiveMode);
    case 1:
    case -1:
      return click(form.StudioMode);
    default:
      return click(form.ScreenerMode);
  }
}

void RestoredSettings::restore_clocks(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  // One below 0 can be typed, though no clock can do with it.
  const bool can_be_typed = record.TimeOffset <= largest_time_offset;
  state_.clock_state.DelayOffset = can_be_typed ? record.TimeOffset : 0;
  click_if(record.SyncTimeOn, form.SyncTimeMenu);
  click_if(record.DigiClockOn, form.DigiClock);
  click_if(record.TextGrowOn, form.TextGrowToggle);
  form.ServerShowData.checked = record.ServerShowOn;
  // Where it is checked it can be unchecked.
  if (record.ServerShowOn) form.ServerShowData.visible = true;
  form.NextBarDisable.checked = record.NextBarOff;
}

}  // namespace lineweir

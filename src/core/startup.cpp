#include "core/startup.h"

#include <algorithm>

#include "base/text.h"
#include "base/time_text.h"
#include "boxlink/serial_port_control.h"
#include "callerdata/call_log_file.h"
#include "callerdata/caller_data.h"
#include "clocks/show_plan_store.h"
#include "clocks/time_offset.h"
#include "core/settings.h"
#include "forms/picture_names.h"
#include "link/links.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/row_display.h"
#include "screen/screen_layout.h"
#include "screen/window_size.h"
#include "serverlink/login_exchange.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "serverlink/session_start.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/window_caption.h"
#include "state/wire.h"
#include "wire/password_scramble.h"

namespace lineweir {
namespace {

constexpr int sync_interval_with_trace = 60000;
constexpr int group_count_at_first = 10;
constexpr int client_id_step = 20;
constexpr int client_id_range = 1000;

std::string upper(std::string_view text) {
  std::string result(trimmed(text));
  std::ranges::transform(result, result.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return result;
}

// Runs an element's click as the program does, whatever the element's state is.
void click(MenuItem& item) { item.on_click(); }

void click_if(bool wanted, MenuItem& item) {
  if (wanted) click(item);
}

}  // namespace

Startup::Startup(ConsoleState& state, const Links& links, ShowPlanStore& show_plan,
                 ServerLink& server, ServerConnection& server_connection,
                 LoginExchange& login_exchange, RowDisplay& rows, ScreenLayout& layout,
                 DisplayOptions& display, WindowSize& window, Fonts& fonts,
                 CallLogFile& call_log_file, CallerDataEntry& caller_data, SerialPortControl& port,
                 Settings& settings)
    : state_(state),
      links_(links),
      show_plan_(show_plan),
      server_(server),
      server_connection_(server_connection),
      login_exchange_(login_exchange),
      rows_(rows),
      layout_(layout),
      display_(display),
      window_(window),
      fonts_(fonts),
      call_log_file_(call_log_file),
      caller_data_(caller_data),
      port_(port),
      settings_(settings) {
  MainForm& form = state.Lineweir;
  wire(form.on_load, state_.trace, "Lineweir_Form_Load", [this] { Form_Load(); });
  wire(form.on_got_focus, state_.trace, "Lineweir_Form_GotFocus", [this] { Form_GotFocus(); });
  wire(form.ZorderTimer.on_timer, state_.trace, "Lineweir_ZorderTimer_Timer",
       [this] { ZorderTimer_Timer(); });
  wire(form.LoginTimer.on_timer, state_.trace, "Lineweir_LoginTimer_Timer",
       [this] { LoginTimer_Timer(); });
}

void Startup::Main(std::string_view command_line) {
  command_line_ = command_line;
  state_.AboutBox.show();
  state_.services.loop.run_pending();
  state_.Lineweir.load();
  state_.Lineweir.show();
  // Messages of the start came before the main form had its place.
  state_.messages.follow_main_form();
  state_.messages.come_to_front();
  // The main window takes the focus, which closes the splash window.
  if (state_.AboutBox.visible) state_.AboutBox.on_lost_focus();
}

template <class Step>
void Startup::step(Step&& body) {
  attempt(body, [&](const Failure& failure) { react(failure); });
}

void Startup::react(const Failure& failure) {
  switch (failure.number()) {
    case failure_number::port_not_open:
      report_failure(state_.trace, "Lineweir_Form_Load", failure);
      return state_.messages.ShowMessage("This Com Port is not available at this time!");
    case failure_number::socket_wrong_state:
      return state_.messages.ShowMessage("Lineweir is not currently connected to a server.");
    default:
      return report_failure(state_.trace, "Lineweir_Form_Load", failure);
  }
}

void Startup::Form_Load() {
  step([&] { note_design(); });
  step([&] { read_command_line(); });
  step([&] { begin_loading(); });
  step([&] { make_rows(); });

  const auto record = settings_.read_at_start();
  if (record) {
    apply_settings(*record);
  } else {
    step([&] { start_without_settings(); });
  }
  step([&] { display_.SetDisplayOptions(); });
  step([&] { layout_.RedefineScreen(); });
  if (record) step([&] { restore_database(*record); });
  step([&] { make_client_id(); });
  step([&] { read_show_data(record ? &*record : nullptr); });
  step([&] { connect(record ? &*record : nullptr); });
  step([&] { fill_group_selector(); });
  step([&] { probe_open_port(); });
  if (record) {
    step([&] { restore_phone(*record); });
    step([&] { restore_user_heading(*record); });
  }
  state_.Lineweir.mouse_pointer = pointer_default;
  set_menus_enabled(true);
  if (record) {
    step([&] { restore_mode(*record); });
    step([&] { restore_clocks(*record); });
  }
  step([&] { caller_data_.restore_drafts(); });
  step([&] { finish_loading(); });
}

void Startup::note_design() {
  state_.lines.resize(lines_of_small_layout);
  state_.program.CallerDataAllowed = true;
  state_.program.MessagesAllowed = true;
  state_.program.StartDirectory = state_.services.files.current_directory();
}

void Startup::read_command_line() {
  state_.program.EmptyLineOverride = command_line_ == "E";
  if (command_line_ != "D") return;
  state_.program.DebugMode = true;
  state_.Lineweir.SyncTimeTimer.interval = sync_interval_with_trace;
}

void Startup::begin_loading() {
  state_.program.MainHybridOn = true;
  state_.program.ConfHybridOn = true;
  state_.Lineweir.mouse_pointer = pointer_hourglass;
  set_menus_enabled(false);
  show_caption();
}

void Startup::make_rows() {
  layout_.load_rows();
  show_time_of_day();
  state_.services.loop.run_pending();
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    state_.Lineweir.DataRow(line).picture = pictures::DataRowWhite;
    rows_.DrawMark(line);
  }
}

void Startup::start_without_settings() {
  port_.close();
  click(state_.Lineweir.RemoteOff);
  state_.program.GroupNumber = 1;
  state_.Lineweir.StudioGr(0).checked = true;
  show_caption();
  fonts_.FontChange(fonts_.present());
  display_.NewColumnSetup();
}

void Startup::apply_settings(const SettingsRecord& record) {
  step([&] { restore_values(record); });
  step([&] { restore_menus(record); });
  step([&] { restore_group(record); });
  step([&] { restore_port(record); });
  step([&] { restore_switch_console_port(record); });
  step([&] { restore_columns(record); });
}

void Startup::restore_values(const SettingsRecord& record) {
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

void Startup::restore_menus(const SettingsRecord& record) {
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

void Startup::restore_group(const SettingsRecord& record) {
  state_.program.GroupNumber = std::max(1, record.GroupNumber);
  check_present_group(state_);
  show_caption();
}

void Startup::restore_port(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  if (record.CommPort >= 1 && record.CommPort <= 4) click(form.Com(record.CommPort));
  if (record.CommPort >= lowest_way_code) {
    click(form.Off);
  } else if (record.PortState) {
    port_.open_at_start();
  } else {
    click(form.Off);
  }
}

void Startup::restore_switch_console_port(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  if (record.RemotePortNumber >= 1 && record.RemotePortNumber <= 4) {
    click(form.RemoteCom(record.RemotePortNumber));
  }
  click(record.RemoteState ? form.RemoteOn : form.RemoteOff);
}

void Startup::restore_columns(const SettingsRecord& record) {
  fonts_.restore(record);
  display_.restore(record.ColumnShown, record.ColumnWidth, record.ColumnOrder);
}

void Startup::restore_database(const SettingsRecord& record) {
  const auto path = trimmed(record.DatabasePath);
  if (!path.empty()) call_log_file_.use_stored(std::string(path), "Lineweir_Form_Load");
}

void Startup::make_client_id() {
  const int random = static_cast<int>(state_.services.random.next() * client_id_range + 1);
  state_.program.ClientId =
      std::to_string(state_.services.process_number + client_id_step * random);
}

void Startup::read_show_data(const SettingsRecord* record) {
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
            if (failure.number() != failure_number::path_not_found) react(failure);
            plan.load_default_plan_for(record->ShowDataFile);
          });
}

void Startup::connect(const SettingsRecord* record) {
  if (record == nullptr) return;
  if (record->CommPort == connection_socket) return connect_socket();
  MenuItem* way = links_.item_of(record->CommPort);
  if (way == nullptr) return;
  click(*way);
  if (!way->checked) state_.Lineweir.Shape1.fill_color = color_red;
}

void Startup::connect_socket() {
  MainForm& form = state_.Lineweir;
  const ServerConnection::Turn turn(server_connection_);
  step([&] { server_connection_.begin(); });
  port_.close();
  form.uncheck_coms();
  links_.uncheck_ways(&form.WinsockMenu);
  const auto outcome = server_connection_.await();
  if (outcome == ServerConnection::Outcome::Superseded) return;
  if (outcome == ServerConnection::Outcome::Failed) {
    state_.messages.ShowMessage(no_server_message);
    form.Shape1.fill_color = color_red;
    port_.want_other_way(connection_socket);
    return;
  }
  switch (login_exchange_.TextWrit_PasswordA(true)) {
    case LoginResult::Accepted:
      return TextWrit_SockConnecter(state_, server_, SessionReason::ProgramStart);
    case LoginResult::Rejected:
    case LoginResult::NoAnswer:
      login_needed_ = true;
      return;
    case LoginResult::Superseded:
      return;
  }
}

void Startup::fill_group_selector() {
  ComboBox& selector = state_.DisplayOptionForm.MessageGroupSelector;
  selector.clear();
  for (int group = 1; group <= group_count_at_first; ++group) {
    selector.add_item("Group " + std::to_string(group));
  }
  const int present = state_.program.GroupNumber - 1;
  if (present >= 0 && present < selector.list_count()) selector.list_index = present;
}

void Startup::probe_open_port() { port_.probe_at_start(); }

void Startup::restore_phone(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  click_if(record.RemoteNextOn, form.RemoteNext);
  if (record.MitelPhoneChoice == 1) {
    click(form.MitelPhone1);
  } else if (record.MitelPhoneChoice == 2) {
    click(form.MitelPhone2);
  } else {
    form.MitelPhone1.checked = false;
    form.MitelPhone2.checked = false;
  }
}

void Startup::restore_user_heading(const SettingsRecord& record) {
  const auto heading = trimmed(record.UserFieldName);
  display_.set_heading(user_column, heading.empty() ? column_rules[user_column].heading : heading);
}

void Startup::restore_mode(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  switch (record.ModeCode) {
    case 3:
      return click(form.PassiveMode);
    case 1:
    case -1:
      return click(form.StudioMode);
    default:
      return click(form.ScreenerMode);
  }
}

void Startup::restore_clocks(const SettingsRecord& record) {
  MainForm& form = state_.Lineweir;
  form.LoginTimer.enabled = login_needed_;
  const bool is_offset = record.TimeOffset >= 0 && record.TimeOffset <= largest_time_offset;
  state_.clock_state.DelayOffset = is_offset ? record.TimeOffset : 0;
  click_if(record.SyncTimeOn, form.SyncTimeMenu);
  click_if(record.DigiClockOn, form.DigiClock);
  click_if(record.TextGrowOn, form.TextGrowToggle);
  form.ServerShowData.checked = record.ServerShowOn;
  form.NextBarDisable.checked = record.NextBarOff;
}

void Startup::finish_loading() {
  state_.Lineweir.LabelMoveTimer.enabled = true;
  display_.RefreshColumnOrder();
}

void Startup::Form_GotFocus() { show_plan_.read_first_34(); }

void Startup::ZorderTimer_Timer() {
  MainForm& form = state_.Lineweir;
  form.ZorderTimer.enabled = false;
  form.ScreenTopImage.bring_to_front();
  form.ScreenBottomImage.bring_to_front();
}

void Startup::LoginTimer_Timer() {
  state_.Lineweir.LoginTimer.enabled = false;
  state_.LoginForm.show();
}

void Startup::set_menus_enabled(bool enabled) {
  MainForm& form = state_.Lineweir;
  for (MenuItem* menu : {&form.Options, &form.Port, &form.RemotePort, &form.TimeClockMenu2,
                         &form.ConfigurationMenuItem}) {
    menu->enabled = enabled;
  }
}

void Startup::show_caption() {
  MainForm& form = state_.Lineweir;
  form.caption = window_caption(state_, form.StudioMode.checked);
}

void Startup::show_time_of_day() {
  const std::string now = clock_text(seconds_of_day(state_.services.clock.now()));
  const auto without_half_day = left_part(now, now.size() - 3);
  state_.Lineweir.RealTime.caption = without_half_day;
  state_.Lineweir.RealTime2.text = without_half_day;
}

}  // namespace lineweir

#include "core/startup.h"

#include "base/time_text.h"
#include "boxlink/serial_port_control.h"
#include "callerdata/caller_data.h"
#include "clocks/show_plan_store.h"
#include "core/first_connection.h"
#include "core/restored_settings.h"
#include "core/settings.h"
#include "core/start_step.h"
#include "forms/picture_names.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/row_display.h"
#include "screen/screen_layout.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr int sync_interval_with_trace = 60000;
constexpr int group_count_at_first = 10;
constexpr int client_id_step = 20;
constexpr int client_id_range = 1000;

}  // namespace

Startup::Startup(ConsoleState& state, ShowPlanStore& show_plan, RowDisplay& rows,
                 ScreenLayout& layout, DisplayOptions& display, Fonts& fonts,
                 CallerDataEntry& caller_data, SerialPortControl& port, Settings& settings,
                 RestoredSettings& restored, FirstConnection& connection)
    : state_(state),
      show_plan_(show_plan),
      rows_(rows),
      layout_(layout),
      display_(display),
      fonts_(fonts),
      caller_data_(caller_data),
      port_(port),
      settings_(settings),
      restored_(restored),
      connection_(connection) {
  MainForm& form = state.Lineweir;
  wire(form.on_load, state_.trace, "Lineweir_Form_Load", [this] { Form_Load(); });
  wire(form.on_got_focus, state_.trace, "Lineweir_Form_GotFocus", [this] { Form_GotFocus(); });
  wire(form.ZorderTimer.on_timer, state_.trace, "Lineweir_ZorderTimer_Timer",
       [this] { ZorderTimer_Timer(); });
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

void Startup::Form_Load() {
  start_step(state_, [&] { note_design(); });
  start_step(state_, [&] { read_command_line(); });
  start_step(state_, [&] { begin_loading(); });
  start_step(state_, [&] { make_rows(); });

  const auto record = settings_.read_at_start();
  if (record) {
    restored_.apply(*record);
  } else {
    start_step(state_, [&] { start_without_settings(); });
    // A file that can't be read belongs to somebody who isn't new.
    if (on_new_user && !settings_.unreadable()) start_step(state_, [&] { on_new_user(); });
  }
  start_step(state_, [&] { display_.SetDisplayOptions(); });
  start_step(state_, [&] { layout_.RedefineScreen(); });
  if (record) start_step(state_, [&] { restored_.restore_database(*record); });
  start_step(state_, [&] { make_client_id(); });
  start_step(state_, [&] { restored_.restore_show_plan(record ? &*record : nullptr); });
  start_step(state_, [&] { connection_.connect(record ? &*record : nullptr); });
  start_step(state_, [&] { fill_group_selector(); });
  start_step(state_, [&] { probe_open_port(); });
  if (record) {
    start_step(state_, [&] { restored_.restore_phone(*record); });
    start_step(state_, [&] { restored_.restore_user_heading(*record); });
  }
  state_.Lineweir.mouse_pointer = pointer_default;
  set_menus_enabled(true);
  if (record) {
    start_step(state_, [&] { restored_.restore_mode(*record); });
    start_step(state_, [&] { connection_.ask_for_login(); });
    start_step(state_, [&] { restored_.restore_clocks(*record); });
  }
  start_step(state_, [&] { caller_data_.restore_drafts(); });
  start_step(state_, [&] { finish_loading(); });
}

void Startup::note_design() {
  state_.lines.resize(lines_of_small_layout);
  state_.program.CallerDataAllowed = true;
  state_.program.MessagesAllowed = true;
  state_.program.CallerFlagAllowed = true;
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
  renew_start_caption(state_);
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
  renew_start_caption(state_);
  fonts_.FontChange(fonts_.present());
  display_.NewColumnSetup();
}

void Startup::make_client_id() {
  const int random = static_cast<int>(state_.services.random.next() * client_id_range + 1);
  state_.program.ClientId =
      std::to_string(state_.services.process_number + client_id_step * random);
}

void Startup::fill_group_selector() {
  ComboBox& selector = state_.DisplayOptionForm.MessageGroupSelector;
  // A server has told the groups' names by now.
  if (selector.list_count() > 0) return;
  for (int group = 1; group <= group_count_at_first; ++group) {
    selector.add_item("Group " + std::to_string(group));
  }
  const int present = state_.program.GroupNumber - 1;
  if (present >= 0 && present < selector.list_count()) selector.list_index = present;
}

void Startup::probe_open_port() { port_.probe_at_start(); }

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

void Startup::set_menus_enabled(bool enabled) {
  MainForm& form = state_.Lineweir;
  for (MenuItem* menu : {&form.Options, &form.Port, &form.RemotePort, &form.TimeClockMenu2,
                         &form.ConfigurationMenuItem}) {
    menu->enabled = enabled;
  }
}

void Startup::show_time_of_day() {
  const std::string now = clock_text(seconds_of_day(state_.services.clock.now()));
  const auto without_half_day = left_part(now, now.size() - 3);
  state_.Lineweir.RealTime.caption = without_half_day;
  state_.Lineweir.RealTime2.text = without_half_day;
}

}  // namespace lineweir

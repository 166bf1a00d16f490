#include "core/settings.h"

#include <string>

#include "base/text.h"
#include "boxlink/serial_port_control.h"
#include "callcontrol/switch_console_port.h"
#include "callerdata/call_log_file.h"
#include "callerdata/caller_data.h"
#include "clocks/show_plan_store.h"
#include "core/further_settings.h"
#include "core/kept_address.h"
#include "link/links.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/window_size.h"
#include "serverlink/credentials.h"
#include "serverlink/user_profile.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// Of a file that somebody else has put there, no more is read.

constexpr int mode_passive = 3;
constexpr int mode_talent = -1;
constexpr int mode_producer = 0;

int switch_console_port_of(const MainForm& form) {
  if (form.RemoteCom1.checked) return 1;
  if (form.RemoteCom2.checked) return 2;
  if (form.RemoteCom3.checked) return 3;
  return form.RemoteCom4.checked ? 4 : 0;
}

int mode_code_of(const MainForm& form) {
  if (form.PassiveMode.checked) return mode_passive;
  return form.StudioMode.checked ? mode_talent : mode_producer;
}

int handset_of(const MainForm& form) {
  if (form.MitelPhone1.checked) return 1;
  return form.MitelPhone2.checked ? 2 : 0;
}

}  // namespace

Settings::Settings(ConsoleState& state, const Links& links, ShowPlanStore& show_plan,
                   DisplayOptions& display, WindowSize& window, Fonts& fonts,
                   CallLogFile& call_log_file, CallerDataEntry& caller_data,
                   SerialPortControl& port, SwitchConsolePort& switch_console_port,
                   UserProfile& user_profile)
    : state_(state),
      links_(links),
      show_plan_(show_plan),
      display_(display),
      window_(window),
      fonts_(fonts),
      call_log_file_(call_log_file),
      caller_data_(caller_data),
      port_(port),
      switch_console_port_(switch_console_port),
      user_profile_(user_profile) {
  wire(state.Lineweir.SaveSettingsMenu.on_click, state_.trace, "Lineweir_SaveSettingsMenu_Click",
       [this] { SaveSettingsMenu_Click(); });
}

std::optional<SettingsRecord> Settings::read() const {
  const auto bytes = state_.services.files.read(std::string(settings_file_name));
  return bytes ? decode_settings(*bytes) : std::nullopt;
}

std::optional<SettingsRecord> Settings::read_at_start() {
  const auto further = state_.services.files.read_short(std::string(further_settings_file),
                                                        longest_further_settings);
  if (further) apply_further_settings(state_, *further);
  auto record = read();
  if (record && further) take_whole_address(*further, *record);
  if (record) return record;
  unreadable_ = state_.services.files.why_unreadable(std::string(settings_file_name));
  if (unreadable_) {
    state_.trace.WriteTrace("Lineweir_Form_Load Error - " + *unreadable_);
    state_.messages.ShowMessage(
        "The settings could not be read, Lineweir starts without them and leaves them as they "
        "are: " +
        *unreadable_);
  }
  return std::nullopt;
}

SettingsRecord Settings::collect() {
  const MainForm& form = state_.Lineweir;
  const PortChoice port = port_.choice();
  const WindowTarget window = window_.present();
  display_.collect();

  SettingsRecord record;
  record.CommPort = links_.settings_code(port.number);
  record.PortState = port.on;
  record.RemotePortNumber = switch_console_port_of(form);
  record.RemoteState = switch_console_port_.wanted();
  record.ShowDataFile = show_plan_.path_to_store();
  record.DatabasePath = call_log_file_.path_to_store();
  record.OperatorName = state_.program.OperatorName;
  record.LogFieldOn = caller_data_.LogFieldOn;
  record.GroupNumber = state_.program.GroupNumber;
  record.Warning1 = state_.clock_state.Warning1;
  record.Warning2 = state_.clock_state.Warning2;
  record.MessageFile = state_.program.MessageFile;
  record.ColumnShown = display_.ColumnShown;
  record.ColumnWidth = display_.ColumnWidth;
  record.ColumnOrder = display_.ColumnOrder;
  record.ModeCode = mode_code_of(form);
  record.DisplayUserName = state_.login.DisplayUserName;
  const platform::FontChoice font = fonts_.present();
  record.MessageFontName = font.name;
  record.MessageFontBold = font.bold;
  record.MessageFontSize = font.size;
  record.MessageFontItalic = font.italic;
  keep_first_server(state_.login, record);
  record.UserPassword = TextWrit_PassEncode(state_, state_.login.UserPassword.trimmed());
  record.RemoteNextOn = form.RemoteNext.checked;
  record.EventClockOn = form.EventClockMenu.checked;
  record.TimeClockOn = form.TimeClockMenuItem.checked;
  record.AutoDataOn = form.AutoDataEntry.checked;
  record.MitelPhoneChoice = handset_of(form);
  record.LineNamesOn = form.DimLineNumMenu.checked;
  record.UserFieldName = form.CaptionLabel(user_column).caption;
  record.UserName = state_.login.UserName.trimmed();
  record.TimeOffset = state_.clock_state.DelayOffset;
  record.SyncTimeOn = form.SyncTimeMenu.checked;
  record.DigiClockOn = form.DigiClock.checked;
  record.Line20On = form.Line20Mode.checked;
  record.WindowHeight = window.height;
  record.WindowWidth = window.width;
  record.WindowState = window.state;
  record.ServerShowOn = form.ServerShowData.checked;
  record.TextGrowOn = form.TextGrowToggle.checked;
  record.NextBarOff = form.NextBarDisable.checked;
  record.GreyScreenOn = form.GreyScreenOption.checked;
  return record;
}

std::optional<std::string> Settings::save() {
  if (unreadable_) {
    return "The settings are not saved, as they could not be read at the start: " + *unreadable_;
  }
  std::optional<std::string> why_not;
  attempt(
      [&] {
        state_.services.files.replace(std::string(settings_file_name), encode_settings(collect()));
        save_further_settings();
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, "Lineweir_SaveSettings", failure);
        why_not =
            "The settings could not be saved: " + description_of(state_.services.letters, failure);
      });
  return why_not;
}

void Settings::save_further_settings() {
  platform::Files& files = state_.services.files;
  const std::string file(further_settings_file);
  const auto before = files.read_short(file, longest_further_settings);
  // One that can't be read is somebody else's.
  if (!before && files.exists(file)) return;
  const std::string now = with_whole_address(
      state_.login, with_further_settings(state_, before.value_or(std::string())));
  if (now != before.value_or(std::string())) files.replace(file, now);
}

void Settings::save_at_end() {
  if (const auto why_not = save()) state_.services.dialogs.message(*why_not);
}

void Settings::SaveSettingsMenu_Click() {
  if (const auto why_not = save()) state_.messages.ShowMessage(*why_not);
  user_profile_.SendUserProfile("");
}

void Settings::SetFileSettings() {
  guard(state_.trace, "Lineweir_SetFileSettings", [&] {
    const auto record = read();
    if (!record) return;
    window_.restore({record->WindowHeight, record->WindowWidth, record->WindowState});
    fonts_.restore(*record);
  });
}

}  // namespace lineweir

#include "core/settings.h"

#include <string>

#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"

namespace lineweir {
namespace {

constexpr int mode_passive = 3;
constexpr int mode_talent = -1;
constexpr int mode_producer = 0;

int connection_of(const MainForm& form, const PortChoice& port) {
  if (form.NetworkConnectionOption.checked) return connection_remote_objects;
  if (form.WinsockMenu.checked) return connection_socket;
  const bool other_way = port.number >= connection_remote_objects;
  return form.chosen_com() != 0 || other_way ? port.number : connection_none;
}

int remote_port_of(const MainForm& form) {
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

Settings::Settings(Console& console) : console_(console) {
  console.Lineweir.SaveSettingsMenu.on_click = [this] { SaveSettingsMenu_Click(); };
}

std::optional<SettingsRecord> Settings::read() const {
  const auto bytes = console_.services.files.read(std::string(settings_file_name));
  return bytes ? decode_settings(*bytes) : std::nullopt;
}

std::optional<SettingsRecord> Settings::read_at_start() {
  const auto record = read();
  if (record) return record;
  unreadable_ = console_.services.files.why_unreadable(std::string(settings_file_name));
  if (unreadable_) {
    console_.trace.WriteTrace("Lineweir_Form_Load Error - " + *unreadable_);
    console_.messages.ShowMessage(
        "The settings could not be read, Lineweir starts without them and leaves them as they "
        "are: " +
        *unreadable_);
  }
  return std::nullopt;
}

SettingsRecord Settings::collect() {
  const MainForm& form = console_.Lineweir;
  const PortChoice port = console_.port.choice();
  const WindowTarget window = console_.window.present();
  console_.display.collect();

  SettingsRecord record;
  record.CommPort = connection_of(form, port);
  record.PortState = port.on;
  record.RemotePortNumber = remote_port_of(form);
  record.RemoteState = console_.remote_port.wanted();
  record.ShowDataFile = console_.show_plan.path_to_store();
  record.DatabasePath = console_.call_log_file.path_to_store();
  record.OperatorName = console_.caller_data.OperatorName;
  record.LogFieldOn = console_.caller_data.LogFieldOn;
  record.GroupNumber = console_.program.GroupNumber;
  record.Warning1 = console_.clock_state.Warning1;
  record.Warning2 = console_.clock_state.Warning2;
  record.MessageFile = console_.program.MessageFile;
  record.ColumnShown = console_.display.ColumnShown;
  record.ColumnWidth = console_.display.ColumnWidth;
  record.ColumnOrder = console_.display.ColumnOrder;
  record.ModeCode = mode_code_of(form);
  record.DisplayUserName = console_.login.DisplayUserName;
  const platform::FontChoice font = console_.fonts.present();
  record.MessageFontName = font.name;
  record.MessageFontBold = font.bold;
  record.MessageFontSize = font.size;
  record.MessageFontItalic = font.italic;
  record.ServerHost = console_.login.RemoteHost;
  record.ServerPort = console_.login.RemotePort;
  record.UserPassword =
      console_.login_exchange.TextWrit_PassEncode(console_.login.UserPassword.trimmed());
  record.RemoteNextOn = form.RemoteNext.checked;
  record.EventClockOn = form.EventClockMenu.checked;
  record.TimeClockOn = form.TimeClockMenuItem.checked;
  record.AutoDataOn = form.AutoDataEntry.checked;
  record.MitelPhoneChoice = handset_of(form);
  record.LineNamesOn = form.DimLineNumMenu.checked;
  record.UserFieldName = form.CaptionLabel(user_column).caption;
  record.UserName = console_.login.UserName.trimmed();
  record.TimeOffset = console_.clock_state.DelayOffset;
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
        console_.services.files.replace(std::string(settings_file_name),
                                        encode_settings(collect()));
      },
      [&](const Failure& failure) {
        report_failure(console_, "Lineweir_SaveSettings", failure);
        why_not = "The settings could not be saved: " + description_of(console_, failure);
      });
  return why_not;
}

void Settings::save_at_end() {
  if (const auto why_not = save()) console_.services.dialogs.message(*why_not);
}

void Settings::SaveSettingsMenu_Click() {
  guard(console_, "Lineweir_SaveSettingsMenu_Click", [&] {
    if (const auto why_not = save()) console_.messages.ShowMessage(*why_not);
  });
}

void Settings::SetFileSettings() {
  guard(console_, "Lineweir_SetFileSettings", [&] {
    const auto record = read();
    if (!record) return;
    console_.window.restore({record->WindowHeight, record->WindowWidth, record->WindowState});
    console_.fonts.restore(*record);
  });
}

}  // namespace lineweir

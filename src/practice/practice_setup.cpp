#include "practice/practice_setup.h"

#include "core/console.h"

namespace lineweir::practice {
namespace {

void keep_from(Console& console) {
  MainForm& form = console.Lineweir;
  for (MenuItem* item : {&form.Port, &form.RemotePort, &form.DatabasePathMenuItem, &form.Clock,
                         &form.SyncTimeMenu, &form.Line20Mode, &form.PassiveMode}) {
    item->enabled = false;
  }
  console.program.HasUsers = false;
}

void use_files(Console& console) {
  const platform::Files& files = console.services.files;
  const std::string log(practice_log);
  if (!files.exists(log)) console.call_log_file.CreateDatabase(log);
  console.call_log_file.use_stored(log, "Practice_SetUp");
  const std::string hot_list(practice_hot_list);
  if (!files.exists(hot_list)) console.hot_list.FlashMessA_MessCreateDatabase(hot_list);
  console.program.MessageFile = hot_list;
}

}  // namespace

std::optional<std::string> practice_settings(const std::optional<std::string>& real) {
  auto record = real ? decode_settings(*real) : std::nullopt;
  if (!record) return std::nullopt;
  record->CommPort = 1;
  record->PortState = false;
  record->RemotePortNumber = 1;
  record->RemoteState = false;
  record->ShowDataFile.clear();
  record->DatabasePath.clear();
  record->MessageFile.clear();
  record->GroupNumber = 1;
  record->ServerHost.clear();
  record->ServerPort = 0;
  record->UserName.clear();
  record->DisplayUserName.clear();
  record->UserPassword.clear();
  record->RemoteNextOn = false;
  record->SyncTimeOn = false;
  record->ServerShowOn = false;
  record->Line20On = false;
  record->TimeOffset = 0;
  return encode_settings(*record);
}

void set_up_for_practice(Console& console) {
  MainForm& form = console.Lineweir;
  keep_from(console);
  use_files(console);
  if (!form.EventClockMenu.checked) form.EventClockMenu.on_click();
  if (form.PassiveMode.checked) form.PassiveMode.on_click();
  // Without a handset a screener could answer nobody.
  if (!form.MitelPhone1.checked && !form.MitelPhone2.checked) form.MitelPhone1.on_click();
  form.PortOn.on_click();
}

}  // namespace lineweir::practice

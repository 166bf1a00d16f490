#include "serverlink/user_profile.h"

#include <array>

#include "core/bits.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/integer16.h"
#include "core/text.h"
#include "serverlink/server_packet_codec.h"

namespace lineweir {
namespace {

constexpr std::size_t flag_count = 43;
constexpr std::size_t group_field = 2;
constexpr int kind_without_profiles = 4;
constexpr int rows_with_room_for_digits = 11;

std::string flags_of(Console& console) {
  const MainForm& form = console.Lineweir;
  std::string flags;
  const auto add = [&flags](bool flag) { flags += return_byte(flag); };
  for (const MenuItem* item :
       {&form.Com1, &form.Com2, &form.Com3, &form.Com4, &form.NetworkConnectionOption,
        &form.WinsockMenu, &form.PortOn, &form.Off, &form.RemoteCom1, &form.RemoteCom2,
        &form.RemoteCom3, &form.RemoteCom4, &form.RemoteOn, &form.RemoteOff}) {
    add(item->checked);
  }
  for (const bool field_is_logged : console.caller_data.LogFieldOn) add(field_is_logged);
  for (const MenuItem* item :
       {&form.PassiveMode, &form.StudioMode, &form.ScreenerMode, &form.RemoteNext,
        &form.EventClockMenu, &form.TimeClockMenuItem, &form.AutoDataEntry, &form.MitelPhone1,
        &form.MitelPhone2, &form.DimLineNumMenu, &form.StudioLinNumMenu, &form.SyncTimeMenu}) {
    add(item->checked);
  }
  add(form.DigiClock.checked && console.program.VisibleLines < rows_with_room_for_digits);
  for (const MenuItem* item :
       {&form.Line20Mode, &form.TextGrowToggle, &form.ServerShowData, &form.NextBarDisable}) {
    add(item->checked);
  }
  const platform::FontChoice font = console.fonts.present();
  add(font.bold);
  add(font.italic);
  return flags;
}

void append_field(std::string& block, std::string_view field) {
  block += trimmed(field);
  block += item_end;
}

void append_field(std::string& block, int number) { append_field(block, std::to_string(number)); }

void append_column(std::string& block, Console& console, int column) {
  const bool checked = console.DisplayOptionForm.CheckItem(column).value == 1;
  const int listed = checked ? console.display.listed_place(column) : -1;
  append_field(block, listed < 0 ? column_not_listed : listed);
  append_field(block, checked ? "T" : "F");
  append_field(block, checked ? console.display.width_of(column) : 0);
}

}  // namespace

int group_of_profile(std::string_view block) {
  if (block.find(item_end) == std::string_view::npos || block.size() <= flag_count) return no_group;
  const auto fields = decode_list(block.substr(flag_count));
  if (fields.size() <= group_field) return no_group;
  return integer16(leading_number(fields[group_field]));
}

std::string PrepareUserData(Console& console, std::string_view TheName) {
  std::string block;
  guard(console, "Lineweir_PrepareUserData", [&] {
    MainForm& form = console.Lineweir;
    if (form.window_state == window_minimised) form.window_state = window_normal;
    if (!TheName.empty()) console.login.UserName = TheName;

    append_field(block, TheName.empty() ? console.login.UserName.trimmed() : TheName);
    block += flags_of(console);
    const WindowTarget window = console.window.present();
    append_field(block, window.height);
    append_field(block, window.width);
    append_field(block, console.program.GroupNumber);
    append_field(block, window.state);
    append_field(block, console.show_plan.path_to_store());
    append_field(block, console.call_log_file.path_to_store());
    append_field(block, console.caller_data.OperatorName);
    append_field(block, console.program.GroupNumber);
    append_field(block, console.clock_state.Warning1);
    append_field(block, console.clock_state.Warning2);
    append_field(block, console.program.MessageFile);
    for (int column = first_optional_column; column < column_count; ++column) {
      append_column(block, console, column);
    }
    const platform::FontChoice font = console.fonts.present();
    append_field(block, font.name);
    append_field(block, font.size);
    append_field(block, console.clock_state.DelayOffset);
  });
  return block;
}

void send_user_profile(Console& console, std::string_view OldUseName) {
  if (console.lines.ThePhoneFlag == kind_without_profiles) return;
  ServerPacket packet = console.server.packet(ClientCommand::CmdUserProfile);
  packet.set_buffer(PrepareUserData(console, OldUseName));
  console.server.send(packet);
}

}  // namespace lineweir

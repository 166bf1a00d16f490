#include "callcontrol/modes.h"

#include <array>

#include "callcontrol/command_frame.h"
#include "callcontrol/socket_trap.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/window_caption.h"

namespace lineweir {
namespace {

struct ModeCaptions {
  std::string_view next_button;
  std::string_view next_to_conf_button;
  // Above the conference and the main buttons of the rows.
  std::string_view conference_heading;
  std::string_view main_heading;
};

constexpr ModeCaptions producer_captions = {"R&EADY", "&ANSWER NEXT", "Next", "Ans"};
constexpr ModeCaptions talent_captions = {"&NEXT TO MAIN", "NE&XT TO CONF", "Conf", "Main"};

// Which menus there are for a kind of equipment.
struct EquipmentMenus {
  int kind;
  bool remote_next;
  bool handsets;
  bool phones;
};

constexpr std::array equipment_menus = {
    EquipmentMenus{1, true, true, false},
    EquipmentMenus{2, false, true, false},
    EquipmentMenus{3, true, true, false},
    EquipmentMenus{4, false, false, true},
};

constexpr const EquipmentMenus* menus_of(int kind) {
  for (const auto& menus : equipment_menus) {
    if (menus.kind == kind) return &menus;
  }
  return nullptr;
}

}  // namespace

Modes::Modes(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
  form.ScreenerMode.on_click = [this] { ScreenerMode_Click(); };
  form.StudioMode.on_click = [this] { StudioMode_Click(); };
  form.PassiveMode.on_click = [this] { PassiveMode_Click(); };
  form.MitelPhone1.on_click = [this] { MitelPhone1_Click(); };
  form.MitelPhone2.on_click = [this] { MitelPhone2_Click(); };
  form.AutoDataEntry.on_click = [this] { AutoDataEntry_Click(); };
  form.NextGenPhone.wire([this](MenuItem& phone) {
    phone.on_click = [this, index = phone.index()] { NextGenPhone_Click(index); };
  });
}

void Modes::ScreenerMode_Click() {
  constexpr std::string_view handler = "Lineweir_ScreenerMode_Click";
  guard(console_, handler, [&] {
    MainForm& form = console_.Lineweir;
    form.StudioMode.checked = false;
    form.ScreenerMode.checked = true;
    show_captions(false);
    take_remote_next_away();
    console_.panel.set_for_producer();
    rearrange_buttons(handler);
    show_row_icons();
    console_.visible_rows.RefreshVisibleRows();
    tell_server_mode(handler, true);
  });
}

void Modes::StudioMode_Click() {
  constexpr std::string_view handler = "Lineweir_StudioMode_Click";
  guard(console_, handler, [&] {
    MainForm& form = console_.Lineweir;
    form.StudioMode.checked = true;
    form.ScreenerMode.checked = false;
    form.Drop2.visible = true;
    form.Hold2.visible = true;
    give_remote_next();
    if (form.PassiveMode.checked) {
      console_.panel.show_small_drops_disabled();
    } else {
      console_.panel.set_for_talent();
    }
    rearrange_buttons(handler);
    show_captions(true);
    tell_server_mode(handler, false);
  });
}

void Modes::PassiveMode_Click() {
  guard(console_, "Lineweir_PassiveMode_Click", [&] {
    MainForm& form = console_.Lineweir;
    form.PassiveMode.checked = !form.PassiveMode.checked;
    if (form.PassiveMode.checked) {
      console_.panel.disable_all();
      StudioMode_Click();
      form.ScreenerMode.enabled = false;
    } else {
      console_.panel.set_dial(true);
      StudioMode_Click();
      form.ScreenerMode.enabled = true;
    }
  });
}

void Modes::CheckPassiveState() {
  guard(console_, "Lineweir_CheckPassiveState", [&] {
    MainForm& form = console_.Lineweir;
    if (!form.PassiveMode.checked) return;
    if (form.ScreenerMode.checked) StudioMode_Click();
    console_.panel.disable_all();
    form.ScreenerMode.enabled = false;
  });
}

void Modes::MitelPhone1_Click() {
  guard(console_, "Lineweir_MitelPhone1_Click", [&] { choose_handset(1); });
}

void Modes::MitelPhone2_Click() {
  guard(console_, "Lineweir_MitelPhone2_Click", [&] { choose_handset(2); });
}

void Modes::NextGenPhone_Click(int Index) {
  constexpr std::string_view handler = "Lineweir_NextGenPhone_Click";
  guard(console_, handler, [&] {
    MainForm& form = console_.Lineweir;
    for (int phone = 0; phone < form.NextGenPhone.upper_bound(); ++phone) {
      if (form.NextGenPhone.loaded(phone)) form.NextGenPhone(phone).checked = phone == Index;
    }
    renew_window_caption(console_);
    console_.program.ConsoleNumber = Index;
    if (!form.WinsockMenu.checked) return;
    socket_trap(console_, handler, [&] {
      ServerPacket packet = console_.server.packet(ClientCommand::CmdSelectPhone);
      packet.AltInfo = field_byte(Index);
      console_.server.send(packet);
    });
  });
}

void Modes::AutoDataEntry_Click() {
  guard(console_, "Lineweir_AutoDataEntry_Click", [&] {
    MenuItem& item = console_.Lineweir.AutoDataEntry;
    item.checked = !item.checked;
  });
}

void Modes::follow_equipment() {
  const EquipmentMenus* menus = menus_of(console_.lines.ThePhoneFlag);
  if (menus == nullptr) return;
  MainForm& form = console_.Lineweir;
  if (menus->remote_next && !form.ScreenerMode.checked) {
    give_remote_next();
  } else {
    silence_remote_next();
    if (!menus->remote_next) form.RemoteNext.enabled = false;
  }
  const bool had_phones = form.NextGenPhoneMenu.visible;
  form.MitelOption.visible = menus->handsets;
  form.NextGenPhoneMenu.visible = menus->phones;
  // What a handset gives the producer, a phone gives as well.
  if (had_phones != menus->phones && form.ScreenerMode.checked) console_.panel.set_for_producer();
  if (menus->phones) {
    form.GetPhones.enabled = true;
    form.ServerShowData.visible = true;
  }
}

void Modes::give_remote_next() {
  const EquipmentMenus* menus = menus_of(console_.lines.ThePhoneFlag);
  if (menus != nullptr && menus->remote_next && console_.program.RemoteNextAllowed) {
    console_.Lineweir.RemoteNext.enabled = true;
  }
}

void Modes::take_remote_next_away() {
  if (console_.Lineweir.RemoteNext.checked) {
    silence_remote_next();
    console_.phone.PhoneCommand("R", bank_none);
  }
  console_.Lineweir.RemoteNext.enabled = false;
}

void Modes::show_captions(bool talent) {
  MainForm& form = console_.Lineweir;
  const ModeCaptions& captions = talent ? talent_captions : producer_captions;
  form.CenterLabel1.caption = captions.next_button;
  form.CenterLabel2.caption = captions.next_to_conf_button;
  form.Label9.caption = captions.conference_heading;
  form.Label10.caption = captions.main_heading;
  form.caption = window_caption(console_, talent);
}

void Modes::rearrange_buttons(std::string_view handler) {
  platform::SerialPort& switch_console = console_.services.comm2;
  const bool was_open = switch_console.is_open();
  switch_console.close();
  console_.layout.lay_out_drop_buttons();
  if (was_open) console_.remote_port.reopen(handler);
}

void Modes::show_row_icons() {
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    console_.rows.SetCiconPosition1(line);
    console_.rows.SetCiconPosition2(line);
    console_.rows.show_icons(line);
  }
}

void Modes::choose_handset(int number) {
  console_.Lineweir.MitelPhone1.checked = number == 1;
  console_.Lineweir.MitelPhone2.checked = number == 2;
}

void Modes::silence_remote_next() {
  console_.Lineweir.RemoteNext.checked = false;
  console_.Lineweir.RemoteNextTimer.enabled = false;
}

void Modes::tell_server_mode(std::string_view handler, bool producer) {
  if (!console_.Lineweir.WinsockMenu.checked) return;
  socket_trap(console_, handler, [&] {
    ServerPacket packet = console_.server.packet(ClientCommand::CmdSetMode);
    packet.AltInfo = producer ? 1 : 0;
    console_.server.send(packet);
  });
}

}  // namespace lineweir

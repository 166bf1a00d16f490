#include "callcontrol/modes.h"

#include <array>

#include "callcontrol/next_key.h"
#include "callcontrol/switch_console_port.h"
#include "lines/equipment_kinds.h"
#include "link/links.h"
#include "screen/button_panel.h"
#include "screen/row_choice.h"
#include "screen/row_display.h"
#include "screen/screen_layout.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/window_caption.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto producer_handler = "Lineweir_ScreenerMode_Click";
constexpr auto talent_handler = "Lineweir_StudioMode_Click";

struct ModeCaptions {
  std::string_view next_button;
  std::string_view next_to_conf_button;
  // Above the conference and the main buttons of the rows.
  std::string_view conference_heading;
  std::string_view main_heading;
};

constexpr ModeCaptions producer_captions = {"R&EADY", "&ANSWER NEXT", "Next", "Ans"};
constexpr ModeCaptions talent_captions = {"&NEXT TO MAIN", "NE&XT TO CONF", "Conf", "Main"};

}  // namespace

Modes::Modes(ConsoleState& state, const Links& links, NextKey& next_key, RowDisplay& rows,
             ButtonPanel& panel, ScreenLayout& layout, RowChoice& row_choice,
             SwitchConsolePort& switch_console_port)
    : state_(state),
      links_(links),
      next_key_(next_key),
      rows_(rows),
      panel_(panel),
      layout_(layout),
      row_choice_(row_choice),
      switch_console_port_(switch_console_port) {
  layout.on_buttons_placed = [this] { SetEnabledDisabled(); };
  MainForm& form = state.Lineweir;
  wire(form.ScreenerMode.on_click, state_.trace, producer_handler,
       [this] { ScreenerMode_Click(); });
  wire(form.StudioMode.on_click, state_.trace, talent_handler, [this] { StudioMode_Click(); });
  wire(form.PassiveMode.on_click, state_.trace, "Lineweir_PassiveMode_Click",
       [this] { PassiveMode_Click(); });
}

void Modes::ScreenerMode_Click() {
  MainForm& form = state_.Lineweir;
  form.StudioMode.checked = false;
  form.ScreenerMode.checked = true;
  show_captions(false);
  next_key_.take_away();
  panel_.set_for_producer();
  rearrange_buttons(producer_handler);
  show_row_icons();
  row_choice_.RefreshVisibleRows();
  links_.in_use().mode(producer_handler, true);
}

void Modes::StudioMode_Click() {
  MainForm& form = state_.Lineweir;
  form.StudioMode.checked = true;
  form.ScreenerMode.checked = false;
  form.Drop2.visible = true;
  form.Hold2.visible = true;
  next_key_.give();
  if (form.PassiveMode.checked) {
    panel_.show_small_drops_disabled();
  } else {
    panel_.set_for_talent();
  }
  rearrange_buttons(talent_handler);
  show_captions(true);
  links_.in_use().mode(talent_handler, false);
}

void Modes::PassiveMode_Click() {
  MainForm& form = state_.Lineweir;
  form.PassiveMode.checked = !form.PassiveMode.checked;
  if (form.PassiveMode.checked) {
    panel_.disable_all();
    form.StudioMode.on_click();
    form.ScreenerMode.enabled = false;
  } else {
    panel_.set_dial(true);
    form.StudioMode.on_click();
    form.ScreenerMode.enabled = !form.ScreenerMode.withheld;
  }
}

void Modes::settle_rights() {
  MainForm& form = state_.Lineweir;
  form.RemoteNext.enabled = false;
  if (!form.ScreenerMode.checked) next_key_.give();
  // Nobody could end it.
  if (form.RemoteNext.checked && !form.RemoteNext.enabled) next_key_.silence();
  panel_.set_dial(!form.Dial.withheld);
  CheckPassiveState();
}

void Modes::CheckPassiveState() {
  guard(state_.trace, "Lineweir_CheckPassiveState", [&] {
    MainForm& form = state_.Lineweir;
    if (!form.PassiveMode.checked) return;
    if (form.ScreenerMode.checked) form.StudioMode.on_click();
    panel_.disable_all();
    form.ScreenerMode.enabled = false;
  });
}

void Modes::SetEnabledDisabled() {
  guard(state_.trace, "Lineweir_SetEnabledDisabled", [&] {
    if (server_decides(state_.lines.ThePhoneFlag)) return;
    if (state_.Lineweir.ScreenerMode.checked) {
      next_key_.take_away();
      panel_.set_for_producer();
    } else {
      next_key_.give();
      panel_.set_for_talent();
    }
    CheckPassiveState();
  });
}

void Modes::follow_equipment() {
  const EquipmentMenus* menus = menus_of(state_.lines.ThePhoneFlag);
  if (menus == nullptr) return;
  MainForm& form = state_.Lineweir;
  if (menus->remote_next && !form.ScreenerMode.checked) {
    next_key_.give();
  } else {
    next_key_.silence();
    if (!menus->remote_next) form.RemoteNext.enabled = false;
  }
  const bool had_phones = form.NextGenPhoneMenu.visible;
  form.MitelOption.visible = menus->handsets;
  form.NextGenPhoneMenu.visible = menus->phones;
  if (had_phones != menus->phones) renew_window_caption(state_);
  // What a handset gives the producer, a phone gives as well; names that are none have hidden them.
  if (form.ScreenerMode.checked) panel_.set_for_producer();
  if (menus->phones) {
    form.GetPhones.enabled = true;
    form.ServerShowData.visible = true;
  }
}

void Modes::show_captions(bool talent) {
  MainForm& form = state_.Lineweir;
  const ModeCaptions& captions = talent ? talent_captions : producer_captions;
  form.CenterLabel1.caption = captions.next_button;
  form.CenterLabel2.caption = captions.next_to_conf_button;
  form.Label9.caption = captions.conference_heading;
  form.Label10.caption = captions.main_heading;
  form.caption = window_caption(state_, talent);
}

void Modes::rearrange_buttons(std::string_view handler) {
  platform::SerialPort& switch_console = state_.services.comm2;
  const bool was_open = switch_console.is_open();
  switch_console.close();
  layout_.lay_out_drop_buttons();
  if (was_open) switch_console_port_.reopen(handler);
}

void Modes::show_row_icons() {
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    rows_.SetCiconPosition1(line);
    rows_.SetCiconPosition2(line);
    rows_.show_icons(line);
  }
}

}  // namespace lineweir

#include "callcontrol/save_and_ready.h"

#include <memory>

#include "callcontrol/next_caller.h"
#include "callerdata/caller_data.h"
#include "elements/key_characters.h"
#include "lines/equipment_kinds.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto click_handler = "Form4_SaveReady_Click";
constexpr int control_shift = 2;

std::string not_at_handset(int line) {
  return "Line " + std::to_string(line + 1) + " isn't at this console's handset";
}

}  // namespace

SaveAndReady::SaveAndReady(ConsoleState& state, CallerDataEntry& caller_data,
                           NextCaller& next_caller)
    : FormWatch(state.Lineweir),
      state_(state),
      caller_data_(caller_data),
      next_caller_(next_caller) {
  wire(state.Form4.SaveReady.on_click, state_.trace, click_handler, [this] { SaveReady_Click(); });
  wire(state.Form4.on_key_down, state_.trace, "Form4_Form_KeyDown",
       [this](int& key_code, int shift) { Form_KeyDown(key_code, shift); });
  caller_data.on_held_changed = [this] { show_button(); };
}

void SaveAndReady::Form_KeyDown(int& KeyCode, int Shift) {
  if (KeyCode != enter_key || Shift != control_shift) return;
  KeyCode = 0;
  SaveReady_Click();
}

std::string SaveAndReady::why_not() const {
  const MainForm& form = state_.Lineweir;
  if (form.StudioMode.checked) return "Callers are marked ready in producer mode";
  const auto caller = caller_data_.held_caller();
  if (!caller) return "The caller isn't on the line any more";
  if (server_decides(state_.lines.ThePhoneFlag)) {
    return "The server chooses whom READY takes: save, then press READY";
  }
  if (form.NextButton.withheld) return "READY isn't allowed for this user";
  if (!form.no_link.get().empty()) return form.no_link;
  if (!next_caller_.at_handset(caller->line)) return not_at_handset(caller->line);
  return {};
}

void SaveAndReady::SaveReady_Click() {
  if (under_way_ || !state_.Form4.loaded()) return;
  under_way_ = true;
  const std::unique_ptr<bool, void (*)(bool*)> at_end(&under_way_, [](bool* on) { *on = false; });
  said_ = why_not();
  if (said_.empty()) return save_and_mark_ready();
  caller_data_.say(said_);
}

void SaveAndReady::save_and_mark_ready() {
  const auto caller = caller_data_.held_caller();
  if (!caller || !caller_data_.save()) return;
  // Sending lets the lines go on, and the caller may have left the handset meanwhile.
  if (caller_data_.is_on_line(*caller) && next_caller_.at_handset(caller->line)) {
    next_caller_.mark_ready(caller->line);
  } else {
    state_.messages.ShowMessage("Saved, but not marked ready: " + not_at_handset(caller->line) +
                                " any more.");
  }
}

void SaveAndReady::show_button() {
  if (!state_.Form4.loaded()) return;
  Button& button = state_.Form4.SaveReady;
  const std::string why = why_not();
  button.visible = !state_.Lineweir.StudioMode.checked;
  button.enabled = why.empty();
  button.tool_tip = why.empty() ? "Saves and marks the caller ready (Ctrl+Enter)" : why;
  if (said_.empty() || said_ == why) return;
  said_.clear();
  caller_data_.say({});
}

void SaveAndReady::changed(Element&, PropertyId property) {
  // The modes and the handset are checked in menus; a right and the link are properties.
  if (property == PropertyId::Checked || property == PropertyId::Withheld ||
      property == PropertyId::NoLink) {
    show_button();
  }
}

}  // namespace lineweir

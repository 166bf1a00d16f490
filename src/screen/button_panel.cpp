#include "screen/button_panel.h"

#include <cmath>
#include <initializer_list>

#include "screen/button_faces.h"
#include "state/console_state.h"
#include "state/seat.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// From the button's left to its lettering, as parts of its width.
constexpr double large_label_part = 3.75;
constexpr double small_label_part = 9.4;

void set_button(Picture& button, bool enabled, const ButtonFaces& faces) {
  button.enabled = enabled && !button.withheld;
  button.picture = button.enabled ? faces.up : faces.disabled;
}

void set_row_buttons(const ControlArray<Picture>& buttons, bool enabled) {
  for (int line = 0; line < buttons.upper_bound(); ++line) {
    if (buttons.loaded(line)) set_button(buttons(line), enabled, hybrid_faces);
  }
}

// Sets a button without changing its size; a pressed one keeps its face.
void set_in_own_size(Picture& button, bool enabled) {
  button.enabled = enabled && !button.withheld;
  const ButtonFaces* faces = faces_holding(button.picture.get());
  if (faces == nullptr || button.picture == faces->down) return;
  button.picture = button.enabled ? faces->up : faces->disabled;
}

}  // namespace

ButtonPanel::ButtonPanel(ConsoleState& state) : state_(state) {
  wire(state.Lineweir.LabelMoveTimer.on_timer, state_.trace, "Lineweir_LabelMoveTimer_Timer",
       [this] { LabelMoveTimer_Timer(); });
}

void ButtonPanel::set_for_talent() {
  for (const PanelRule& rule : panel_rules) set(rule.group, holds(rule.talent), drop_small_faces);
}

void ButtonPanel::set_for_producer() {
  const bool passive = state_.Lineweir.PassiveMode.checked;
  for (const PanelRule& rule : panel_rules) {
    const bool in_row =
        rule.group == ButtonGroup::MainRows || rule.group == ButtonGroup::ConferenceRows;
    const bool enabled = holds(rule.producer) && (in_row || !passive);
    const bool alone = rule.group == ButtonGroup::MainDropAndHold;
    set(rule.group, enabled, alone ? drop_large_faces : drop_small_faces);
  }
}

void ButtonPanel::disable_all() {
  for (const PanelRule& rule : panel_rules) set(rule.group, false, drop_small_faces);
  set_dial(false);
}

void ButtonPanel::set_dial(bool enabled) { set(ButtonGroup::Dial, enabled, drop_small_faces); }

void ButtonPanel::show_small_drops_disabled() {
  MainForm& form = state_.Lineweir;
  for (Picture* button : {&form.Drop1, &form.Hold1, &form.Drop2, &form.Hold2}) {
    button->picture = drop_small_faces.disabled;
  }
}

void ButtonPanel::fit_center_buttons() {
  MainForm& form = state_.Lineweir;
  const ButtonFaces& wanted = center_faces_now();
  for (Picture* button : {&form.NextButton, &form.NextToConfButton, &form.Dial}) {
    for (const ButtonFaces* faces : {&center_faces, &right_faces}) {
      if (!faces->holds(button->picture.get())) continue;
      // At the right alone a button without its hybrid keeps the face of a button that is up.
      const bool is_dead = faces == &right_faces && &wanted == &center_faces && !button->enabled;
      button->picture =
          is_dead ? wanted.disabled : faces->counterpart(button->picture.get(), wanted);
      break;
    }
  }
}

void ButtonPanel::follow_hybrid(Hybrid hybrid, bool on) {
  MainForm& form = state_.Lineweir;
  for (const HybridRule& rule : hybrid_rules) {
    if (rule.hybrid != hybrid) continue;
    set(rule.rows, on, drop_small_faces);
    set(rule.next, on, drop_small_faces);
    const bool at_right = &center_faces_now() == &right_faces;
    if (!on && at_right && rule.next_stays_up_at_right) form.NextButton.picture = right_faces.up;
    if (rule.drops_keep_size) {
      set_in_own_size(form.Drop1, on);
      set_in_own_size(form.Hold1, on);
    } else {
      set(rule.drop_and_hold, on, drop_small_faces);
    }
  }
}

void ButtonPanel::LabelMoveTimer_Timer() {
  state_.Lineweir.LabelMoveTimer.enabled = false;
  place_drop_labels();
}

void ButtonPanel::place_drop_labels() {
  MainForm& form = state_.Lineweir;
  const double part =
      drop_large_faces.holds(form.Drop1.picture.get()) ? large_label_part : small_label_part;
  const auto place = [part](const Picture& button, Label& label) {
    label.left = static_cast<int>(std::lround(button.width / part));
    label.width = button.width - label.left;
  };
  place(form.Drop1, form.Drop1Label);
  place(form.Hold1, form.Hold1Label);
}

bool ButtonPanel::holds(ButtonCondition condition) const {
  switch (condition) {
    case ButtonCondition::Never:
      return false;
    case ButtonCondition::Always:
      return true;
    case ButtonCondition::MainHybridOn:
      return state_.program.MainHybridOn;
    case ButtonCondition::ConfHybridOn:
      return state_.program.ConfHybridOn;
    case ButtonCondition::HandsetChosen:
      return seat_of(state_).has_handset();
  }
  return false;
}

void ButtonPanel::set(ButtonGroup group, bool enabled, const ButtonFaces& drop_faces) {
  MainForm& form = state_.Lineweir;
  switch (group) {
    case ButtonGroup::MainRows:
      return set_row_buttons(form.OnHybrid1, enabled);
    case ButtonGroup::ConferenceRows:
      return set_row_buttons(form.OnHybrid2, enabled);
    case ButtonGroup::MainDropAndHold:
      set_button(form.Drop1, enabled, drop_faces);
      return set_button(form.Hold1, enabled, drop_faces);
    case ButtonGroup::ConferenceDropAndHold:
      set_button(form.Drop2, enabled, drop_faces);
      return set_button(form.Hold2, enabled, drop_faces);
    case ButtonGroup::Next:
      return set_button(form.NextButton, enabled, center_faces_now());
    case ButtonGroup::NextToConf:
      return set_button(form.NextToConfButton, enabled, center_faces_now());
    case ButtonGroup::Dial:
      return set_button(form.Dial, enabled, center_faces_now());
  }
}

const ButtonFaces& ButtonPanel::center_faces_now() const {
  return center_button_faces(state_.program.VisibleLines);
}

}  // namespace lineweir

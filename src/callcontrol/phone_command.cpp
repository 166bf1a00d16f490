#include "callcontrol/phone_command.h"

#include <string>

#include "base/text.h"
#include "link/command_word.h"
#include "link/link_watch.h"
#include "link/links.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr std::string_view next_button_word = "05";

}  // namespace

void PhoneCommands::PhoneCommand(std::string_view TheCommand, int TheBank) {
  StudioLink& link = links_.in_use();
  const bool locked = link.locks_keys();
  if (!locked) link.command("Lineweir_PhoneCommand", TheCommand, TheBank);
  // A timer sends the next key's word, with nobody waiting for what comes of it.
  const bool is_told = (locked || !link.tells_lost_commands()) && TheCommand != next_key_word;
  if (is_told) link_.command_given();
}

bool PhoneCommands::keys_are_locked() const { return links_.in_use().locks_keys(); }

bool PhoneCommands::refuse_locked_key() {
  const bool locked = keys_are_locked();
  if (locked) link_.command_given();
  return locked;
}

void PhoneCommands::UCommand(std::string_view TheCommand) {
  guard(state_.trace, "Lineweir_UCommand", [&] {
    if (!state_.Lineweir.RemoteNext.checked) return;
    if (right_part(TheCommand, 2) == next_button_word) {
      press_next_button();
    } else {
      PhoneCommand(TheCommand, bank_none);
    }
  });
}

void PhoneCommands::press_next_button() {
  const MainForm& form = state_.Lineweir;
  if (!form.StudioMode.checked) return;
  for (const Picture* button : {&form.NextButton, &form.NextToConfButton}) {
    if (!button->enabled) continue;
    button->on_click();
    return;
  }
}

}  // namespace lineweir

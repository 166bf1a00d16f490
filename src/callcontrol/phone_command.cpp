#include "callcontrol/phone_command.h"

#include <string>

#include "callcontrol/command_frame.h"
#include "callcontrol/socket_trap.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"

namespace lineweir {
namespace {

constexpr std::string_view procedure = "Lineweir_PhoneCommand";
constexpr std::string_view next_button_word = "05";
// Sent by a timer too, with nobody waiting for what comes of it.
constexpr std::string_view regular_word = "X";

}  // namespace

void PhoneCommands::PhoneCommand(std::string_view TheCommand, int TheBank) {
  if (console_.Lineweir.NetworkConnectionOption.checked) {
    write_remote(TheCommand);
  } else if (console_.Lineweir.WinsockMenu.checked) {
    // A socket that isn't connected is told with a message of its own.
    return write_socket(TheCommand, TheBank);
  } else {
    write_serial(TheCommand);
  }
  if (TheCommand != regular_word) console_.link.command_given();
}

void PhoneCommands::write_remote(std::string_view word) {
  bool word_written = false;
  socket_trap(console_, procedure, [&] {
    const auto write = [&](std::string_view text) {
      console_.remote.serial_input().set_property(
          "InputSerialPort", {std::int64_t{console_.program.GroupNumber}}, std::string(text));
    };
    if (!word_written) write(word);
    word_written = true;
    write("");
  });
}

void PhoneCommands::write_serial(std::string_view word) {
  socket_trap(console_, procedure, [&] {
    if (console_.services.comm1.is_open()) console_.services.comm1.output(word);
  });
}

void PhoneCommands::write_socket(std::string_view word, int bank) {
  socket_trap(console_, procedure, [&] {
    const CommandContext context{console_.program.GroupNumber, console_.program.ConsoleNumber,
                                 console_.Lineweir.ScreenerMode.checked, console_.lines,
                                 console_.dial};
    if (const auto packet = command_frame(word, bank, context)) console_.server.send(*packet);
  });
}

void PhoneCommands::UCommand(std::string_view TheCommand) {
  guard(console_, "Lineweir_UCommand", [&] {
    if (!console_.Lineweir.RemoteNext.checked) return;
    if (right_part(TheCommand, 2) == next_button_word) {
      press_next_button();
    } else {
      PhoneCommand(TheCommand, bank_none);
    }
  });
}

void PhoneCommands::press_next_button() {
  const MainForm& form = console_.Lineweir;
  if (!form.StudioMode.checked) return;
  for (const Picture* button : {&form.NextButton, &form.NextToConfButton}) {
    if (!button->enabled) continue;
    if (button->on_click) button->on_click();
    return;
  }
}

}  // namespace lineweir

#pragma once

#include <string_view>

namespace lineweir {

struct Console;

// The one door through which command words go out to the telephone equipment, and the one through
// which the equipment's own words come in.
class PhoneCommands {
 public:
  explicit PhoneCommands(Console& console) : console_(console) {}

  // Sends the word on the road that is open: remote objects, socket, else the serial port. TheBank
  // is bank_main, bank_conference or bank_none.
  void PhoneCommand(std::string_view TheCommand, int TheBank);

  // A word that begins with "U": the equipment's next button, or one to pass on as it stands.
  void UCommand(std::string_view TheCommand);

 private:
  void write_remote(std::string_view word);
  void write_serial(std::string_view word);
  void write_socket(std::string_view word, int bank);
  void press_next_button();

  Console& console_;
};

}  // namespace lineweir

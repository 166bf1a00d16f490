#pragma once

#include <string_view>

namespace lineweir {

class LinkWatch;
class Links;
struct ConsoleState;

// The one door through which command words go out to the telephone equipment, and the one through
// which the equipment's own words come in.
class PhoneCommands {
 public:
  PhoneCommands(ConsoleState& state, const Links& links, LinkWatch& link)
      : state_(state), links_(links), link_(link) {}

  // Sends the word on the way that is in use. TheBank is bank_main, bank_conference or bank_none.
  void PhoneCommand(std::string_view TheCommand, int TheBank);

  // While it is true nothing comes of a key, and PhoneCommand tells the user why.
  bool keys_are_locked() const;

  // For a key that doesn't end in a word: whether nothing comes of it. The user is told why.
  bool refuse_locked_key();

  // A word that begins with "U": the equipment's next button, or one to pass on as it stands.
  void UCommand(std::string_view TheCommand);

 private:
  void press_next_button();

  ConsoleState& state_;
  const Links& links_;
  LinkWatch& link_;
};

}  // namespace lineweir

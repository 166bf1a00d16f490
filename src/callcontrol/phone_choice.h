#pragma once

namespace lineweir {

class Links;
struct ConsoleState;

// The handset or the server's phone at which the seat works, chosen in the menu.
class PhoneChoice {
 public:
  PhoneChoice(ConsoleState& state, const Links& links);

 private:
  void choose_handset(int number);
  void NextGenPhone_Click(int Index);

  ConsoleState& state_;
  const Links& links_;
};

}  // namespace lineweir

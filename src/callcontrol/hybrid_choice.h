#pragma once

namespace lineweir {

class ButtonPanel;
class Modes;
struct ConsoleState;

// Which of the two hybrids exist at this console, as the boxes of DisplayOptionForm say.
class HybridChoice {
 public:
  HybridChoice(ConsoleState& state, Modes& modes, ButtonPanel& panel);

 private:
  // Index 0 is the main hybrid, 1 the conference hybrid. In talent mode the hybrid's buttons follow
  // at once.
  void HybridCheck_Click(int Index);

  ConsoleState& state_;
  Modes& modes_;
  ButtonPanel& panel_;
};

}  // namespace lineweir

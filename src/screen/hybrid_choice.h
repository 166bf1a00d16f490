#pragma once

namespace lineweir {

struct Console;

// Which of the two hybrids exist at this console, as the boxes of DisplayOptionForm say.
class HybridChoice {
 public:
  explicit HybridChoice(Console& console);

  // Index 0 is the main hybrid, 1 the conference hybrid. In talent mode the hybrid's buttons follow
  // at once.
  void HybridCheck_Click(int Index);

 private:
  Console& console_;
};

}  // namespace lineweir

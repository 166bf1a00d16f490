#pragma once

#include "platform/dialogs.h"

namespace lineweir {

struct Console;

// The font of the row texts, and whether text grows with the window.
class Fonts {
 public:
  explicit Fonts(Console& console);

  // Row texts are bold whatever the choice says.
  void FontChange(const platform::FontChoice& choice);
  platform::FontChoice present() const;

  void FontMenuItem_Click();
  void TextGrowToggle_Click();
  void GreyScreenOption_Click();

 private:
  Console& console_;
};

}  // namespace lineweir

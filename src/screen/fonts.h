#pragma once

#include "platform/dialogs.h"
#include "state/settings_record.h"

namespace lineweir {

struct ConsoleState;

// In points, whatever a file, a profile or a dialog asks for.
inline constexpr int smallest_font = 6;
inline constexpr int largest_font = 72;

// The font of the row texts, and whether text grows with the window.
class Fonts {
 public:
  explicit Fonts(ConsoleState& state);

  // Row texts are bold whatever the choice says.
  void FontChange(const platform::FontChoice& wanted);

  // Changes to the font that the settings hold. Where they name none the present one stays.
  void restore(const SettingsRecord& record);

  // The font in force: FName, FSize, FBold and FItalic. The headings show whether it is bold.
  platform::FontChoice present() const;

 private:
  void FontMenuItem_Click();

  ConsoleState& state_;
};

}  // namespace lineweir

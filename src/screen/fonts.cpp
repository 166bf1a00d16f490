#include "screen/fonts.h"

#include <algorithm>
#include <string>

#include "base/integer16.h"
#include "base/text.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

void set_font(FontProperties& font, const platform::FontChoice& choice, bool bold) {
  font.name = choice.name;
  font.size = choice.size;
  font.bold = bold;
  font.italic = choice.italic;
}

}  // namespace

Fonts::Fonts(ConsoleState& state) : state_(state) {
  MainForm& form = state.Lineweir;
  wire(form.FontMenuItem.on_click, state_.trace, "Lineweir_FontMenuItem_Click",
       [this] { FontMenuItem_Click(); });
}

void Fonts::FontChange(const platform::FontChoice& wanted) {
  guard(state_.trace, "Lineweir_FontChange", [&] {
    platform::FontChoice choice = wanted;
    choice.size = std::clamp(wanted.size, smallest_font, largest_font);
    MainForm& form = state_.Lineweir;
    for (int column = 1; column < column_count; ++column) {
      set_font(form.CaptionLabel(column).font, choice, choice.bold);
    }
    for (Label* label : {&form.Label1, &form.Label9, &form.Label10}) {
      set_font(label->font, choice, choice.bold);
    }
    for (int column = 0; column < column_count; ++column) {
      for (int line = 0; line < state_.lines.LineCount; ++line) {
        set_font(form.column_labels(column)(line).font, choice, true);
      }
    }
    for (Label* label : {&form.StatusText, &form.CountDownTime, &form.RealTime}) {
      set_font(label->font, choice, true);
    }
    set_font(form.Text1.font, choice, true);
  });
}

platform::FontChoice Fonts::present() const {
  const MainForm& form = state_.Lineweir;
  const FontProperties& font = form.Text1.font;
  return {font.name, font.size, form.CaptionLabel(1).font.bold, font.italic};
}

void Fonts::restore(const SettingsRecord& record) {
  const std::string name(trimmed(record.MessageFontName));
  if (name.empty()) return FontChange(present());
  FontChange({name, record.MessageFontSize, record.MessageFontBold, record.MessageFontItalic});
}

void Fonts::FontMenuItem_Click() {
  auto choice = state_.services.dialogs.ask_font(present());
  if (!choice) throw Failure(failure_number::dialog_cancelled, "Cancel was selected.");
  choice->size = integer16(choice->size);
  FontChange(*choice);
}

}  // namespace lineweir

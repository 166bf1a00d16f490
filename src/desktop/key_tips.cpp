#include "desktop/key_tips.h"

#include <array>
#include <string_view>

#include "desktop/core_text.h"
#include "desktop/element_looks.h"
#include "desktop/text_painter.h"
#include "elements/label.h"
#include "forms/main_form.h"

namespace lineweir {
namespace {

// The digit keys press the keys of the rows, ten by ten.
QString digit_of(int line) { return QString::number((line + 1) % 10); }

QString row_hot_key(const Control& key) {
  QString words = key.name() == "OnHybrid2" ? QStringLiteral("Ctrl+") : QString();
  if (key.index() >= 10) words += QStringLiteral("Shift+");
  return words + digit_of(key.index());
}

// The letter that is underlined in the key's lettering.
QString hot_key(const Control& key) {
  if (look_of(key).look == Look::RowKey) return row_hot_key(key);
  for (const Element* element : key.form().elements()) {
    const auto* label = dynamic_cast<const Label*>(element);
    if (label == nullptr || label->container() != &key) continue;
    const Caption caption = caption_of(shown_text(*label, label->caption.get()));
    if (caption.access_key >= 0) return caption.text.mid(caption.access_key, 1).toUpper();
  }
  return {};
}

bool is_of_conference(const Control& key) {
  constexpr std::array keys = {std::string_view("Drop2"), std::string_view("Hold2"),
                               std::string_view("NextToConfButton"), std::string_view("OnHybrid2")};
  return std::ranges::find(keys, key.name()) != keys.end();
}

}  // namespace

QString key_tip(const Control& key) {
  const QString what = spoken_name(key);
  const QString letter = hot_key(key);
  return letter.isEmpty() ? what : what + QStringLiteral(" (%1)").arg(letter);
}

QString why_disabled(const MainForm& form, const Control& key) {
  if (key.enabled) return {};
  if (form.PassiveMode.checked) {
    return QStringLiteral("This console is passive (Configuration, Mode)");
  }
  if (form.ScreenerMode.checked) {
    if (form.MitelPhone1.checked || form.MitelPhone2.checked) {
      return QStringLiteral(
          "Choose Producer again to work with this handset (Configuration, Mode)");
    }
    return QStringLiteral("No handset is chosen here (Configuration, Handset)");
  }
  return is_of_conference(key)
             ? QStringLiteral("The conference hybrid isn't used here (Display Data Options)")
             : QStringLiteral("The main hybrid isn't used here (Display Data Options)");
}

}  // namespace lineweir

#include "desktop/accessible_names.h"

#include <array>
#include <string_view>

#include "desktop/core_text.h"
#include "desktop/text_painter.h"
#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"

namespace lineweir {
namespace {

struct NameRow {
  std::string_view form;
  std::string_view element;
  // %1 is the caption of the partner of the same index.
  const char* spoken;
  std::string_view partner = {};
};

constexpr std::array names = {
    NameRow{"DebugForm", "Text1", "Trace"},
    NameRow{"DisplayOptionForm", "WidthText", "Width of %1", "CheckItem"},
    NameRow{"DisplayOptionForm", "List1", "Order of the columns"},
    NameRow{"DisplayOptionForm", "MessageGroupSelector", "Group for messages"},
    NameRow{"FlashMessA", "Text1", "Message"},
    NameRow{"FlashMessA", "Text2", "From"},
    NameRow{"FlashMessA", "DBList1", "Hot list"},
    NameRow{"FlashMessA", "Today", "Messages of the show"},
    NameRow{"Form2", "Grid1", "Rows 1 to 20 of the plan"},
    NameRow{"Form2", "Grid2", "Rows 21 to 40 of the plan"},
    NameRow{"Form4", "TheText", "%1", "Label"},
};

QString caption_of_partner(const Control& control, std::string_view partner) {
  const Element* element = control.form().find(partner, control.index());
  if (const auto* label = dynamic_cast<const Label*>(element)) {
    return caption_of(shown_text(*label, label->caption.get())).text;
  }
  if (const auto* box = dynamic_cast<const CheckBox*>(element)) {
    return caption_of(shown_text(*box, box->caption.get())).text;
  }
  return {};
}

}  // namespace

QString accessible_name(const Control& control) {
  for (const NameRow& row : names) {
    if (row.element != control.name() || row.form != control.form().name()) continue;
    QString name = QString::fromLatin1(row.spoken);
    return row.partner.empty()
               ? name
               : name.replace(QLatin1String("%1"), caption_of_partner(control, row.partner));
  }
  return {};
}

}  // namespace lineweir

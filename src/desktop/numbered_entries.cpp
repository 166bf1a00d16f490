#include "desktop/numbered_entries.h"

namespace lineweir {
namespace {

constexpr int entries_with_keys = 9;
// As wide as a digit.
constexpr QChar figure_space(0x2007);

}  // namespace

void NumberedEntries::initStyleOption(QStyleOptionViewItem* option,
                                      const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const QString number =
      index.row() < entries_with_keys ? QString::number(index.row() + 1) : QString(figure_space);
  option->text = number + QStringLiteral("   ") + option->text.simplified();
}

}  // namespace lineweir

#pragma once

#include <QStyledItemDelegate>

namespace lineweir {

// Set in Qt Designer on a list whose first nine entries have keys of their own.
inline constexpr const char* numbered_property = "numbered";

// Draws the entries of such a list with the numbers of their keys in front, one line each.
class NumberedEntries final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace lineweir

#pragma once

#include <QStyledItemDelegate>

namespace lineweir {

// Cells of one line in which pieces of the text may be marked, as with a marker pen. A text too
// long for its cell ends in an ellipsis; where that would hide the first marked piece the text
// begins shortly before it.
class MarkedTextDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
};

}  // namespace lineweir

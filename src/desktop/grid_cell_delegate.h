#pragma once

#include <QStyledItemDelegate>

namespace lineweir {

class Grid;

// How the cells of a grid look: what follows from other cells is muted, and the selected cell tells
// where typing goes. While the grid has the focus that cell is framed and bright, with the caret
// behind its text; without the focus only a thin frame is left.
class GridCellDelegate final : public QStyledItemDelegate {
 public:
  GridCellDelegate(const Grid& grid, QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  bool typed(int column) const;

  const Grid& grid_;
};

}  // namespace lineweir

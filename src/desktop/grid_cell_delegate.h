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

  // What a cell needs for a text.
  static int width_for(const QFontMetrics& metrics, const QString& text);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  bool typed(int column) const;
  QString text_of(const QModelIndex& index, bool editing) const;

  const Grid& grid_;
};

}  // namespace lineweir

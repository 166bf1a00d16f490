#pragma once

#include <QAbstractTableModel>
#include <unordered_map>
#include <vector>

#include "elements/data_grid.h"

namespace lineweir {

// The rows of a data grid as Qt's table view asks for them, with the columns in the order in which
// they are shown. The texts of the rows that were looked at are kept until the grid changes.
class DataGridModel final : public QAbstractTableModel {
 public:
  // The pieces of a cell's text that are to catch the eye, counted in Qt's characters.
  static constexpr int marked_pieces_role = Qt::UserRole;

  explicit DataGridModel(const DataGrid& grid) : grid_(grid) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  // To be called when the grid has changed so.
  void show_other_rows();
  void put_in(int at, int count);
  // The headings are other ones; true if they are.
  bool take_headings();

  // The grid's column that is shown in a place, and the place of a column; -1 for none.
  int grid_column(int section) const;
  int section_of(int column) const;

 private:
  QString cell_text(const QModelIndex& index) const;
  std::vector<TextPiece> marked_pieces(const QString& text) const;
  const QStringList& texts_of(int row) const;

  const DataGrid& grid_;
  QStringList headings_;
  std::vector<int> columns_;
  int rows_ = 0;
  mutable std::unordered_map<int, QStringList> texts_;
};

}  // namespace lineweir

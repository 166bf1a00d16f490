#pragma once

#include <QAbstractTableModel>
#include <unordered_map>

#include "elements/data_grid.h"

namespace lineweir {

// The rows of a data grid as Qt's table view asks for them. The texts of the rows that were looked
// at are kept until the grid changes.
class DataGridModel final : public QAbstractTableModel {
 public:
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

 private:
  const QStringList& texts_of(int row) const;

  const DataGrid& grid_;
  QStringList headings_;
  int rows_ = 0;
  mutable std::unordered_map<int, QStringList> texts_;
};

}  // namespace lineweir

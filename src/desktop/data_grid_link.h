#pragma once

#include <QTableView>
#include <memory>

#include "desktop/element_link.h"
#include "elements/data_grid.h"

namespace lineweir {

class DataGridModel;

// A data grid in a table view. The rows in sight are asked for as they come into sight, so that
// their number costs nothing.
class DataGridLink final : public ElementLink {
 public:
  DataGridLink(DataGrid& grid, QTableView& table);
  ~DataGridLink() override;

  void take_letters() override;

 private:
  void show_content() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  void show_other_rows();
  void put_in(int at, int count);
  void size_rows();
  void size_columns();

  DataGrid& grid_;
  QTableView& table_;
  std::unique_ptr<DataGridModel> model_;
};

}  // namespace lineweir

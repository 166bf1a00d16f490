#pragma once

#include <QTableWidget>

#include "desktop/element_link.h"
#include "elements/grid.h"

namespace lineweir {

// A grid in a table widget. Row 0 of the grid is the table's header.
class GridLink final : public ElementLink {
 public:
  GridLink(Grid& grid, QTableWidget& table);

  void take_letters() override;

 private:
  void show_content() override;
  void show_cell(int row, int column);
  void size_cells();
  // Gives each column its width, or what its texts need. Returns how much that is more in all.
  int size_columns();

  Grid& grid_;
  QTableWidget& table_;
  int design_minimum_;
};

}  // namespace lineweir

#include "desktop/grid_link.h"

#include <QHeaderView>
#include <cmath>

#include "desktop/core_text.h"
#include "desktop/dialog_letters.h"
#include "desktop/grid_cell_delegate.h"
#include "desktop/twips.h"

namespace lineweir {
namespace {

// The room above and below the letters of a row.
constexpr int row_padding = 4;

}  // namespace

GridLink::GridLink(Grid& grid, QTableWidget& table)
    : ElementLink(grid, table), grid_(grid), table_(table) {
  table.setRowCount(grid.rows() - 1);
  table.setColumnCount(grid.columns());
  table.setEditTriggers(QAbstractItemView::NoEditTriggers);
  table.setSelectionMode(QAbstractItemView::SingleSelection);
  // Tab is the form's, where it wants it, and otherwise leads out of the table.
  table.setTabKeyNavigation(false);
  table.setItemDelegate(new GridCellDelegate(grid, &table));
  table.verticalHeader()->hide();
  table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 2 * row_padding);
  table.horizontalHeader()->setStretchLastSection(true);
  table.horizontalHeader()->setHighlightSections(false);
  for (int column = 0; column < static_cast<int>(grid.column_widths.size()); ++column) {
    table.setColumnWidth(
        column, pixel_edge(grid.column_widths[static_cast<std::size_t>(column)], letter_scale()));
  }
  table.setMinimumWidth(static_cast<int>(std::lround(table.minimumWidth() * letter_scale())));
  QObject::connect(&table, &QTableWidget::currentCellChanged, this, [this](int row, int column) {
    if (!showing() && row >= 0 && column >= 0) grid_.select(row + 1, column);
  });
}

void GridLink::show_content() {
  for (int row = 0; row < grid_.rows(); ++row) {
    for (int column = 0; column < grid_.columns(); ++column) show_cell(row, column);
  }
  if (grid_.row >= 1) table_.setCurrentCell(grid_.row - 1, grid_.col);
}

void GridLink::show_cell(int row, int column) {
  const QString text = shown_text(grid_, grid_.cell(row, column));
  QTableWidgetItem* item =
      row == 0 ? table_.horizontalHeaderItem(column) : table_.item(row - 1, column);
  if (item != nullptr) {
    if (item->text() != text) item->setText(text);
  } else if (row == 0) {
    table_.setHorizontalHeaderItem(column, new QTableWidgetItem(text));
  } else if (!text.isEmpty()) {
    table_.setItem(row - 1, column, new QTableWidgetItem(text));
  }
}

}  // namespace lineweir

#include "desktop/grid_link.h"

#include <QHeaderView>
#include <algorithm>
#include <cmath>

#include "desktop/core_text.h"
#include "desktop/dialog_letters.h"
#include "desktop/grid_cell_delegate.h"
#include "desktop/twips.h"

namespace lineweir {
namespace {

// The room above and below the letters of a row.
constexpr int list_row_padding = 4;

}  // namespace

GridLink::GridLink(Grid& grid, QTableWidget& table)
    : ElementLink(grid, table), grid_(grid), table_(table), design_minimum_(table.minimumWidth()) {
  table.setRowCount(grid.rows() - 1);
  table.setColumnCount(grid.columns());
  table.setEditTriggers(QAbstractItemView::NoEditTriggers);
  table.setSelectionMode(QAbstractItemView::SingleSelection);
  // Tab is the form's, where it wants it, and otherwise leads out of the table.
  table.setTabKeyNavigation(false);
  table.setItemDelegate(new GridCellDelegate(grid, &table));
  table.verticalHeader()->hide();
  table.horizontalHeader()->setStretchLastSection(true);
  table.horizontalHeader()->setHighlightSections(false);
  size_cells();
  QObject::connect(&table, &QTableWidget::currentCellChanged, this, [this](int row, int column) {
    if (!showing() && row >= 0 && column >= 0) grid_.select(row + 1, column);
  });
}

void GridLink::take_letters() {
  size_cells();
  ElementLink::take_letters();
}

void GridLink::size_cells() {
  table_.verticalHeader()->setDefaultSectionSize(table_.fontMetrics().height() +
                                                 2 * list_row_padding);
  const int widened = size_columns();
  table_.setMinimumWidth(static_cast<int>(std::lround(design_minimum_ * letter_scale())) + widened);
}

int GridLink::size_columns() {
  int widened = 0;
  for (std::size_t column = 0; column < grid_.column_widths.size(); ++column) {
    const int told = pixel_edge(grid_.column_widths[column], letter_scale());
    const QString widest = column < grid_.widest_texts.size()
                               ? shown_text(grid_, grid_.widest_texts[column])
                               : QString();
    const int needed =
        widest.isEmpty() ? 0 : GridCellDelegate::width_for(table_.fontMetrics(), widest);
    table_.setColumnWidth(static_cast<int>(column), std::max(told, needed));
    widened += std::max(0, needed - told);
  }
  return widened;
}

void GridLink::show_content() {
  for (int row = 0; row < grid_.rows(); ++row) {
    for (int column = 0; column < grid_.columns(); ++column) show_cell(row, column);
  }
  if (grid_.row >= 1) table_.setCurrentCell(grid_.row - 1, grid_.col);
}

void GridLink::show_cell(int row, int column) {
  const auto place = static_cast<std::size_t>(column);
  const bool own_heading = row == 0 && place < grid_.shown_headings.size();
  const QString text =
      shown_text(grid_, own_heading ? grid_.shown_headings[place] : grid_.cell(row, column));
  QTableWidgetItem* item =
      row == 0 ? table_.horizontalHeaderItem(column) : table_.item(row - 1, column);
  if (item != nullptr) {
    if (item->text() != text) item->setText(text);
  } else if (row == 0) {
    table_.setHorizontalHeaderItem(column, new QTableWidgetItem(text));
  } else if (!text.isEmpty()) {
    item = new QTableWidgetItem(text);
    table_.setItem(row - 1, column, item);
  }
  if (row > 0 && item != nullptr && grid_.shown_as) {
    item->setData(Qt::AccessibleTextRole,
                  shown_text(grid_, grid_.shown_as(column, grid_.cell(row, column))));
  }
}

}  // namespace lineweir

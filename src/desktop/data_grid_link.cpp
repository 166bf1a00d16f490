#include "desktop/data_grid_link.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "desktop/data_grid_model.h"
#include "desktop/dialog_letters.h"
#include "desktop/marked_text_delegate.h"
#include "desktop/plain_tip.h"
#include "desktop/twips.h"

namespace lineweir {
namespace {

// The room above and below the letters of a row.
constexpr int row_padding = 4;
constexpr int text_margin = 8;

// A letter would make the view look through all rows for one that begins with it.
bool types_text(const QKeyEvent& key) {
  return !key.text().isEmpty() && key.text().front().isPrint() &&
         !key.modifiers().testFlag(Qt::ControlModifier) &&
         !key.modifiers().testFlag(Qt::AltModifier);
}

// The whole text of a cell that is too narrow for it.
void show_whole_text(QTableView& table, const QHelpEvent& event) {
  const QModelIndex index = table.indexAt(event.pos());
  const QString text = index.data().toString();
  const int room = table.columnWidth(index.column()) - text_margin;
  const bool whole = table.fontMetrics().horizontalAdvance(text) <= room;
  QToolTip::showText(event.globalPos(), whole ? QString() : plain_tip(text), &table);
}

}  // namespace

DataGridLink::DataGridLink(DataGrid& grid, QTableView& table)
    : ElementLink(grid, table),
      grid_(grid),
      table_(table),
      model_(std::make_unique<DataGridModel>(grid)) {
  table.setModel(model_.get());
  table.setSelectionBehavior(QAbstractItemView::SelectRows);
  table.setSelectionMode(QAbstractItemView::SingleSelection);
  table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table.setTabKeyNavigation(false);
  table.setWordWrap(false);
  table.setCornerButtonEnabled(false);
  table.setItemDelegate(new MarkedTextDelegate(&table));
  table.verticalHeader()->hide();
  table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  size_rows();
  QHeaderView& header = *table.horizontalHeader();
  header.setHighlightSections(false);
  header.setSectionsClickable(static_cast<bool>(grid.on_heading_click));
  header.setSortIndicatorShown(static_cast<bool>(grid.on_heading_click));
  QObject::connect(&header, &QHeaderView::sectionClicked, this,
                   [this](int section) { grid_.on_heading_click(model_->grid_column(section)); });
  QObject::connect(table.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                   [this](const QModelIndex& current) {
                     if (!showing() && current.isValid()) grid_.select(current.row() + 1);
                   });
  table.viewport()->installEventFilter(this);
  grid.on_other_rows = [this] { show_other_rows(); };
  grid.on_put_in = [this](int at, int count) { put_in(at, count); };
  show_other_rows();
}

DataGridLink::~DataGridLink() {
  grid_.on_other_rows = nullptr;
  grid_.on_put_in = nullptr;
  // The view outlives its model here.
  table_.setModel(nullptr);
}

void DataGridLink::show_other_rows() {
  model_->show_other_rows();
  table_.scrollToTop();
}

void DataGridLink::put_in(int at, int count) {
  QScrollBar& bar = *table_.verticalScrollBar();
  const int top = bar.value();
  model_->put_in(at, count);
  // What is being read stays where it is; at the top the new rows come into sight.
  if (top > 0 && at - 1 <= top) bar.setValue(top + count);
}

void DataGridLink::take_letters() {
  size_rows();
  size_columns();
  ElementLink::take_letters();
}

void DataGridLink::size_rows() {
  table_.verticalHeader()->setDefaultSectionSize(table_.fontMetrics().height() + 2 * row_padding);
}

void DataGridLink::size_columns() {
  for (std::size_t column = 0; column < grid_.column_widths.size(); ++column) {
    const int section = model_->section_of(static_cast<int>(column));
    if (section < 0) continue;
    // A heading is read whole, with the arrow that tells of the order beside it.
    table_.setColumnWidth(section, std::max(pixel_edge(grid_.column_widths[column], letter_scale()),
                                            table_.horizontalHeader()->sectionSizeHint(section)));
  }
}

void DataGridLink::show_content() {
  if (model_->take_headings()) size_columns();
  table_.horizontalHeader()->setSortIndicator(
      model_->section_of(grid_.sort_column),
      grid_.sort_down ? Qt::DescendingOrder : Qt::AscendingOrder);
  const int current = table_.currentIndex().isValid() ? table_.currentIndex().row() + 1 : 0;
  if (grid_.row == current) return;
  if (grid_.row == 0) {
    table_.setCurrentIndex({});
  } else {
    table_.selectRow(grid_.row - 1);
  }
}

bool DataGridLink::eventFilter(QObject* watched, QEvent* event) {
  if (watched == table_.viewport()) {
    if (event->type() != QEvent::ToolTip) return false;
    show_whole_text(table_, *static_cast<QHelpEvent*>(event));
    return true;
  }
  if (ElementLink::eventFilter(watched, event)) return true;
  return event->type() == QEvent::KeyPress && types_text(*static_cast<QKeyEvent*>(event));
}

}  // namespace lineweir

#include "desktop/data_grid_model.h"

#include "desktop/core_text.h"

namespace lineweir {
namespace {

// Some screens full of rows.
constexpr std::size_t most_kept = 500;

// A text on one line, however many it has.
QString one_line(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String(" "));
  text.replace(u'\n', u' ');
  return text;
}

}  // namespace

int DataGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int DataGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

const QStringList& DataGridModel::texts_of(int row) const {
  if (const auto found = texts_.find(row); found != texts_.end()) return found->second;
  if (texts_.size() >= most_kept) texts_.clear();
  QStringList texts;
  if (grid_.row_texts) {
    for (const std::string& text : grid_.row_texts(row + 1)) texts += shown_text(grid_, text);
  }
  return texts_[row] = texts;
}

QVariant DataGridModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  const QStringList& texts = texts_of(index.row());
  return index.column() < texts.size() ? one_line(texts[index.column()]) : QString();
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  if (role != Qt::DisplayRole || section >= headings_.size()) return {};
  return headings_[section];
}

void DataGridModel::show_other_rows() {
  beginResetModel();
  texts_.clear();
  rows_ = grid_.rows;
  endResetModel();
}

void DataGridModel::put_in(int at, int count) {
  if (count <= 0) return;
  beginInsertRows({}, at - 1, at + count - 2);
  texts_.clear();
  rows_ += count;
  endInsertRows();
}

bool DataGridModel::take_headings() {
  QStringList headings;
  for (const std::string& heading : grid_.headings.get()) headings += shown_text(grid_, heading);
  if (headings == headings_) return false;
  beginResetModel();
  headings_ = headings;
  endResetModel();
  return true;
}

}  // namespace lineweir

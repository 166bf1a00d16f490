#include "desktop/data_grid_model.h"

#include <algorithm>

#include "desktop/core_text.h"

namespace lineweir {
namespace {

// Some screens full of rows.
constexpr std::size_t most_kept = 500;

// A text on one line, however many it has.
QString cell_line(QString text) {
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

int DataGridModel::grid_column(int section) const {
  const auto at = static_cast<std::size_t>(section);
  return section >= 0 && at < columns_.size() ? columns_[at] : -1;
}

int DataGridModel::section_of(int column) const {
  const auto found = std::ranges::find(columns_, column);
  return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

QString DataGridModel::cell_text(const QModelIndex& index) const {
  const QStringList& texts = texts_of(index.row());
  const int column = grid_column(index.column());
  return column >= 0 && column < texts.size() ? cell_line(texts[column]) : QString();
}

std::vector<TextPiece> DataGridModel::marked_pieces(const QString& text) const {
  if (!grid_.marked_pieces || text.isEmpty()) return {};
  const std::string utf8 = text.toStdString();
  const auto characters = [&](std::size_t bytes) {
    const auto size = static_cast<qsizetype>(bytes);
    return static_cast<std::size_t>(QString::fromUtf8(utf8.data(), size).size());
  };
  std::vector<TextPiece> pieces = grid_.marked_pieces(utf8);
  for (TextPiece& piece : pieces) {
    const std::size_t begin = characters(piece.begin);
    piece = {begin, characters(piece.begin + piece.size) - begin};
  }
  return pieces;
}

QVariant DataGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) return cell_text(index);
  if (role == marked_pieces_role) {
    return QVariant::fromValue(marked_pieces(cell_text(index)));
  }
  return {};
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
  std::vector<int> columns;
  if (grid_.shown_columns.empty()) {
    for (const std::string& heading : grid_.headings.get()) {
      columns.push_back(static_cast<int>(headings.size()));
      headings += shown_text(grid_, heading);
    }
  } else if (!grid_.headings.get().empty()) {
    for (const DataGridColumn& shown : grid_.shown_columns) {
      columns.push_back(shown.column);
      headings += shown_text(grid_, shown.heading);
    }
  }
  if (headings == headings_ && columns == columns_) return false;
  beginResetModel();
  headings_ = headings;
  columns_ = columns;
  endResetModel();
  return true;
}

}  // namespace lineweir

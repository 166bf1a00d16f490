#include "desktop/grid_cell_delegate.h"

#include <QAbstractItemView>
#include <QPainter>

#include "desktop/console_style.h"
#include "desktop/core_text.h"
#include "desktop/theme.h"
#include "elements/grid.h"

namespace lineweir {
namespace {

constexpr int cell_text_margin = 5;
constexpr int caret_gap = 1;

QColor color(QRgb rgb) { return QColor::fromRgb(rgb); }

void paint_frame(QPainter& painter, const QRect& cell, const QColor& line, int width) {
  painter.setPen(QPen(line, width));
  painter.setBrush(Qt::NoBrush);
  const double inset = width / 2.0;
  painter.drawRect(QRectF(cell).adjusted(inset, inset, -inset, -inset));
}

// A text too long for its cell shows its end while it is typed, its beginning otherwise.
QString shortened(const QFontMetrics& metrics, const QString& text, int width, bool editing) {
  return metrics.elidedText(text, editing ? Qt::ElideLeft : Qt::ElideRight, width);
}

}  // namespace

GridCellDelegate::GridCellDelegate(const Grid& grid, QObject* parent)
    : QStyledItemDelegate(parent), grid_(grid) {}

bool GridCellDelegate::typed(int column) const {
  return grid_.on_key_press && column >= grid_.first_typed_column;
}

int GridCellDelegate::width_for(const QFontMetrics& metrics, const QString& text) {
  return metrics.horizontalAdvance(text) + 2 * cell_text_margin + 1;
}

QString GridCellDelegate::text_of(const QModelIndex& index, bool editing) const {
  if (editing || !grid_.shown_as) return index.data().toString();
  const int column = index.column();
  return shown_text(grid_, grid_.shown_as(column, grid_.cell(index.row() + 1, column)));
}

void GridCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
  const Theme& theme = theme_of(option.palette);
  const bool selected = view != nullptr && view->currentIndex() == index;
  const bool editing = selected && view->hasFocus() && typed(index.column());

  painter->save();
  painter->setClipRect(option.rect);
  const QPalette::ColorRole ground = option.features.testFlag(QStyleOptionViewItem::Alternate)
                                         ? QPalette::AlternateBase
                                         : QPalette::Base;
  painter->fillRect(option.rect, editing ? color(theme.highlight) : option.palette.color(ground));

  const QRect room = option.rect.adjusted(cell_text_margin, 0, -cell_text_margin, 0);
  const QString text =
      shortened(option.fontMetrics, text_of(index, editing), room.width(), editing);
  const int text_width = option.fontMetrics.horizontalAdvance(text);
  const int left = grid_.centered ? room.left() + (room.width() - text_width) / 2 : room.left();
  painter->setFont(option.font);
  painter->setPen(editing                 ? color(theme.highlighted_text)
                  : typed(index.column()) ? option.palette.color(QPalette::Text)
                                          : color(theme.heading));
  painter->drawText(QRect(left, room.top(), text_width, room.height()),
                    Qt::AlignVCenter | Qt::TextSingleLine, text);

  if (editing) {
    const int x = left + text_width + caret_gap;
    const int height = option.fontMetrics.height();
    const int top = option.rect.center().y() - height / 2;
    painter->fillRect(x, top, 1, height, color(theme.highlighted_text));
  }
  if (selected) {
    const bool focused = view->hasFocus();
    paint_frame(*painter, option.rect, color(focused ? theme.focus_ring : theme.control_edge),
                focused ? 2 : 1);
  }
  painter->restore();
}

}  // namespace lineweir

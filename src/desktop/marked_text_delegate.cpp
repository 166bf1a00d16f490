#include "desktop/marked_text_delegate.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <vector>

#include "desktop/data_grid_model.h"
#include "desktop/theme.h"

namespace lineweir {
namespace {

constexpr QRgb marker = signal_yellow;
// Tells a marked piece on a light ground too, and whoever doesn't see the colour.
constexpr QRgb marker_line = 0xff8a6400;
constexpr QRgb marked_text = 0xff1a1400;

constexpr int letters_in_front = 6;
constexpr QChar ellipsis = QChar(0x2026);

struct MarkedText {
  QString text;
  std::vector<TextPiece> pieces;
};

// The text without so many characters at its beginning.
MarkedText without_beginning(const MarkedText& whole, std::size_t gone) {
  MarkedText rest{ellipsis + whole.text.mid(static_cast<qsizetype>(gone)), whole.pieces};
  for (TextPiece& piece : rest.pieces) piece.begin = piece.begin - gone + 1;
  return rest;
}

QString left(const MarkedText& text, std::size_t end) {
  return text.text.left(static_cast<qsizetype>(end));
}

// What of the text is shown in that width.
MarkedText fitting(const QFontMetrics& metrics, const MarkedText& whole, int width) {
  if (metrics.horizontalAdvance(whole.text) <= width) return whole;
  MarkedText shown = whole;
  const TextPiece first = whole.pieces.front();
  const QString up_to_first = left(whole, first.begin + first.size) + ellipsis;
  if (first.begin > letters_in_front && metrics.horizontalAdvance(up_to_first) > width) {
    shown = without_beginning(whole, first.begin - letters_in_front);
  }
  shown.text = metrics.elidedText(shown.text, Qt::ElideRight, width);
  const auto size = static_cast<std::size_t>(shown.text.size());
  std::erase_if(shown.pieces, [&](const TextPiece& piece) { return piece.begin >= size; });
  for (TextPiece& piece : shown.pieces) piece.size = std::min(piece.size, size - piece.begin);
  return shown;
}

void paint_marked(QPainter& painter, const QRect& room, const QColor& color,
                  const MarkedText& text) {
  const QFontMetrics metrics = painter.fontMetrics();
  const int alignment = Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine;
  // As high as the style puts the texts of other cells.
  const int top = room.top() + (room.height() - metrics.height()) / 2;
  const QRect line(room.left(), top, room.width(), metrics.height());
  painter.setPen(color);
  painter.drawText(line, alignment, text.text);
  for (const TextPiece& piece : text.pieces) {
    const int begin = metrics.horizontalAdvance(left(text, piece.begin));
    const int end = metrics.horizontalAdvance(left(text, piece.begin + piece.size));
    const QRect mark(room.left() + begin, top, end - begin, metrics.height());
    painter.fillRect(mark, QColor::fromRgb(marker));
    painter.fillRect(mark.left(), mark.bottom(), mark.width(), 1, QColor::fromRgb(marker_line));
    // The whole text again, so that the letters stand where they stood.
    painter.save();
    painter.setClipRect(mark, Qt::IntersectClip);
    painter.setPen(QColor::fromRgb(marked_text));
    painter.drawText(line, alignment, text.text);
    painter.restore();
  }
}

}  // namespace

void MarkedTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
  const auto pieces = index.data(DataGridModel::marked_pieces_role).value<std::vector<TextPiece>>();
  if (pieces.empty()) return QStyledItemDelegate::paint(painter, option, index);

  QStyleOptionViewItem item = option;
  initStyleOption(&item, index);
  const QStyle* style = item.widget != nullptr ? item.widget->style() : QApplication::style();
  const QRect text_rect = style->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &item, item.widget) + 1;
  const QRect room = text_rect.adjusted(margin, 0, -margin, 0);
  const QString text = item.text;
  item.text.clear();
  style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

  const bool selected = item.state.testFlag(QStyle::State_Selected);
  painter->save();
  painter->setClipRect(room, Qt::IntersectClip);
  painter->setFont(item.font);
  paint_marked(*painter, room,
               item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text),
               fitting(item.fontMetrics, {text, pieces}, room.width()));
  painter->restore();
}

}  // namespace lineweir

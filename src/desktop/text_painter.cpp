#include "desktop/text_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/largest_fitting.h"

namespace lineweir {
namespace {

bool is_digit(QChar character) { return character >= u'0' && character <= u'9'; }

double widest_digit(const QFontMetricsF& metrics) {
  double widest = 0;
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
  }
  return widest;
}

// Whether the font's own digits do as they are.
bool has_even_digits(const QFontMetricsF& metrics) {
  return std::abs(widest_digit(metrics) - metrics.horizontalAdvance(QChar(u'1'))) < 0.01;
}

double advance(const TextLine& line, const QFontMetricsF& metrics, const QString& text) {
  if (!line.even_digits || has_even_digits(metrics)) return metrics.horizontalAdvance(text);
  const double digit = widest_digit(metrics);
  double width = 0;
  for (const QChar character : text) {
    width += is_digit(character) ? digit : metrics.horizontalAdvance(character);
  }
  return width;
}

void draw_characters(QPainter& painter, QPointF at, const TextLine& line,
                     const QFontMetricsF& metrics, const QString& text) {
  if (!line.even_digits || has_even_digits(metrics)) {
    painter.drawText(at, text);
    return;
  }
  const double digit = widest_digit(metrics);
  for (const QChar character : text) {
    const double own = metrics.horizontalAdvance(character);
    const double room = is_digit(character) ? digit : own;
    painter.drawText(at + QPointF((room - own) / 2, 0), QString(character));
    at.rx() += room;
  }
}

void draw_line(QPainter& painter, const QRect& box, const TextLine& line, const QString& text,
               double squeeze) {
  const QFontMetricsF metrics(line.font);
  const double width = advance(line, metrics, text) * squeeze;
  double left = box.left();
  if (line.alignment.testFlag(Qt::AlignHCenter)) left += (box.width() - width) / 2;
  if (line.alignment.testFlag(Qt::AlignRight)) left += box.width() - width;
  // Capitals and digits stand in the middle, whatever room the font keeps above and below them.
  const double middle =
      std::ceil(box.top() + (box.height() + std::round(metrics.capHeight())) / 2.0 - 0.5);
  // What hangs below the line isn't cut off where the box is low but high enough for all of it.
  const double lowest = box.top() + box.height() - std::round(metrics.descent());
  const bool has_room = lowest - box.top() >= std::round(metrics.capHeight());
  const double baseline = has_room ? std::min(middle, lowest) : middle;

  painter.save();
  painter.setFont(line.font);
  painter.setPen(line.color);
  painter.translate(std::round(left), baseline);
  if (squeeze < 1) painter.scale(squeeze, 1);
  draw_characters(painter, {0, 0}, line, metrics, text);
  if (line.underlined >= 0 && line.underlined < text.size()) {
    const double start = advance(line, metrics, text.left(line.underlined));
    const double thickness = std::max(1.0, std::round(metrics.lineWidth()));
    painter.fillRect(
        QRectF(std::round(start), std::max(1.0, std::round(metrics.underlinePos())),
               std::round(metrics.horizontalAdvance(text.at(line.underlined))), thickness),
        line.color);
  }
  painter.restore();
}

}  // namespace

Caption caption_of(const QString& raw) {
  Caption caption;
  for (int i = 0; i < raw.size(); ++i) {
    if (raw.at(i) == u'&' && i + 1 < raw.size()) {
      ++i;
      if (raw.at(i) != u'&' && caption.access_key < 0) {
        caption.access_key = static_cast<int>(caption.text.size());
      }
    }
    caption.text += raw.at(i);
  }
  return caption;
}

double text_width(const TextLine& line) {
  return advance(line, QFontMetricsF(line.font), line.text);
}

bool text_fits(const TextLine& line, int width) { return text_width(line) <= width; }

qsizetype last_word_that_fits(const TextLine& line, int width) {
  const int letters = static_cast<int>(line.text.size());
  const int fitting = largest_fitting(0, letters, [&](int count) {
    TextLine part = line;
    part.text = line.text.left(count);
    return text_fits(part, width);
  });
  if (fitting == letters) return letters;
  const auto blank = line.text.lastIndexOf(u' ', fitting);
  return blank > 0 ? blank : fitting;
}

QFont font_for_height(const QFont& font, int height) {
  QFont fitted = font;
  fitted.setPixelSize(largest_fitting(1, font.pixelSize(), [&](int size) {
    fitted.setPixelSize(size);
    const QFontMetricsF metrics(fitted);
    return std::ceil(metrics.capHeight()) + std::round(metrics.descent()) <= height;
  }));
  return fitted;
}

void paint_text(QPainter& painter, const QRect& box, const TextLine& line) {
  if (line.text.isEmpty() || box.width() <= 0) return;
  if (text_fits(line, box.width())) {
    draw_line(painter, box, line, line.text, 1);
    return;
  }
  const QFontMetricsF metrics(line.font);
  draw_line(painter, box, line, metrics.elidedText(line.text, Qt::ElideRight, box.width()), 1);
}

void paint_squeezed_text(QPainter& painter, const QRect& box, const TextLine& line) {
  const double width = text_width(line);
  if (width <= 0) return;
  draw_line(painter, box, line, line.text, std::min(1.0, box.width() / width));
}

}  // namespace lineweir

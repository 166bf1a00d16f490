#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

class QPainter;

namespace lineweir {

// One line of text in a box.
struct TextLine {
  QString text;
  QFont font;
  QColor color;
  Qt::Alignment alignment = Qt::AlignLeft;
  // Each digit takes the same room, so that a running time doesn't jitter in any font.
  bool even_digits = false;
  // The place of the character to underline, or -1.
  int underlined = -1;
};

// A caption without its "&"; the letter behind the first one is its access key.
struct Caption {
  QString text;
  int access_key = -1;
};
Caption caption_of(const QString& raw);

// The room that the line takes in one piece.
double text_width(const TextLine& line);

// Whether the line can be read whole in that width; a longer one ends in an ellipsis, and no letter
// is ever drawn narrower than another.
bool text_fits(const TextLine& line, int width);

// Where the line is to be broken for that width: behind the last word that fits, or behind the last
// letter of a word that is longer.
qsizetype last_word_that_fits(const TextLine& line, int width);

// The font, or the largest size of it of which capitals and what hangs below the line fit in that
// height.
QFont font_for_height(const QFont& font, int height);

// Draws the line in the middle of the box's height.
void paint_text(QPainter& painter, const QRect& box, const TextLine& line);

// Draws a key's lettering, squeezed to the box's width where it is wider.
void paint_squeezed_text(QPainter& painter, const QRect& box, const TextLine& line);

}  // namespace lineweir

#pragma once

#include "desktop/element_widget.h"
#include "desktop/row_look.h"
#include "desktop/text_painter.h"

namespace lineweir {

class Label;

// A line of text on the face, on a row's strip or in a clock. Its colour is that of what it stands
// on.
class LabelWidget final : public ElementWidget {
 public:
  LabelWidget(FormCanvas& canvas, Label& label, const ElementLook& look);

  QRect device_place() const override;
  QString shown_caption() const override;
  bool caption_fits() const override;
  QString tool_tip() const override;
  void row_changed(const RowLook& before, const RowLook& now) override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;

 private:
  const Label* label() const;
  bool in_column() const;
  // Whether the text becomes smaller before it loses its end: half a time or half a state is none.
  bool stays_whole() const;
  // What stands in the place of an empty text: the sign of the line's state, how long the caller
  // has been waiting in all.
  void paint_note_plate(QPainter& painter, const QRect& face, double corner) const;
  // The number of the line stands apart from the rest.
  void paint_note(QPainter& painter, const QRect& face) const;
  static bool note_stands_in_two_lines(const TextLine& text, const QRect& room);
  void paint_status_sign(QPainter& painter, const QRect& face) const;
  void paint_wait(QPainter& painter, const QRect& face) const;
  const RowLook::Wait* wait() const;
  // The flag of the caller, where it stands in front of this text.
  CallerFlag flag() const;
  void paint_flag_sign(QPainter& painter, const QRect& face) const;
  // Whether the countdown has come to the time of warning.
  bool warns() const;
  // The text as the place has room for it.
  TextLine line() const;
  QColor text_color() const;
  // The part of the widget's place that is left for the text.
  QRect text_box(const QRect& face) const;
};

}  // namespace lineweir

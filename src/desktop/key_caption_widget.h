#pragma once

#include "desktop/element_widget.h"

namespace lineweir {

class Label;
struct Caption;

// The lettering of a key. It takes the whole key's place, moves with the key's face, and chooses
// the form that reads best in the room: one line, two lines, or a sign with a small word below it.
class KeyCaptionWidget final : public ElementWidget {
 public:
  KeyCaptionWidget(FormCanvas& canvas, Label& label, const ElementLook& look);

  QRect device_place() const override;
  QString shown_caption() const override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;

 private:
  void paint_lines(QPainter& painter, const QRect& key, const Caption& caption,
                   const QColor& color) const;
  void paint_sign(QPainter& painter, const QRect& key, const Caption& caption, const QColor& color,
                  bool enabled) const;
  void paint_sign_beside(QPainter& painter, const QRect& key, const Caption& caption,
                         const QColor& color, bool enabled) const;
  void paint_own_sign(QPainter& painter, const QRect& place, const QColor& color,
                      bool enabled) const;
  // What tells the keys of the two hybrids apart; empty in producer mode, where they are no pair.
  QString hybrid_letter() const;
  QFont lettering(double pixels) const;
};

}  // namespace lineweir

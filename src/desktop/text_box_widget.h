#pragma once

#include "desktop/element_widget.h"

class QLineEdit;
class QPlainTextEdit;

namespace lineweir {

class TextBox;
class TextBoxLink;

// A text box of a form that this program draws: a frame with Qt's own editing inside, which is made
// when the box is first seen. The message display takes no typing and follows its last line.
class TextBoxWidget final : public ElementWidget {
 public:
  TextBoxWidget(FormCanvas& canvas, TextBox& box, const ElementLook& look);

  void forget_control() override;
  void element_changed() override;
  QRect device_place() const override;
  void look_changed() override;
  bool drawn_from(PropertyId property) const override;
  QString shown_caption() const override;
  QString tool_tip() const override;

 protected:
  void paint(QPainter& painter, const QRect& face) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  TextBox* box() const;
  QWidget* edit() const;
  // Whether it is a line to type in that is shown for the while.
  bool is_entry() const;
  int inset() const;
  int covered_below() const;
  static QFont font_of_whole_line(QFont font, int height);
  void make_room_in_displays();
  void lay_edit();
  bool urgent() const;
  // Whether it is the display without a message.
  bool is_hollow() const;
  QColor ground_color() const;
  void make_edit();
  void dress_edit();
  void show_hint();
  void follow_last_line();

  QLineEdit* line_ = nullptr;
  QPlainTextEdit* lines_ = nullptr;
  TextBoxLink* link_ = nullptr;
};

}  // namespace lineweir

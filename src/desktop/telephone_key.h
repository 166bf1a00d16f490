#pragma once

#include <QPushButton>

namespace lineweir {

// A key of a telephone, drawn like the keys of the main window. A key with one character shows it
// large, above the letters that go with the digit; any other shows its icon and its caption.
class TelephoneKey final : public QPushButton {
 public:
  explicit TelephoneKey(QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool has_character() const { return text().size() == 1; }
  void paint_character(QPainter& painter, const QRect& face, const QColor& color) const;
};

}  // namespace lineweir

#pragma once

#include <QObject>
#include <QString>

class QInputMethodEvent;
class QKeyEvent;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace lineweir {

class TextBox;

// Ties a text box to the widget in which the user types: texts and carets follow one another, and
// keys run the box's events before the widget sees them. It belongs to the widget.
class TextBoxLink final : public QObject {
 public:
  TextBoxLink(TextBox& box, QLineEdit& edit);
  // A box of one line may be shown in several: it is folded there, and takes no line breaks.
  TextBoxLink(TextBox& box, QPlainTextEdit& edit);

  // Shows what the box holds now.
  void show_box();

  // The box is about to go.
  void forget_box() { box_ = nullptr; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void watch(QWidget& edit);
  bool leads_out(const QKeyEvent& event) const;
  // These run the events of what was typed, and are true when a handler has swallowed it.
  bool key_swallowed(QKeyEvent& event);
  bool composed_swallowed(QObject& edit, const QInputMethodEvent& event);
  bool characters_swallowed(const QString& typed);
  void edited(const QString& text, int caret);
  void caret_moved(const QString& text, int caret);

  TextBox* box_;
  QLineEdit* line_ = nullptr;
  QPlainTextEdit* lines_ = nullptr;
  bool showing_ = false;
};

}  // namespace lineweir

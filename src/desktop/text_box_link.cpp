#include "desktop/text_box_link.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <algorithm>

#include "base/text.h"
#include "desktop/core_text.h"
#include "desktop/focus_reason.h"
#include "desktop/folded_text.h"
#include "desktop/key_codes.h"
#include "elements/form.h"
#include "elements/text_box.h"

namespace lineweir {
namespace {

// The core ends lines with two characters, Qt with one.
QString qt_lines(const QString& core) {
  QString lines = core;
  return lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

QString core_lines(const QString& shown) {
  QString lines = shown;
  return lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

QString one_line(const QString& shown) {
  QString line = shown;
  return line.replace(QLatin1String("\r\n"), QLatin1String(" "))
      .replace(QLatin1Char('\n'), QLatin1Char(' '))
      .replace(QLatin1Char('\r'), QLatin1Char(' '));
}

// A caret's place in the box's text, from its place in Qt's, and back. A letter may take another
// number of characters there.
int core_caret(const TextBox& box, const QString& shown, int caret) {
  return static_cast<int>(core_text(box, core_lines(shown.left(caret))).size());
}

int shown_caret(const TextBox& box) {
  const auto caret = static_cast<std::size_t>(std::max(0, box.sel_start.get()));
  return static_cast<int>(qt_lines(shown_text(box, left_part(box.text.get(), caret))).size());
}

bool caret_is_at_end(const TextBox& box) {
  return box.sel_start >= static_cast<int>(box.text.get().size());
}

bool leaves_text_alone(const QKeyEvent& event) {
  return event.matches(QKeySequence::Copy) || event.matches(QKeySequence::SelectAll);
}

}  // namespace

TextBoxLink::TextBoxLink(TextBox& box, QLineEdit& edit) : QObject(&edit), box_(&box), line_(&edit) {
  connect(&edit, &QLineEdit::textChanged, this,
          [this](const QString& text) { edited(text, line_->cursorPosition()); });
  connect(&edit, &QLineEdit::cursorPositionChanged, this,
          [this](int, int caret) { caret_moved(line_->text(), caret); });
  watch(edit);
}

TextBoxLink::TextBoxLink(TextBox& box, QPlainTextEdit& edit)
    : QObject(&edit), box_(&box), lines_(&edit) {
  edit.setProperty(folded_property, !box.multi_line);
  connect(&edit, &QPlainTextEdit::textChanged, this,
          [this] { edited(lines_->toPlainText(), lines_->textCursor().position()); });
  connect(&edit, &QPlainTextEdit::cursorPositionChanged, this,
          [this] { caret_moved(lines_->toPlainText(), lines_->textCursor().position()); });
  watch(edit);
}

void TextBoxLink::watch(QWidget& edit) {
  edit.installEventFilter(this);
  // There the mouse clicks in a text of several lines.
  if (lines_ != nullptr) lines_->viewport()->installEventFilter(this);
  show_box();
}

void TextBoxLink::show_box() {
  if (box_ == nullptr) return;
  showing_ = true;
  const QString text = qt_lines(shown_text(*box_, box_->text.get()));
  const int caret = std::clamp(shown_caret(*box_), 0, static_cast<int>(text.size()));
  if (line_ != nullptr) {
    if (line_->text() != text) line_->setText(text);
    if (line_->cursorPosition() != caret) line_->setCursorPosition(caret);
    line_->setEchoMode(box_->hides_text ? QLineEdit::Password : QLineEdit::Normal);
  } else {
    if (lines_->toPlainText() != text) lines_->setPlainText(text);
    QTextCursor cursor = lines_->textCursor();
    if (cursor.position() != caret) {
      cursor.setPosition(caret);
      lines_->setTextCursor(cursor);
    }
  }
  showing_ = false;
}

bool TextBoxLink::eventFilter(QObject* watched, QEvent* event) {
  if (box_ == nullptr) return QObject::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::KeyPress:
      return key_swallowed(*static_cast<QKeyEvent*>(event));
    case QEvent::InputMethod:
      return composed_swallowed(*watched, *static_cast<QInputMethodEvent*>(event));
    case QEvent::FocusIn:
      box_->set_focus();
      break;
    case QEvent::FocusOut: {
      const auto reason = static_cast<QFocusEvent*>(event)->reason();
      if (!focus_is_borrowed(reason) && box_->form().focused() == box_) {
        box_->form().focus(nullptr);
      }
      break;
    }
    case QEvent::Show:
    case QEvent::Resize:
      // What was written while nobody saw it has put the caret where the newest is.
      if (lines_ != nullptr && lines_->isReadOnly() && caret_is_at_end(*box_)) {
        QMetaObject::invokeMethod(lines_, &QPlainTextEdit::ensureCursorVisible,
                                  Qt::QueuedConnection);
      }
      break;
    case QEvent::MouseButtonDblClick:
      box_->on_dbl_click();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

// A box that has no use for a tab lets no handler keep the focus in it by swallowing one.
bool TextBoxLink::leads_out(const QKeyEvent& event) const {
  const bool takes_tabs = lines_ != nullptr && !lines_->tabChangesFocus();
  return event.key() == Qt::Key_Backtab || (event.key() == Qt::Key_Tab && !takes_tabs);
}

bool TextBoxLink::key_swallowed(QKeyEvent& event) {
  if (leaves_text_alone(event)) return false;
  if (is_alt_command(event)) return true;
  if (box_->on_key_down) {
    int code = key_code(event);
    if (code != 0) box_->on_key_down(code, shift_state(event.modifiers()));
    if (code == 0 && key_code(event) != 0) return true;
  }
  return box_ != nullptr && !leads_out(event) && characters_swallowed(event.text());
}

// A letter that was put together of several keys is typed like one that has a key.
bool TextBoxLink::composed_swallowed(QObject& edit, const QInputMethodEvent& event) {
  if (event.commitString().isEmpty() || !characters_swallowed(event.commitString())) return false;
  QInputMethodEvent nothing_under_way;
  QCoreApplication::sendEvent(&edit, &nothing_under_way);
  return true;
}

bool TextBoxLink::characters_swallowed(const QString& typed) {
  if (!box_->on_key_press) return false;
  bool all_left = true;
  std::string left;
  for (const char character : core_text(*box_, typed)) {
    int key = code_of(character);
    box_->on_key_press(key);
    if (box_ == nullptr) return true;
    all_left = all_left && key == code_of(character);
    if (key != 0) left += static_cast<char>(key);
  }
  if (all_left) return false;
  // A handler that puts another character in the key's place has that one entered.
  for (const char character : left) {
    if (box_ != nullptr) box_->enter(code_of(character));
  }
  if (box_ != nullptr) show_box();
  return true;
}

void TextBoxLink::edited(const QString& text, int caret) {
  if (showing_ || box_ == nullptr) return;
  // What is pasted may have line breaks where there is one line.
  const std::string core = core_text(*box_, box_->multi_line ? core_lines(text) : one_line(text));
  box_->edit(core, core_caret(*box_, text, caret));
  // The box may hold another text than was typed: it has letters of its own, may have taken another
  // one, and its change event may have changed it.
  if (box_ != nullptr && qt_lines(shown_text(*box_, box_->text.get())) != text) show_box();
}

void TextBoxLink::caret_moved(const QString& text, int caret) {
  if (showing_ || box_ == nullptr) return;
  box_->sel_start = core_caret(*box_, text, caret);
}

}  // namespace lineweir

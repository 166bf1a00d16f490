#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <utility>

#include "desktop/button_picture.h"
#include "desktop/core_color.h"
#include "desktop/core_text.h"
#include "desktop/data_grid_link.h"
#include "desktop/element_link.h"
#include "desktop/grid_link.h"
#include "desktop/numbered_entries.h"
#include "desktop/plain_tip.h"
#include "desktop/text_box_link.h"
#include "desktop/text_painter.h"
#include "desktop/theme.h"
#include "elements/button.h"
#include "elements/frame.h"
#include "elements/label.h"
#include "elements/list_box.h"
#include "elements/text_box.h"

namespace lineweir {
namespace {

class LabelLink final : public ElementLink {
 public:
  LabelLink(Label& label, QLabel& widget)
      : ElementLink(label, widget), label_(label), text_(widget) {
    // What a server or a caller says isn't markup, whatever it looks like.
    text_.setTextFormat(Qt::PlainText);
  }

 private:
  void show_content() override {
    // Only a label that stands by a field has an access key; any other "&" shows as it is.
    const QString text = shown_text(label_, label_.caption.get());
    if (text_.text() != text) text_.setText(text);
    if (label_.fore_color != color_black) show_color();
  }

  // Black is what a text has that nobody gave a colour: it takes the style's.
  void show_color() {
    QPalette palette = text_.palette();
    const QColor ground = palette.color(QPalette::Window);
    palette.setColor(QPalette::WindowText, readable_on(ground, shown_color(label_.fore_color)));
    text_.setPalette(palette);
  }
  bool clicks_by_itself() const override { return false; }

  Label& label_;
  QLabel& text_;
};

class FrameLink final : public ElementLink {
 public:
  FrameLink(Frame& frame, QGroupBox& widget)
      : ElementLink(frame, widget), frame_(frame), group_(widget) {}

 private:
  void show_content() override { group_.setTitle(shown_text(frame_, frame_.caption.get())); }
  bool clicks_by_itself() const override { return false; }

  Frame& frame_;
  QGroupBox& group_;
};

class ButtonLink final : public ElementLink {
 public:
  ButtonLink(Button& button, QPushButton& widget)
      : ElementLink(button, widget), button_(button), push_(widget) {
    QObject::connect(&widget, &QPushButton::clicked, this, [this] { button_.on_click(); });
  }

 private:
  void show_content() override {
    push_.setText(shown_text(button_, button_.caption.get()));
    show_picture();
    show_tool_tip();
  }

  void show_tool_tip() {
    const QString text = shown_text(button_, button_.tool_tip.get());
    if (text == tool_tip_) return;
    tool_tip_ = text;
    push_.setToolTip(plain_tip(text));
    push_.setAccessibleDescription(text);
  }

  void show_picture() {
    const std::string& picture = button_.picture;
    if (picture.empty()) return;
    push_.setIcon(button_picture(picture, push_));
    push_.setAccessibleDescription(spoken_picture(picture));
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (ElementLink::eventFilter(watched, event)) return true;
    if (event->type() == QEvent::PaletteChange) show_picture();
    if (event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    push_.click();
    return true;
  }

  Button& button_;
  QPushButton& push_;
  // What Designer has given a button that the core tells nothing of stays.
  QString tool_tip_;
};

class CheckLink final : public ElementLink {
 public:
  CheckLink(CheckBox& box, QCheckBox& widget)
      : ElementLink(box, widget), box_(box), check_(widget) {
    QObject::connect(&widget, &QCheckBox::clicked, this, [this](bool checked) {
      box_.value = checked ? 1 : 0;
      box_.on_click();
    });
  }

 private:
  void show_content() override {
    if (const auto caption = shown_text(box_, box_.caption.get()); !caption.isEmpty()) {
      check_.setText(caption);
    }
    check_.setChecked(box_.value != 0);
  }

  CheckBox& box_;
  QCheckBox& check_;
};

class OptionLink final : public ElementLink {
 public:
  OptionLink(OptionButton& button, QRadioButton& widget)
      : ElementLink(button, widget), option_(button), radio_(widget) {
    QObject::connect(&widget, &QRadioButton::toggled, this, [this](bool chosen) {
      if (showing()) return;
      option_.value = chosen;
      if (chosen) option_.on_click();
    });
  }

 private:
  void show_content() override {
    if (const auto caption = shown_text(option_, option_.caption.get()); !caption.isEmpty()) {
      radio_.setText(caption);
    }
    radio_.setChecked(option_.value);
  }

  OptionButton& option_;
  QRadioButton& radio_;
};

class ListLink final : public ElementLink {
 public:
  ListLink(ListBox& list, QListWidget& widget)
      : ElementLink(list, widget), list_(list), entries_(widget) {
    QObject::connect(&widget, &QListWidget::currentRowChanged, this, [this](int row) {
      if (showing() || row < 0 || row >= list_.list_count()) return;
      list_.select(row);
    });
    widget.viewport()->installEventFilter(this);
    if (widget.property(numbered_property).toBool()) {
      widget.setItemDelegate(new NumberedEntries(&widget));
    }
  }

 private:
  void show_content() override {
    const auto& list = list_.list.get();
    while (entries_.count() > static_cast<int>(list.size())) {
      delete entries_.takeItem(entries_.count() - 1);
    }
    for (int i = 0; i < static_cast<int>(list.size()); ++i) {
      const QString text = shown_text(control(), list[static_cast<std::size_t>(i)]);
      if (i == entries_.count()) {
        entries_.addItem(text);
      } else if (entries_.item(i)->text() != text) {
        entries_.item(i)->setText(text);
      }
    }
    entries_.setCurrentRow(list_.list_index);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched != entries_.viewport()) {
      if (event->type() == QEvent::KeyPress && moved_by_key(*static_cast<QKeyEvent*>(event))) {
        return true;
      }
      return ElementLink::eventFilter(watched, event);
    }
    if (event->type() == QEvent::MouseButtonPress) {
      dragged_ = row_under(*static_cast<QMouseEvent*>(event));
    } else if (event->type() == QEvent::MouseMove) {
      return drag(*static_cast<QMouseEvent*>(event));
    } else if (event->type() == QEvent::MouseButtonDblClick && list_.on_dbl_click) {
      list_.on_dbl_click();
    }
    return false;
  }

  // What a drag does with the mouse, Ctrl with an arrow does by keyboard.
  bool moved_by_key(const QKeyEvent& event) {
    const bool down = event.key() == Qt::Key_Down;
    if (!list_.on_drag || (!down && event.key() != Qt::Key_Up)) return false;
    if (!event.modifiers().testFlag(Qt::ControlModifier)) return false;
    const int from = entries_.currentRow();
    const int to = from + (down ? 1 : -1);
    if (from >= 0 && to >= 0 && to < list_.list_count()) list_.on_drag(from, to);
    return true;
  }

  int row_under(const QMouseEvent& event) const {
    return entries_.row(entries_.itemAt(event.position().toPoint()));
  }

  bool drag(const QMouseEvent& event) {
    if (!list_.on_drag || !event.buttons().testFlag(Qt::LeftButton)) return false;
    const int row = row_under(event);
    if (row >= 0 && dragged_ >= 0 && row != dragged_) {
      list_.on_drag(dragged_, row);
      dragged_ = row;
    }
    return true;
  }

  ListBox& list_;
  QListWidget& entries_;
  int dragged_ = -1;
};

class ComboLink final : public ElementLink {
 public:
  ComboLink(ComboBox& combo, QComboBox& widget)
      : ElementLink(combo, widget), combo_(combo), choices_(widget) {
    QObject::connect(&widget, &QComboBox::activated, this, [this](int row) {
      if (row >= 0 && row < combo_.list_count()) combo_.select(row);
    });
    QObject::connect(&widget, &QComboBox::editTextChanged, this, [this](const QString& text) {
      if (showing()) return;
      combo_.text = core_text(combo_, text);
      if (const QString held = shown_text(combo_, combo_.text.get()); held != text) {
        choices_.setEditText(held);
      }
    });
    // The keys of a box that takes typing go to the line inside it.
    if (widget.lineEdit() != nullptr) widget.lineEdit()->installEventFilter(this);
  }

 private:
  void show_content() override {
    const auto& list = combo_.list.get();
    bool same = choices_.count() == static_cast<int>(list.size());
    for (int i = 0; same && i < choices_.count(); ++i) {
      same = choices_.itemText(i) == shown_text(control(), list[static_cast<std::size_t>(i)]);
    }
    if (!same) {
      choices_.clear();
      for (const std::string& entry : list) choices_.addItem(shown_text(control(), entry));
    }
    choices_.setCurrentIndex(combo_.list_index);
    if (choices_.isEditable()) choices_.setEditText(shown_text(combo_, combo_.text.get()));
  }

  ComboBox& combo_;
  QComboBox& choices_;
};

// The text itself is in the hands of a TextBoxLink.
template <class Edit>
class TextLink final : public ElementLink {
 public:
  TextLink(TextBox& box, Edit& widget)
      : ElementLink(box, widget), box_(box), edit_(widget), text_(box, widget) {}

 private:
  void show_content() override {
    text_.show_box();
    if (edit_.placeholderText().isEmpty() && !box_.hint.get().empty()) {
      edit_.setPlaceholderText(shown_text(box_, box_.hint.get()));
    }
    // White and black are what a box has that nobody gave a colour: it takes the style's.
    const bool colored = box_.back_color != color_white || box_.fore_color != color_black;
    if (!colored && std::exchange(colored_, false)) edit_.setPalette(QPalette());
    if (!colored) return;
    colored_ = true;
    QPalette palette = edit_.palette();
    const QColor ground = shown_color(box_.back_color);
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, readable_on(ground, shown_color(box_.fore_color)));
    edit_.setPalette(palette);
  }
  bool types_by_itself() const override { return true; }

  TextBox& box_;
  Edit& edit_;
  bool colored_ = false;
  TextBoxLink text_;
};

template <class Link, class Kind, class Widget>
std::unique_ptr<ElementLink> link(Control& control, QWidget& widget) {
  auto* partner = qobject_cast<Widget*>(&widget);
  if (partner == nullptr) return nullptr;
  return std::make_unique<Link>(static_cast<Kind&>(control), *partner);
}

}  // namespace

std::unique_ptr<ElementLink> make_element_link(Control& control, QWidget& widget) {
  switch (control.kind()) {
    case ElementKind::Label:
      return link<LabelLink, Label, QLabel>(control, widget);
    case ElementKind::Frame:
      return link<FrameLink, Frame, QGroupBox>(control, widget);
    case ElementKind::Button:
      return link<ButtonLink, Button, QPushButton>(control, widget);
    case ElementKind::CheckBox:
      return link<CheckLink, CheckBox, QCheckBox>(control, widget);
    case ElementKind::OptionButton:
      return link<OptionLink, OptionButton, QRadioButton>(control, widget);
    case ElementKind::ListBox:
      return link<ListLink, ListBox, QListWidget>(control, widget);
    case ElementKind::ComboBox:
      return link<ComboLink, ComboBox, QComboBox>(control, widget);
    case ElementKind::Grid:
      return link<GridLink, Grid, QTableWidget>(control, widget);
    case ElementKind::DataGrid:
      return link<DataGridLink, DataGrid, QTableView>(control, widget);
    case ElementKind::TextBox: {
      auto single = link<TextLink<QLineEdit>, TextBox, QLineEdit>(control, widget);
      return single ? std::move(single)
                    : link<TextLink<QPlainTextEdit>, TextBox, QPlainTextEdit>(control, widget);
    }
    default:
      return nullptr;
  }
}

}  // namespace lineweir

#include "desktop/text_box_widget.h"

#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>

#include "desktop/core_color.h"
#include "desktop/core_text.h"
#include "desktop/form_canvas.h"
#include "desktop/painter_surfaces.h"
#include "desktop/text_box_link.h"
#include "elements/text_box.h"

namespace lineweir {
namespace {

constexpr double corner = 3;
constexpr int margin = 3;

}  // namespace

TextBoxWidget::TextBoxWidget(FormCanvas& canvas, TextBox& box, const ElementLook& look)
    : ElementWidget(canvas, box, look) {}

TextBox* TextBoxWidget::box() const { return static_cast<TextBox*>(control()); }

QWidget* TextBoxWidget::edit() const {
  return line_ != nullptr ? static_cast<QWidget*>(line_) : lines_;
}

QString TextBoxWidget::shown_caption() const {
  return box() == nullptr ? QString() : shown_text(box()->text.get());
}

bool TextBoxWidget::drawn_from(PropertyId property) const {
  return property == PropertyId::SelStart || ElementWidget::drawn_from(property);
}

void TextBoxWidget::make_edit() {
  if (box()->multi_line) {
    lines_ = new QPlainTextEdit(this);
    lines_->setFrameShape(QFrame::NoFrame);
    lines_->setReadOnly(element_look().look == Look::Message);
    lines_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lines_->document()->setDocumentMargin(margin);
    link_ = new TextBoxLink(*box(), *lines_);
  } else {
    line_ = new QLineEdit(this);
    line_->setFrame(false);
    link_ = new TextBoxLink(*box(), *line_);
  }
  setFocusProxy(edit());
  dress_edit();
}

QColor TextBoxWidget::ground_color() const {
  // White is what a box has that nobody gave a colour: it takes the theme's paper.
  return box()->back_color == color_white ? QColor::fromRgb(canvas().theme().message.shading.upper)
                                          : shown_color(box()->back_color);
}

void TextBoxWidget::dress_edit() {
  if (edit() == nullptr || box() == nullptr) return;
  edit()->setFont(canvas().font_of(box()->font, 1));
  const QColor ground = ground_color();
  QPalette palette = edit()->palette();
  palette.setColor(QPalette::Base, ground);
  palette.setColor(QPalette::Text, readable_on(ground, shown_color(box()->fore_color)));
  edit()->setPalette(palette);
  resizeEvent(nullptr);
}

void TextBoxWidget::forget_control() {
  if (link_ != nullptr) link_->forget_box();
  ElementWidget::forget_control();
}

void TextBoxWidget::element_changed() {
  ElementWidget::element_changed();
  if (edit() == nullptr) return;
  edit()->setEnabled(box()->enabled);
  link_->show_box();
  dress_edit();
  follow_last_line();
}

void TextBoxWidget::follow_last_line() {
  if (element_look().look != Look::Message || lines_ == nullptr) return;
  lines_->verticalScrollBar()->setValue(lines_->verticalScrollBar()->maximum());
}

void TextBoxWidget::look_changed() { dress_edit(); }

void TextBoxWidget::paint(QPainter& painter, const QRect& face) {
  const Brushwork work = brushwork();
  const QRgb ground = ground_color().rgb();
  const double radius = corner * work.unit;
  const int line = work.line();
  fill_shaded(painter, face, face, {work.theme.message_edge, work.theme.message_edge}, radius);
  fill_shaded(painter, face.adjusted(line, line, -line, -line), face, {ground, ground},
              radius - line);
}

void TextBoxWidget::resizeEvent(QResizeEvent*) {
  if (edit() != nullptr) edit()->setGeometry(rect().adjusted(margin, margin, -margin, -margin));
  follow_last_line();
}

void TextBoxWidget::showEvent(QShowEvent*) {
  if (edit() != nullptr || box() == nullptr) return;
  make_edit();
  edit()->show();
  follow_last_line();
}

}  // namespace lineweir

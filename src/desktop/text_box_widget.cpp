#include "desktop/text_box_widget.h"

#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "desktop/core_color.h"
#include "desktop/core_text.h"
#include "desktop/form_canvas.h"
#include "desktop/largest_fitting.h"
#include "desktop/painter_keys.h"
#include "desktop/painter_surfaces.h"
#include "desktop/text_box_link.h"
#include "elements/text_box.h"

namespace lineweir {
namespace {

constexpr double box_corner = 3;
// From the box's edge to what is written in it.
constexpr double margin = 5;
constexpr double entry_padding = 2;
// More than can be sent: what is too long is told, and not cut.
constexpr int longest_line = 10'000'000;
const QColor hint_color(0x5b, 0x64, 0x6e);

}  // namespace

TextBoxWidget::TextBoxWidget(FormCanvas& canvas, TextBox& box, const ElementLook& look)
    : ElementWidget(canvas, box, look) {}

bool TextBoxWidget::is_entry() const {
  return element_look().look == Look::Entry && box() != nullptr && !box()->multi_line;
}

int TextBoxWidget::inset() const {
  return static_cast<int>(std::lround(margin * std::max(1.0, canvas().zoom())));
}

// As high as its line, at the lower edge of its place, so that what stands there stays in sight.
QRect TextBoxWidget::device_place() const {
  QRect place = ElementWidget::device_place();
  if (!is_entry()) return place;
  const double height =
      QFontMetricsF(canvas().font_of(box()->font, 1)).height() + 2 * (inset() + entry_padding);
  const int line = static_cast<int>(std::ceil(height * canvas().device_scale()));
  if (line < place.height()) place.setTop(place.bottom() + 1 - line);
  return place;
}

TextBox* TextBoxWidget::box() const { return static_cast<TextBox*>(control()); }

QWidget* TextBoxWidget::edit() const {
  return line_ != nullptr ? static_cast<QWidget*>(line_) : lines_;
}

QString TextBoxWidget::shown_caption() const {
  return box() == nullptr ? QString() : shown_text(*box(), box()->text.get());
}

bool TextBoxWidget::drawn_from(PropertyId property) const {
  return property == PropertyId::SelStart || property == PropertyId::Hint ||
         ElementWidget::drawn_from(property);
}

void TextBoxWidget::make_edit() {
  if (box()->multi_line) {
    lines_ = new QPlainTextEdit(this);
    lines_->setFrameShape(QFrame::NoFrame);
    lines_->setTabChangesFocus(true);
    lines_->setReadOnly(element_look().look == Look::Message);
    lines_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lines_->document()->setDocumentMargin(0);
    connect(lines_->verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this] { follow_last_line(); });
    link_ = new TextBoxLink(*box(), *lines_);
  } else {
    line_ = new QLineEdit(this);
    line_->setFrame(false);
    line_->setMaxLength(longest_line);
    link_ = new TextBoxLink(*box(), *line_);
  }
  edit()->installEventFilter(this);
  setFocusProxy(edit());
  dress_edit();
}

QString TextBoxWidget::tool_tip() const { return shown_text(*box(), box()->tool_tip.get()); }

bool TextBoxWidget::urgent() const { return box()->back_color == color_red; }

bool TextBoxWidget::is_hollow() const {
  return element_look().look == Look::Message && box()->back_color == color_white &&
         box()->text.get().empty();
}

QColor TextBoxWidget::ground_color() const {
  // An urgent message is as red as a strip on air.
  if (urgent())
    return QColor::fromRgb(canvas().theme().strip(RowState::OnAir).surface.shading.upper);
  if (is_hollow()) return QColor::fromRgb(canvas().theme().no_message.shading.upper);
  // White is what a box has that nobody gave a colour: it takes the theme's paper.
  return box()->back_color == color_white ? QColor::fromRgb(canvas().theme().message.shading.upper)
                                          : shown_color(box()->back_color);
}

void TextBoxWidget::dress_edit() {
  if (edit() == nullptr || box() == nullptr) return;
  const QColor ground = ground_color();
  QPalette palette = edit()->palette();
  palette.setColor(QPalette::Base, ground);
  palette.setColor(QPalette::Text, readable_on(ground, shown_color(box()->fore_color)));
  const QColor hint = is_hollow() ? QColor::fromRgb(canvas().theme().no_message.text) : hint_color;
  palette.setColor(QPalette::PlaceholderText, readable_on(ground, hint));
  edit()->setPalette(palette);
  show_hint();
  resizeEvent(nullptr);
}

void TextBoxWidget::show_hint() {
  const QString hint = shown_text(*box(), box()->hint.get());
  if (line_ != nullptr && line_->placeholderText() != hint) line_->setPlaceholderText(hint);
  if (lines_ != nullptr && lines_->placeholderText() != hint) lines_->setPlaceholderText(hint);
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
  const double radius = box_corner * work.unit;
  const int line = work.line();
  fill_shaded(painter, face, face, {work.theme.message_edge, work.theme.message_edge}, radius);
  fill_shaded(painter, face.adjusted(line, line, -line, -line), face, {ground, ground},
              radius - line);
  if (urgent()) {
    draw_edge(painter, face.adjusted(line, line, -line, -line),
              work.theme.strip(RowState::OnAir).frame_color, line, radius - line);
  }
  if (edit() != nullptr && edit()->hasFocus()) paint_focus_ring(painter, face, work);
}

bool TextBoxWidget::eventFilter(QObject*, QEvent* event) {
  // The ring around the edit is this widget's.
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  return false;
}

void TextBoxWidget::resizeEvent(QResizeEvent*) { lay_edit(); }

void TextBoxWidget::lay_edit() {
  if (edit() == nullptr) return;
  const int space = inset();
  const QRect room = rect().adjusted(space, space, -space, -space - covered_below());
  edit()->setFont(font_of_whole_line(canvas().font_of(box()->font, 1), room.height()));
  edit()->setGeometry(room);
  follow_last_line();
}

// Letters of which not one line has room would leave the display blank.
QFont TextBoxWidget::font_of_whole_line(QFont font, int height) {
  font.setPixelSize(largest_fitting(1, font.pixelSize(), [&](int size) {
    font.setPixelSize(size);
    return QFontMetrics(font).lineSpacing() <= height;
  }));
  return font;
}

// How much of the message display the entry line lies on.
int TextBoxWidget::covered_below() const {
  if (element_look().look != Look::Message) return 0;
  int covered = 0;
  for (const ElementWidget* other : canvas().element_widgets()) {
    const auto* entry = dynamic_cast<const TextBoxWidget*>(other);
    if (entry == nullptr || !entry->is_entry() || entry->isHidden()) continue;
    covered = std::max(covered, geometry().intersected(entry->geometry()).height());
  }
  return covered;
}

void TextBoxWidget::make_room_in_displays() {
  if (element_look().look != Look::Entry) return;
  for (ElementWidget* other : canvas().element_widgets()) {
    if (other->element_look().look != Look::Message || other == this) continue;
    if (auto* display = dynamic_cast<TextBoxWidget*>(other)) display->lay_edit();
  }
}

void TextBoxWidget::hideEvent(QHideEvent*) { make_room_in_displays(); }

void TextBoxWidget::moveEvent(QMoveEvent*) { make_room_in_displays(); }

void TextBoxWidget::showEvent(QShowEvent*) {
  make_room_in_displays();
  if (edit() != nullptr || box() == nullptr) return;
  make_edit();
  edit()->show();
  follow_last_line();
}

}  // namespace lineweir

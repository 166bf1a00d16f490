#include "desktop/element_widget.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QToolTip>
#include <cmath>

#include "desktop/focus_reason.h"
#include "desktop/form_canvas.h"
#include "desktop/key_codes.h"
#include "desktop/placement.h"
#include "desktop/plain_tip.h"
#include "desktop/twips.h"
#include "elements/form.h"

namespace lineweir {
namespace {

int button_number(Qt::MouseButton button) {
  return button == Qt::RightButton ? right_button : left_button;
}

bool stands_under_fingers(Look look) {
  return look != Look::Nothing && look != Look::KeyIcon && look != Look::KeyCaption &&
         look != Look::DropCaption && look != Look::HoldCaption && look != Look::Mark;
}

// Says whose handlers run.
class InHand {
 public:
  explicit InHand(ElementWidget& widget) : canvas_(&widget.canvas()), outer_(canvas_->in_hand()) {
    canvas_->set_in_hand(&widget);
  }
  ~InHand() {
    if (canvas_) canvas_->set_in_hand(outer_);
  }
  InHand(const InHand&) = delete;
  InHand& operator=(const InHand&) = delete;

 private:
  QPointer<FormCanvas> canvas_;
  QPointer<QWidget> outer_;
};

}  // namespace

ElementWidget::ElementWidget(FormCanvas& canvas, Control& control, const ElementLook& look)
    : QWidget(&canvas), canvas_(canvas), control_(&control), look_(&look) {
  setObjectName(object_name(control));
  setAttribute(Qt::WA_TransparentForMouseEvents, !stands_under_fingers(look.look));
  setVisible(false);
}

void ElementWidget::forget_control() {
  control_ = nullptr;
  hide();
  deleteLater();
}

QRect ElementWidget::device_place() const {
  return control_ == nullptr ? QRect()
                             : pixel_rect(place_on_form(*control_), canvas_.device_scale());
}

void ElementWidget::place() {
  if (control_ == nullptr) return;
  const QRect device = device_place();
  const double scale = canvas_.device_scale();
  const bool whole = scale == std::floor(scale);
  // One pixel more than the right and lower edge need, since clips are rounded with their width.
  const int spare = whole ? 0 : 1;
  const int left = static_cast<int>(std::floor(device.left() / scale));
  const int top = static_cast<int>(std::floor(device.top() / scale));
  const int right = static_cast<int>(std::ceil((device.left() + device.width()) / scale)) + spare;
  const int bottom = static_cast<int>(std::ceil((device.top() + device.height()) / scale)) + spare;
  const QPoint origin = canvas_.origin_of(*parentWidget());
  setGeometry(
      QRect(left, top, std::max(0, right - left), std::max(0, bottom - top)).translated(-origin));
}

bool ElementWidget::drawn_from(PropertyId property) const {
  switch (property) {
    case PropertyId::Caption:
    case PropertyId::Text:
    case PropertyId::Picture:
    case PropertyId::Enabled:
    case PropertyId::ForeColor:
    case PropertyId::BackColor:
    case PropertyId::FillColor:
    case PropertyId::Alignment:
    case PropertyId::FontName:
    case PropertyId::FontSize:
    case PropertyId::FontBold:
    case PropertyId::FontItalic:
      return true;
    default:
      return false;
  }
}

void ElementWidget::element_changed() {
  setEnabled(control_->enabled);
  update();
}

Brushwork ElementWidget::brushwork() const {
  return {canvas_.theme(), canvas_.device_scale() * canvas_.zoom()};
}

QFont ElementWidget::device_font(const FontProperties& font) const {
  return canvas_.font_of(font, canvas_.device_scale());
}

bool ElementWidget::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && control_ != nullptr) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plain_tip(tool_tip()), this);
    return true;
  }
  return QWidget::event(event);
}

void ElementWidget::paintEvent(QPaintEvent*) {
  if (control_ == nullptr) return;
  ++paint_count_;
  QPainter painter(this);
  const double scale = canvas_.device_scale();
  const QRect device = device_place();
  const QPoint origin = canvas_.origin_of(*this);
  // From the widget's corner to the element's, which may lie between two logical pixels.
  const QPointF inset(device.left() - origin.x() * scale, device.top() - origin.y() * scale);
  const QTransform to_device = painter.deviceTransform();
  painter.setTransform(QTransform::fromTranslate(std::round(to_device.dx() + inset.x()),
                                                 std::round(to_device.dy() + inset.y())) *
                       to_device.inverted());
  paint(painter, QRect(QPoint(0, 0), device.size()));
}

void ElementWidget::press(int button, Qt::KeyboardModifiers modifiers) {
  if (control_ == nullptr) return;
  const InHand in_hand(*this);
  control_->on_mouse_down(button, shift_state(modifiers));
}

void ElementWidget::release(int button, Qt::KeyboardModifiers modifiers, bool click) {
  const QPointer<ElementWidget> self(this);
  if (control_ == nullptr) return;
  const InHand in_hand(*this);
  control_->on_mouse_up(button, shift_state(modifiers));
  if (!self || control_ == nullptr || !click || button != left_button) return;
  control_->on_click();
}

void ElementWidget::mousePressEvent(QMouseEvent* event) {
  double_clicked_ = false;
  press(button_number(event->button()), event->modifiers());
}

void ElementWidget::mouseReleaseEvent(QMouseEvent* event) {
  release(button_number(event->button()), event->modifiers(),
          !double_clicked_ && rect().contains(event->position().toPoint()));
}

void ElementWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  // Two quick presses of a key are two presses.
  if (control_ == nullptr || !control_->on_dbl_click || event->button() != Qt::LeftButton) {
    mousePressEvent(event);
    return;
  }
  double_clicked_ = true;
  const InHand in_hand(*this);
  control_->on_dbl_click();
}

void ElementWidget::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (control_ != nullptr) control_->set_focus();
}

void ElementWidget::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  if (focus_is_borrowed(event->reason())) return;
  if (control_ != nullptr && control_->form().focused() == control_) {
    control_->form().focus(nullptr);
  }
}

}  // namespace lineweir

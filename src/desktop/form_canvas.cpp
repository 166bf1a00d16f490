#include "desktop/form_canvas.h"

#include <QFont>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "desktop/core_text.h"
#include "desktop/element_widget.h"
#include "desktop/painter_faces.h"
#include "desktop/picture_painters.h"
#include "desktop/tab_order.h"
#include "desktop/widget_kinds.h"
#include "elements/control.h"
#include "forms/columns.h"

namespace lineweir {
namespace {

constexpr double pixels_per_point = 96.0 / 72.0;

bool is_control(const Element& element) {
  switch (element.kind()) {
    case ElementKind::Form:
    case ElementKind::MenuItem:
    case ElementKind::Line:
    case ElementKind::Timer:
    case ElementKind::Data:
      return false;
    default:
      return true;
  }
}

bool moves_element(PropertyId property) {
  switch (property) {
    case PropertyId::Visible:
    case PropertyId::Left:
    case PropertyId::Top:
    case PropertyId::Width:
    case PropertyId::Height:
      return true;
    default:
      return false;
  }
}

std::string key_of(std::string_view name, int index) {
  std::string key(name);
  if (index != no_index) key += '(' + std::to_string(index) + ')';
  return key;
}

int row_of(const ElementWidget& widget) {
  const int index = widget.control()->index();
  return widget.element_look().look == Look::Mark && index != no_index ? index / column_count
                                                                       : index;
}

bool can_hold_keyboard(const QWidget* widget, const QWidget& canvas) {
  return widget != nullptr && widget->isEnabled() && widget->isVisibleTo(&canvas);
}

int nesting(const Control& control) {
  int depth = 0;
  for (const Control* outer = control.container(); outer != nullptr; outer = outer->container()) {
    ++depth;
  }
  return depth;
}

}  // namespace

FormCanvas::FormCanvas(Form& form, QWidget* parent)
    : QWidget(parent), FormWatch(form), frame_([this] { show_changes(); }) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  for (Element* element : form.elements()) added(*element);
  flush();
}

FormCanvas::~FormCanvas() = default;

void FormCanvas::set_theme(const Theme& theme) {
  if (theme_ == &theme) return;
  theme_ = &theme;
  for (const auto& [element, widget] : widgets_) widget->look_changed();
  update();
}

void FormCanvas::set_zoom(double zoom, double text_zoom) {
  if (zoom_ == zoom && text_zoom_ == text_zoom) return;
  zoom_ = zoom;
  text_zoom_ = text_zoom;
  for (const auto& [element, widget] : widgets_) widget->look_changed();
  update();
}

void FormCanvas::set_link_word(const QString& word) {
  if (link_word_ == word) return;
  link_word_ = word;
  for (const auto& [element, widget] : widgets_) {
    if (widget->element_look().look == Look::Lamp) mark(*widget->control(), true, true);
  }
}

void FormCanvas::set_next_caller_waits(bool waits) {
  if (next_caller_waits_ == waits) return;
  next_caller_waits_ = waits;
  for (const auto& [element, widget] : widgets_) {
    if (widget->element_look().look == Look::NextKey) widget->update();
  }
}

const RowLook& FormCanvas::row_look(int line) const {
  static const RowLook none;
  const auto place = static_cast<std::size_t>(line);
  return line < 0 || place >= row_looks_.size() ? none : row_looks_[place];
}

void FormCanvas::set_row_look(int line, const RowLook& look) {
  const auto place = static_cast<std::size_t>(line);
  if (place >= row_looks_.size()) row_looks_.resize(place + 1);
  if (row_looks_[place] == look) return;
  const RowLook before = std::exchange(row_looks_[place], look);
  show_row_look(line, before);
}

void FormCanvas::set_last_column(std::size_t column) {
  if (last_column_ == column) return;
  last_column_ = column;
  for (const auto& [element, widget] : widgets_) {
    if (widget->control()->index() != no_index) mark(*widget->control(), true, true);
  }
}

void FormCanvas::set_flag_column(std::size_t column) {
  if (flag_column_ == column) return;
  flag_column_ = column;
  for (const auto& [element, widget] : widgets_) {
    if (widget->control()->index() != no_index) mark(*widget->control(), true, true);
  }
}

void FormCanvas::show_row_look(int line, const RowLook& before) {
  for (ElementWidget* widget : widgets_of_rows_[line]) widget->row_changed(before, row_look(line));
}

void FormCanvas::place_all() {
  for (Element* element : form().elements()) {
    if (is_control(*element)) mark(static_cast<Control&>(*element), true, true);
  }
  flush();
  for (const auto& [element, widget] : widgets_) widget->look_changed();
  update();
}

QFont FormCanvas::font_of(const FontProperties& font, double scale) const {
  QFont result(shown_text(form(), font.name));
  result.setPixelSize(std::max(
      1, static_cast<int>(std::lround(font.size * pixels_per_point * text_zoom_ * scale))));
  result.setBold(font.bold);
  result.setItalic(font.italic);
  return result;
}

ElementWidget* FormCanvas::widget_of(const Control& control) const {
  const auto found = widgets_.find(&control);
  return found == widgets_.end() ? nullptr : found->second;
}

std::vector<ElementWidget*> FormCanvas::element_widgets() const {
  std::vector<ElementWidget*> all;
  for (const auto& [element, widget] : widgets_) all.push_back(widget);
  return all;
}

const Control* FormCanvas::control_named(std::string_view name, int index) const {
  const auto found = controls_.find(key_of(name, index));
  return found == controls_.end() ? nullptr : found->second;
}

const Line* FormCanvas::line_named(std::string_view name) const {
  const Element* element = form().find(name);
  return element != nullptr && element->kind() == ElementKind::Line
             ? static_cast<const Line*>(element)
             : nullptr;
}

bool FormCanvas::focusNextPrevChild(bool next) {
  // Qt asks for the next one also when the present one goes.
  if (can_hold_keyboard(window()->focusWidget(), *this)) {
    ElementWidget* stop = tab_stop_beside(*this, ring_, next);
    if (stop == nullptr) return false;
    stop->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  } else {
    keep_ring();
  }
  return true;
}

void FormCanvas::keep_ring() {
  const QWidget* holder = window()->focusWidget();
  if (holder != nullptr && isAncestorOf(holder) && !can_hold_keyboard(holder, *this)) {
    ring_waits_ = true;
    setFocus(Qt::OtherFocusReason);
  }
  if (!ring_waits_ || ring_ == nullptr || window()->focusWidget() != this) return;
  ElementWidget* widget = widget_of(*ring_);
  if (can_hold_keyboard(widget, *this)) widget->setFocus(Qt::OtherFocusReason);
}

void FormCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paint_face(painter, rect(), rect(), {*theme_, 1});
}

void FormCanvas::changed(Element& element, PropertyId property) {
  const bool is_of_link = property == PropertyId::NoLink || property == PropertyId::LinkedTo;
  if (&element == &form() && is_of_link) {
    link_changed_ = true;
    frame_.mark();
    return;
  }
  if (element.kind() == ElementKind::Line) {
    hand_changed(static_cast<Line&>(element));
    return;
  }
  if (!is_control(element)) return;
  auto& control = static_cast<Control&>(element);
  const ElementWidget* widget = widget_of(control);
  const bool moved = moves_element(property);
  const bool drawn = widget != nullptr && widget->drawn_from(property);
  if (moved || drawn) mark(control, moved, drawn);
}

void FormCanvas::added(Element& element) {
  if (!is_control(element)) return;
  new_elements_.push_back(&element);
  frame_.mark();
}

void FormCanvas::removed(Element& element) {
  std::erase(new_elements_, &element);
  if (!is_control(element)) return;
  // What goes is no control any more, only an element still.
  if (ring_ == &element) ring_ = nullptr;
  std::erase(moved_, &element);
  std::erase_if(marks_, [&element](const auto& mark) { return mark.first == &element; });
  controls_.erase(key_of(element.name(), element.index()));
  const auto found = widgets_.find(&element);
  if (found == widgets_.end()) return;
  ElementWidget* widget = found->second;
  // Out of the books first: hiding a widget may move the focus, which asks for all changes.
  widgets_.erase(found);
  if (const int row = row_of(*widget); row != no_index) std::erase(widgets_of_rows_[row], widget);
  // What stands in it goes on standing on the form until it goes too.
  for (QObject* child : QObjectList(widget->children())) {
    if (auto* inner = dynamic_cast<ElementWidget*>(child)) inner->setParent(this);
  }
  widget->forget_control();
}

void FormCanvas::raised(Control& control) {
  if (ElementWidget* widget = widget_of(control)) widget->raise();
}

void FormCanvas::moved_to_container(Control& control) {
  if (std::ranges::find(moved_, &control) == moved_.end()) moved_.push_back(&control);
  frame_.mark();
}

void FormCanvas::focus_moved(Control* control) {
  if (control == nullptr) return;
  ring_ = control;
  ring_waits_ = false;
  ElementWidget* widget = widget_of(*control);
  if (widget != nullptr && widget->hasFocus()) return;
  // The control may have become visible only now.
  flush();
  widget = widget_of(*control);
  if (widget != nullptr) widget->setFocus(Qt::OtherFocusReason);
}

void FormCanvas::mark(Control& control, bool place, bool paint) {
  Marks& marks = marks_[&control];
  marks.place |= place;
  marks.paint |= paint;
  frame_.mark();
}

void FormCanvas::hand_changed(const Line& hand) {
  if (hand.container() != nullptr) mark(*hand.container(), false, true);
}

void FormCanvas::show_changes() {
  make_widgets();
  put_into_containers();
  if (std::exchange(link_changed_, false)) take_link();

  mark_contents_of_placed();
  // Placing a widget may move the focus, whose handlers may make and show further changes.
  auto all_marks = std::exchange(marks_, {});
  std::vector<std::pair<int, Control*>> placed;
  for (const auto& [control, marks] : all_marks) {
    if (marks.place) placed.emplace_back(nesting(*control), control);
  }
  // A container before what stands in it.
  std::ranges::sort(placed, {}, &std::pair<int, Control*>::first);
  for (const auto& [depth, control] : placed) {
    ElementWidget* widget = widget_of(*control);
    if (widget == nullptr) continue;
    widget->place();
    widget->setVisible(widget->shown_on_screen());
  }
  for (const auto& [control, marks] : all_marks) {
    ElementWidget* widget = widget_of(*control);
    if (marks.paint && widget != nullptr) widget->element_changed();
  }
  keep_ring();
}

void FormCanvas::take_link() {
  const auto text_of = [this](PropertyId id) {
    const PropertyBase* property = form().property(id);
    if (property == nullptr) return QString();
    return shown_text(form(), std::get<std::string>(property->value()));
  };
  if (form().property(PropertyId::NoLink) == nullptr) return;
  no_link_ = text_of(PropertyId::NoLink);
  linked_to_ = text_of(PropertyId::LinkedTo);
  for (const auto& [element, widget] : widgets_) {
    mark(*widget->control(), widget->placed_by_link(), true);
  }
}

void FormCanvas::mark_contents_of_placed() {
  const auto is_placed = [this](Control* outer) {
    const auto found = marks_.find(outer);
    return found != marks_.end() && found->second.place;
  };
  std::vector<Control*> contents;
  for (const auto& [element, widget] : widgets_) {
    for (Control* outer = widget->control()->container(); outer != nullptr;
         outer = outer->container()) {
      if (!is_placed(outer)) continue;
      contents.push_back(widget->control());
      break;
    }
  }
  for (Control* control : contents) marks_[control].place = true;
}

void FormCanvas::make_widgets() {
  if (new_elements_.empty()) return;
  for (Element* element : new_elements_) {
    auto& control = static_cast<Control&>(*element);
    ElementWidget* widget = make_element_widget(*this, control);
    widgets_[element] = widget;
    if (const int row = row_of(*widget); row != no_index) widgets_of_rows_[row].push_back(widget);
    controls_[key_of(control.name(), control.index())] = &control;
    moved_.push_back(&control);
    mark(control, true, true);
  }
  new_elements_.clear();
}

void FormCanvas::put_into_containers() {
  for (Control* control : moved_) {
    ElementWidget* widget = widget_of(*control);
    QWidget* container = this;
    if (control->container() != nullptr) container = widget_of(*control->container());
    if (widget == nullptr || container == nullptr || widget->parentWidget() == container) continue;
    widget->setParent(container);
    mark(*control, true, true);
  }
  moved_.clear();
}

}  // namespace lineweir

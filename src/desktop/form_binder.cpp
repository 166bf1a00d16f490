#include "desktop/form_binder.h"

#include <QTabBar>
#include <QTabWidget>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "desktop/accessible_names.h"
#include "desktop/element_link.h"
#include "desktop/element_looks.h"
#include "desktop/repeated_widget.h"

namespace lineweir {
namespace {

bool has_widget(const Element& element) {
  switch (element.kind()) {
    case ElementKind::Form:
    case ElementKind::MenuItem:
    case ElementKind::Timer:
    case ElementKind::Data:
    case ElementKind::Line:
    // A picture of a dialog is a holder from which others take theirs.
    case ElementKind::Picture:
      return false;
    default:
      return true;
  }
}

QString designer_name(const Element& element) {
  const QString name = QString::fromStdString(element.name());
  return element.index() == no_index ? name : name + QStringLiteral("_%1").arg(element.index());
}

// The array that a widget still named as in Designer belongs to; empty if to none.
QString array_of(const QString& widget_name) {
  const auto line = widget_name.lastIndexOf(u'_');
  bool number = false;
  widget_name.mid(line + 1).toInt(&number);
  return line > 0 && number ? widget_name.left(line) : QString();
}

bool may_be_element(const QString& widget_name) {
  return !widget_name.isEmpty() && widget_name.front().isUpper();
}

}  // namespace

FormBinder::FormBinder(Form& form, QWidget& window)
    : FormWatch(form), window_(window), frame_([this] { show_changes(); }) {
  new_elements_ = form.elements();
  tie_new_elements();
  hide_waiting_widgets();
  name_widgets();
  // The form may have given the focus before it had a window.
  focus_moved(form.focused());
}

FormBinder::~FormBinder() = default;

void FormBinder::tie(Control& control) {
  QWidget* widget = widget_for(control);
  std::unique_ptr<ElementLink> link;
  if (widget != nullptr) link = make_element_link(control, *widget);
  if (link == nullptr) {
    lonely_elements_.push_back(object_name(control));
    return;
  }
  widget->setObjectName(object_name(control));
  link->show_control();
  links_[&control] = std::move(link);
}

QWidget* FormBinder::widget_for(const Control& control) {
  if (auto* drawn = window_.findChild<QWidget*>(designer_name(control))) return drawn;
  if (control.index() <= 0) return nullptr;
  const auto widget_of = [&](int index) -> QWidget* {
    const auto link = links_.find(control.form().find(control.name(), index));
    return link == links_.end() ? nullptr : &link->second->widget();
  };
  QWidget* model = widget_of(0);
  return model == nullptr ? nullptr
                          : repeat_widget(*model, widget_of(control.index() - 1), control.index());
}

void FormBinder::tie_new_elements() {
  for (Element* element : std::exchange(new_elements_, {})) {
    if (has_widget(*element)) tie(static_cast<Control&>(*element));
  }
}

void FormBinder::hide_waiting_widgets() {
  for (QWidget* widget : window_.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    if (may_be_element(name) && !array_of(name).isEmpty()) widget->hide();
  }
}

std::vector<QString> FormBinder::widgets_without_element() const {
  std::vector<QString> names;
  for (const QWidget* widget : window_.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    // The bar of a page has buttons of its own.
    if (!may_be_element(name) || qobject_cast<QTabBar*>(widget->parent()) != nullptr) continue;
    const bool tied = std::ranges::any_of(
        links_, [&](const auto& entry) { return &entry.second->widget() == widget; });
    const bool waits = watched_form().count(array_of(name).toStdString()) > 0;
    if (!tied && !waits) names.push_back(name);
  }
  return names;
}

void FormBinder::changed(Element& element, PropertyId) {
  if (!links_.contains(&element)) return;
  changed_.insert(&element);
  frame_.mark();
}

void FormBinder::added(Element& element) {
  new_elements_.push_back(&element);
  frame_.mark();
}

void FormBinder::removed(Element& element) {
  changed_.erase(&element);
  std::erase(new_elements_, &element);
  const auto found = links_.find(&element);
  if (found == links_.end()) return;
  found->second->widget().hide();
  found->second->widget().setObjectName(designer_name(element));
  links_.erase(found);
}

void FormBinder::focus_moved(Control* control) {
  if (control == nullptr) return;
  const auto found = links_.find(control);
  if (found == links_.end() || found->second->widget().hasFocus()) return;
  flush();
  QWidget& widget = found->second->widget();
  for (QTabWidget* pages : window_.findChildren<QTabWidget*>()) {
    for (int page = 0; page < pages->count(); ++page) {
      if (pages->widget(page)->isAncestorOf(&widget)) pages->setCurrentIndex(page);
    }
  }
  widget.setFocus(Qt::OtherFocusReason);
}

void FormBinder::take_letters() {
  for (const auto& [element, link] : links_) link->take_letters();
}

void FormBinder::show_changes() {
  tie_new_elements();
  for (Element* element : std::exchange(changed_, {})) {
    const auto found = links_.find(element);
    if (found != links_.end()) found->second->show_control();
  }
  name_widgets();
}

void FormBinder::name_widgets() {
  for (const auto& [element, link] : links_) {
    const QString name = accessible_name(static_cast<const Control&>(*element));
    QWidget& widget = link->widget();
    if (!name.isEmpty() && widget.accessibleName() != name) widget.setAccessibleName(name);
  }
}

}  // namespace lineweir

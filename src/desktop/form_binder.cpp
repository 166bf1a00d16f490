#include "desktop/form_binder.h"

#include <QWidget>
#include <utility>

#include "desktop/element_link.h"
#include "desktop/element_looks.h"

namespace lineweir {
namespace {

bool has_widget(const Element& element) {
  switch (element.kind()) {
    case ElementKind::Form:
    case ElementKind::MenuItem:
    case ElementKind::Timer:
    case ElementKind::Data:
    case ElementKind::Line:
      return false;
    default:
      return true;
  }
}

QString designer_name(const Element& element) {
  const QString name = QString::fromStdString(element.name());
  return element.index() == no_index ? name : name + QStringLiteral("_%1").arg(element.index());
}

}  // namespace

FormBinder::FormBinder(Form& form, QWidget& window)
    : FormWatch(form), window_(window), frame_([this] { show_changes(); }) {
  for (Element* element : form.elements()) {
    if (has_widget(*element)) tie(static_cast<Control&>(*element));
  }
}

FormBinder::~FormBinder() = default;

void FormBinder::tie(Control& control) {
  auto* widget = window_.findChild<QWidget*>(designer_name(control));
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

std::vector<QString> FormBinder::widgets_without_element() const {
  std::vector<QString> names;
  for (const QWidget* widget : window_.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    if (name.isEmpty() || !name.front().isUpper()) continue;
    const bool tied = std::ranges::any_of(
        links_, [&](const auto& entry) { return &entry.second->widget() == widget; });
    if (!tied) names.push_back(name);
  }
  return names;
}

void FormBinder::changed(Element& element, PropertyId) {
  if (!links_.contains(&element)) return;
  changed_.insert(&element);
  frame_.mark();
}

void FormBinder::removed(Element& element) {
  changed_.erase(&element);
  const auto found = links_.find(&element);
  if (found == links_.end()) return;
  found->second->widget().hide();
  links_.erase(found);
}

void FormBinder::focus_moved(Control* control) {
  if (control == nullptr) return;
  const auto found = links_.find(control);
  if (found == links_.end() || found->second->widget().hasFocus()) return;
  flush();
  found->second->widget().setFocus(Qt::OtherFocusReason);
}

void FormBinder::show_changes() {
  for (Element* element : std::exchange(changed_, {})) {
    const auto found = links_.find(element);
    if (found != links_.end()) found->second->show_control();
  }
}

}  // namespace lineweir

#include "elements/form.h"

#include <algorithm>

#include "base/names.h"

namespace lineweir {

namespace {

// An observer may bring others while it is told.
template <class Tell>
void tell(const std::vector<FormObserver*>& observers, const Tell& one) {
  for (std::size_t i = 0; i < observers.size(); ++i) one(*observers[i]);
}

}  // namespace

Form::Form(std::string_view name) : Element(ElementKind::Form, name) { form_ = this; }

void Form::load() {
  if (loaded_) return;
  loaded_ = true;
  on_load();
}

void Form::show() {
  load();
  // Loading may end in unloading, as it does where a right is missing.
  if (!loaded_) return;
  if (visible) {
    tell(observers_, [&](FormObserver& observer) { observer.shown_again(); });
  }
  visible = true;
}

void Form::unload() {
  if (!loaded_) return;
  loaded_ = false;
  on_unload();
  // The handler may have loaded the form anew.
  if (loaded_) return;
  visible = false;
  focused_ = nullptr;
}

void Form::close() {
  if (on_close) {
    on_close();
  } else {
    unload();
  }
}

Element* Form::find(std::string_view name, int index) const {
  for (Element* element : elements_) {
    if (element->index() == index && same_name(element->name(), name)) return element;
  }
  return nullptr;
}

int Form::count(std::string_view name) const {
  return static_cast<int>(std::ranges::count_if(
      elements_, [&](const Element* element) { return same_name(element->name(), name); }));
}

std::vector<MenuItem*> Form::menu_bar() const {
  std::vector<MenuItem*> top_entries;
  for (Element* element : elements_) {
    if (element->kind() != ElementKind::MenuItem) continue;
    auto* item = static_cast<MenuItem*>(element);
    if (item->parent() == nullptr) top_entries.push_back(item);
  }
  return top_entries;
}

void Form::focus(Control* control) {
  if (focused_ == control) return;
  Control* former = focused_;
  focused_ = control;
  tell(observers_, [&](FormObserver& observer) { observer.focus_moved(control); });
  if (former != nullptr) former->on_lost_focus();
  // A lost-focus handler may have moved the focus on.
  if (focused_ == control && control != nullptr) control->on_got_focus();
}

void Form::add_observer(FormObserver& observer) { observers_.push_back(&observer); }

void Form::remove_observer(FormObserver& observer) { std::erase(observers_, &observer); }

void Form::property_changed(PropertyId id) { tell_changed(*this, id); }

void Form::add(Element& element) {
  elements_.push_back(&element);
  tell(observers_, [&](FormObserver& observer) { observer.added(element); });
}

void Form::remove(Element& element) {
  std::erase(elements_, &element);
  if (static_cast<Element*>(focused_) == &element) focused_ = nullptr;
  tell(observers_, [&](FormObserver& observer) { observer.removed(element); });
}

void Form::raise(Control& control) {
  const auto place = std::ranges::find(elements_, &control);
  if (place == elements_.end() || place + 1 == elements_.end()) return;
  std::rotate(place, place + 1, elements_.end());
  tell(observers_, [&](FormObserver& observer) { observer.raised(control); });
}

void Form::tell_changed(Element& element, PropertyId id) {
  tell(observers_, [&](FormObserver& observer) { observer.changed(element, id); });
}

void Form::tell_moved_to_container(Control& control) {
  tell(observers_, [&](FormObserver& observer) { observer.moved_to_container(control); });
}

void Form::tell_menu_changed(MenuItem& parent) {
  tell(observers_, [&](FormObserver& observer) { observer.menu_changed(parent); });
}

}  // namespace lineweir

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "elements/element.h"

namespace lineweir {

// Elements of one kind under one name, told apart by an index. Element 0 is made with the array and
// is the model: an element loaded later starts with the model's properties, but is neither visible
// nor checked.
// Using an element that isn't loaded is a Failure of number 340.
template <class T>
class ControlArray {
 public:
  ControlArray(Form& form, std::string_view name) : form_(form), name_(name) {
    elements_.push_back(make(0));
  }

  // Runs for each element that is loaded now and for each one loaded later: sets its events.
  void wire_each(std::function<void(T&)> set_events) {
    for (const auto& element : elements_) {
      if (element) set_events(*element);
    }
    set_events_of_each_.push_back(std::move(set_events));
  }

  T& operator()(int index) const {
    if (!loaded(index)) {
      throw Failure(failure_number::no_such_element,
                    "Control array element '" + std::to_string(index) + "' doesn't exist");
    }
    return *elements_[static_cast<std::size_t>(index)];
  }

  bool loaded(int index) const {
    return index >= 0 && index < upper_bound() && elements_[static_cast<std::size_t>(index)];
  }

  const std::string& name() const { return name_; }

  // The number of loaded elements.
  int count() const {
    int loaded_elements = 0;
    for (const auto& element : elements_) loaded_elements += element ? 1 : 0;
    return loaded_elements;
  }

  // One more than the highest index that was ever loaded and not unloaded since.
  int upper_bound() const { return static_cast<int>(elements_.size()); }

  T& load(int index) {
    if (index < 0 || loaded(index)) {
      throw Failure(failure_number::element_already_loaded, "Object already loaded");
    }
    if (index >= upper_bound()) elements_.resize(static_cast<std::size_t>(index) + 1);
    auto element = make(index);
    element->copy_properties(*elements_.front());
    element->visible = false;
    if constexpr (requires { element->checked = false; }) element->checked = false;
    elements_[static_cast<std::size_t>(index)] = std::move(element);
    return (*this)(index);
  }

  // The model can't be unloaded.
  void unload(int index) {
    if (index == 0) throw Failure(failure_number::invalid_argument, "Can't unload the model");
    (*this)(index);
    elements_[static_cast<std::size_t>(index)].reset();
    while (!elements_.back()) elements_.pop_back();
  }

 private:
  std::unique_ptr<T> make(int index) {
    auto element = std::make_unique<T>(form_, name_, index);
    for (const auto& set_events : set_events_of_each_) set_events(*element);
    return element;
  }

  Form& form_;
  std::string name_;
  std::vector<std::function<void(T&)>> set_events_of_each_;
  std::vector<std::unique_ptr<T>> elements_;
};

}  // namespace lineweir

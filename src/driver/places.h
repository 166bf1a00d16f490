#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "driver/session.h"
#include "driver/values.h"

namespace lineweir::driver {

// An element that a path leads to. A form is an element too.
struct FoundElement {
  Form& form;
  Element& element;

  bool is_form() const { return &element == &form; }
};

// What a path leads to: a property, a grid's cell, an array's count, or state that is no element.
// Both functions fail as the console does; a place that can't be set has no `set`.
struct Place {
  std::function<Json()> get;
  std::function<void(const Json&)> set;
};

// All are NotUnderstood where the path leads nowhere. Names are looked up ignoring case, state
// before elements.
FoundElement find_element(Console& console, std::string_view path);
Form& find_form(Console& console, std::string_view name);
Place find_place(Session& session, std::string_view path);

// What the element's texts are.
TextKind text_kind(const Element& element);

// The paths of all elements of a form, without the form's name for the main form.
std::vector<std::string> element_paths(const Console& console, const Form& form);

}  // namespace lineweir::driver

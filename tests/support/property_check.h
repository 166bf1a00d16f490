#pragma once

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <sstream>
#include <string>
#include <utility>

namespace lineweir::test {

// Checks a property for many random arguments. A counterexample is shrunk and shown with the
// failure; a property that holds says nothing.
template <class Property>
void check_property(Property&& property) {
  const auto result = rc::detail::checkTestable(std::forward<Property>(property));
  std::ostringstream text;
  rc::detail::printResultMessage(result, text);
  const std::string message = text.str();
  CHECK_MESSAGE(result.template is<rc::detail::SuccessResult>(), message);
}

}  // namespace lineweir::test

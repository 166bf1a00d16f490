#pragma once

#include <algorithm>
#include <type_traits>

#include "base/failure.h"
#include "driver/refusal.h"
#include "driver/states.h"

// What the tables of state names are made of.
namespace lineweir::driver {

// No number that the console holds is larger.
inline constexpr int largest_state = 1000000;

template <class T>
Json shown(const T& value) {
  if constexpr (std::is_pointer_v<T>) {
    return shown(*value);
  } else if constexpr (std::is_same_v<T, char>) {
    return text_value({&value, 1});
  } else if constexpr (std::is_arithmetic_v<T>) {
    return value;
  } else if constexpr (requires { value.text(); }) {
    return text_value(value.text());
  } else if constexpr (requires { std::string_view(value); }) {
    return text_value(value);
  } else {
    Json list = Json::array();
    for (const auto& one : value) list.push_back(shown(one));
    return list;
  }
}

template <class T>
void take(T& state, const Json& value) {
  if constexpr (std::is_same_v<T, char>) {
    const std::string text = text_of(value);
    if (text.size() != 1) throw NotUnderstood("not one character: " + printed(value));
    state = text.front();
  } else if constexpr (std::is_same_v<T, bool>) {
    state = truth_of(value);
  } else if constexpr (std::is_integral_v<T>) {
    state = static_cast<T>(number_of(value, -largest_state, largest_state));
  } else if constexpr (requires { state.assign(std::string_view()); }) {
    state.assign(text_of(value));
  } else {
    state = text_of(value);
  }
}

// Calls `access` with the console and as many of the indices as it takes.
template <class Access>
auto reach(Session& session, const Access& access, const Indices& indices) {
  if constexpr (std::is_invocable_v<Access, Console&>) {
    return access(session.console());
  } else if constexpr (std::is_invocable_v<Access, Console&, int>) {
    if (indices.size() != 1) throw NotUnderstood("one index is wanted");
    return access(session.console(), indices[0]);
  } else {
    if (indices.size() != 2) throw NotUnderstood("two indices are wanted");
    return access(session.console(), indices[0], indices[1]);
  }
}

// State that can only be read: `access` gives the value, or a pointer to it.
template <class Access>
StateName reading(std::string_view shape, Access access) {
  return {std::string(shape),
          [access](Session& session, const Indices& indices) {
            return shown(reach(session, access, indices));
          },
          nullptr};
}

// State that `access` gives a pointer to.
template <class Access>
StateName state(std::string_view shape, Access access) {
  StateName name = reading(shape, access);
  name.set = [access](Session& session, const Indices& indices, const Json& value) {
    take(*reach(session, access, indices), value);
  };
  return name;
}

// An element of an array; a Failure of number 9 outside it.
template <class Array>
auto& at(Array& array, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= array.size()) {
    throw Failure(failure_number::out_of_range, "Subscript out of range");
  }
  return array[static_cast<std::size_t>(index)];
}

// An element of an array whose elements are counted from 1.
template <class Array>
auto& nth(Array& array, int number) {
  return at(array, std::max(number, 0) - 1);
}

// State outside the core's own records: the serial ports and the rows of the call log.
void append_service_states(std::vector<StateName>& names);

}  // namespace lineweir::driver

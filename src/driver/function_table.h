#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "core/console.h"
#include "driver/refusal.h"
#include "driver/values.h"

namespace lineweir::driver {

using FunctionArguments = std::vector<Json>;

// A function of the console that a script can call. Names are told apart without regard to case;
// two functions of one name take different numbers of arguments.
struct Function {
  std::string_view name;
  std::size_t arguments;
  // Called with that many arguments; nothing for a function without a result.
  std::function<std::optional<Json>(Console&, const FunctionArguments&)> call;
};

template <class T>
T argument_of(const Json& value) {
  if constexpr (std::is_same_v<T, bool>) {
    return truth_of(value);
  } else if constexpr (std::is_same_v<T, int>) {
    return number_of(value);
  } else if constexpr (std::is_same_v<T, Json>) {
    return value;
  } else if constexpr (std::is_same_v<T, char>) {
    const std::string text = text_of(value);
    if (text.size() != 1) throw NotUnderstood("not one character: " + printed(value));
    return text.front();
  } else {
    return text_of(value);
  }
}

template <class T>
Json result_of(const T& value) {
  if constexpr (std::is_same_v<T, char>) {
    return text_value({&value, 1});
  } else if constexpr (std::is_arithmetic_v<T>) {
    return value;
  } else {
    return text_value(value);
  }
}

// A function of the console and of values, such as `[](Console&, int line) { ... }`.
template <class Callable, class Result, class... Values>
Function function(std::string_view name, Callable callable,
                  Result (Callable::*)(Console&, Values...) const) {
  return {name, sizeof...(Values),
          [callable](Console& console, const FunctionArguments& arguments) -> std::optional<Json> {
            return [&]<std::size_t... I>(std::index_sequence<I...>)->std::optional<Json> {
              // Braces, so that the arguments are read from left to right.
              std::tuple<std::decay_t<Values>...> values{
                  argument_of<std::decay_t<Values>>(arguments[I])...};
              if constexpr (std::is_void_v<Result>) {
                callable(console, std::get<I>(values)...);
                return std::nullopt;
              } else {
                return result_of(callable(console, std::get<I>(values)...));
              }
            }
            (std::index_sequence_for<Values...>());
          }};
}

template <class Callable>
Function function(std::string_view name, Callable callable) {
  return function(name, callable, &Callable::operator());
}

}  // namespace lineweir::driver

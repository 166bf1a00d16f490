#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adminlink/admin_commands.h"

namespace lineweir::admin {

using Value =
    std::variant<std::string, std::int64_t, std::vector<std::string>, std::vector<std::int64_t>>;

struct Request {
  Command command = Command::More;
  std::map<Field, Value> values = {};

  // Of a field that the command needs.
  const std::string& text(Field field) const { return std::get<std::string>(values.at(field)); }
  std::int64_t number(Field field) const { return std::get<std::int64_t>(values.at(field)); }

  std::string text_or(Field field, std::string otherwise) const;
  std::int64_t number_or(Field field, std::int64_t otherwise) const;
  std::vector<std::string> texts(Field field) const;
  std::vector<std::int64_t> numbers(Field field) const;

  friend bool operator==(const Request&, const Request&) = default;
};

// One line without its end. The texts are UTF-8.
std::string line_of(const Request& request);

// The request of a line, or why it is none, as a sentence. Every field that the command needs is
// there and no other; numbers are in their bounds, and texts are UTF-8 without bytes 0.
std::variant<Request, std::string> read_request(std::string_view line);

}  // namespace lineweir::admin

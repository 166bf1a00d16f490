#include "adminlink/admin_request.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "adminlink/admin_columns.h"

namespace lineweir::admin {
namespace {

using Json = nlohmann::json;

// What makes a line no request.
struct Refusal {
  std::string sentence;
};

// A value that is nested deeper ends the parsing by itself.
Json parsed(std::string_view line) {
  if (line.size() > longest_request) throw Refusal{"The request is too long."};
  const auto hold_depth = [](int depth, Json::parse_event_t, Json&) {
    if (depth > deepest_request) throw Refusal{"The request is nested too deep."};
    return true;
  };
  try {
    return Json::parse(line, hold_depth);
  } catch (const Json::exception&) {
    throw Refusal{"The request is no JSON."};
  }
}

[[noreturn]] void refuse(const FieldRow& row, const std::string& what) {
  throw Refusal{"The field \"" + std::string(row.key) + "\" " + what + "."};
}

std::string read_text(const FieldRow& row, const Json& value) {
  if (!value.is_string()) refuse(row, "isn't a text");
  auto text = value.get<std::string>();
  if (text.find('\0') != std::string::npos) refuse(row, "holds a byte 0");
  return text;
}

std::int64_t read_number(const FieldRow& row, const Json& value) {
  const bool fits = value.is_number_unsigned()
                        ? value.get<std::uint64_t>() <= static_cast<std::uint64_t>(row.most)
                        : value.is_number_integer();
  const std::int64_t number = fits ? value.get<std::int64_t>() : row.least - 1;
  if (number >= row.least && number <= row.most) return number;
  refuse(row,
         "isn't a number from " + std::to_string(row.least) + " to " + std::to_string(row.most));
}

template <class Item>
std::vector<Item> read_array(const FieldRow& row, const Json& value,
                             Item (*read)(const FieldRow&, const Json&)) {
  if (!value.is_array()) refuse(row, "isn't an array");
  std::vector<Item> items;
  for (const Json& item : value) items.push_back(read(row, item));
  return items;
}

Value read_value(const FieldRow& row, const Json& value) {
  switch (row.kind) {
    case FieldKind::Text:
      return read_text(row, value);
    case FieldKind::Number:
      return read_number(row, value);
    case FieldKind::Texts:
      return read_array(row, value, read_text);
    case FieldKind::Numbers:
      return read_array(row, value, read_number);
  }
  refuse(row, "is unknown");
}

const CommandRow& read_command(const Json& object) {
  const auto found = object.find(key::command);
  if (found == object.end() || !found->is_string()) throw Refusal{"The request has no command."};
  const auto& name = found->get_ref<const std::string&>();
  const auto* row = std::ranges::find(commands, name, &CommandRow::name);
  if (row == commands.end()) throw Refusal{"There is no such command."};
  return *row;
}

Request read(std::string_view line) {
  const Json object = parsed(line);
  if (!object.is_object()) throw Refusal{"The request is no object."};
  const CommandRow& command = read_command(object);
  const auto known = fields_of(command);
  Request request{.command = command.command};
  for (const Field field : known) {
    const FieldRow& row = row_of(field);
    const auto found = object.find(row.key);
    if (found != object.end()) request.values.emplace(field, read_value(row, *found));
  }
  for (const Field field : known.first(command.needed)) {
    if (!request.values.contains(field)) refuse(row_of(field), "is missing");
  }
  if (object.size() != request.values.size() + 1) {
    throw Refusal{"The request has a field that its command doesn't know."};
  }
  return request;
}

template <class Item>
Item value_or(const std::map<Field, Value>& values, Field field, Item otherwise) {
  const auto found = values.find(field);
  return found == values.end() ? std::move(otherwise) : std::get<Item>(found->second);
}

}  // namespace

std::string Request::text_or(Field field, std::string otherwise) const {
  return value_or(values, field, std::move(otherwise));
}

std::int64_t Request::number_or(Field field, std::int64_t otherwise) const {
  return value_or(values, field, otherwise);
}

std::vector<std::string> Request::texts(Field field) const {
  return value_or(values, field, std::vector<std::string>{});
}

std::vector<std::int64_t> Request::numbers(Field field) const {
  return value_or(values, field, std::vector<std::int64_t>{});
}

std::string line_of(const Request& request) {
  Json object = Json::object();
  object[std::string(key::command)] = row_of(request.command).name;
  for (const auto& entry : request.values) {
    std::visit([&](const auto& held) { object[std::string(row_of(entry.first).key)] = held; },
               entry.second);
  }
  return object.dump();
}

std::variant<Request, std::string> read_request(std::string_view line) {
  try {
    return read(line);
  } catch (const Refusal& refusal) {
    return refusal.sentence;
  }
}

}  // namespace lineweir::admin

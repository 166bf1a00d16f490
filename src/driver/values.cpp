#include "driver/values.h"

#include <array>
#include <climits>
#include <cstdio>
#include <type_traits>

#include "driver/refusal.h"
#include "letters/utf8.h"

namespace lineweir::driver {
namespace {

constexpr int deepest_nesting = 8;
// The largest whole number that each double beside it can be told from.
constexpr double largest_exact = 9007199254740992.0;

[[noreturn]] void refuse(std::string_view wanted, const Json& value) {
  throw NotUnderstood("not " + std::string(wanted) + ": " + printed(value));
}

const Json& member(const Json& value, const char* name) {
  const auto found = value.find(name);
  if (found == value.end()) refuse("a font", value);
  return *found;
}

}  // namespace

std::string printed(const Json& value) {
  return value.dump(-1, ' ', true, Json::error_handler_t::replace);
}

Json parsed(std::string_view text) {
  try {
    return Json::parse(text, [](int depth, Json::parse_event_t, Json&) {
      if (depth > deepest_nesting) throw NotUnderstood("nested too deeply");
      return true;
    });
  } catch (const Json::exception&) {
    throw NotUnderstood("not a value: " + on_one_line(text));
  }
}

std::string on_one_line(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c >= ' ' && c <= '~') {
      line += c;
    } else {
      std::array<char, 8> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04x",
                    static_cast<unsigned>(static_cast<unsigned char>(c)));
      line += escape.data();
    }
  }
  return line;
}

Json text_value(std::string_view text, TextKind kind) {
  if (kind == TextKind::Utf8) return std::string(text);
  std::string utf8;
  utf8.reserve(text.size());
  for (const char byte : text) append_point(utf8, static_cast<unsigned char>(byte));
  return utf8;
}

Json texts_value(const std::vector<std::string>& texts, TextKind kind) {
  Json list = Json::array();
  for (const std::string& text : texts) list.push_back(text_value(text, kind));
  return list;
}

Json property_value(const PropertyValue& value, TextKind kind) {
  return std::visit(
      [kind](const auto& held) -> Json {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::string>) {
          return text_value(held, kind);
        } else if constexpr (std::is_same_v<Held, std::vector<std::string>>) {
          return texts_value(held, kind);
        } else {
          return held;
        }
      },
      value);
}

Json remote_value(const platform::RemoteValue& value) {
  return std::visit(
      [](const auto& held) -> Json {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::monostate>) {
          return nullptr;
        } else if constexpr (std::is_same_v<Held, std::string>) {
          return text_value(held);
        } else {
          return held;
        }
      },
      value);
}

Json moment_value(const platform::DateTime& moment) {
  std::array<char, 80> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", moment.year,
                moment.month, moment.day, moment.hour, moment.minute, moment.second);
  return std::string(text.data());
}

Json font_value(const platform::FontChoice& font) {
  return {{"name", text_value(font.name)},
          {"size", font.size},
          {"bold", font.bold},
          {"italic", font.italic}};
}

std::string text_of(const Json& value, TextKind kind) {
  if (!value.is_string()) refuse("a text", value);
  const std::string& utf8 = value.get_ref<const std::string&>();
  if (kind == TextKind::Utf8) return utf8;
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    if (lead < 0x80) {
      bytes += utf8[i];
    } else if (lead <= 0xC3 && i + 1 < utf8.size()) {
      const auto next = static_cast<unsigned char>(utf8[++i]);
      bytes += static_cast<char>(((lead & 0x03) << 6) | (next & 0x3F));
    } else {
      refuse("a text of the characters U+0000 to U+00FF", value);
    }
  }
  return bytes;
}

std::vector<std::string> texts_of(const Json& value, TextKind kind) {
  if (!value.is_array()) refuse("a list of texts", value);
  std::vector<std::string> texts;
  for (const Json& text : value) texts.push_back(text_of(text, kind));
  return texts;
}

bool truth_of(const Json& value) {
  if (!value.is_boolean()) refuse("true or false", value);
  return value.get<bool>();
}

std::int64_t number_of(const Json& value, std::int64_t least, std::int64_t most) {
  std::int64_t number = 0;
  if (value.is_number_unsigned()) {
    if (value.get<std::uint64_t>() > INT64_MAX) refuse("a number in range", value);
    number = value.get<std::int64_t>();
  } else if (value.is_number_integer()) {
    number = value.get<std::int64_t>();
  } else if (value.is_number_float()) {
    const double fraction = value.get<double>();
    // Written so that what is no number at all is refused too.
    if (!(fraction >= -largest_exact && fraction <= largest_exact))
      refuse("a number in range", value);
    number = static_cast<std::int64_t>(fraction);
    if (static_cast<double>(number) != fraction) refuse("a whole number", value);
  } else {
    refuse("a number", value);
  }
  if (number < least || number > most) refuse("a number in range", value);
  return number;
}

int number_of(const Json& value) { return static_cast<int>(number_of(value, INT_MIN, INT_MAX)); }

PropertyValue property_value_of(const Json& value, const PropertyValue& same_type, TextKind kind) {
  return std::visit(
      [&](const auto& held) -> PropertyValue {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, bool>) {
          return truth_of(value);
        } else if constexpr (std::is_same_v<Held, std::int64_t>) {
          return std::int64_t{number_of(value)};
        } else if constexpr (std::is_same_v<Held, std::string>) {
          return text_of(value, kind);
        } else {
          return texts_of(value, kind);
        }
      },
      same_type);
}

platform::RemoteValue remote_value_of(const Json& value) {
  if (value.is_null()) return std::monostate{};
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number()) return number_of(value, INT64_MIN, INT64_MAX);
  if (value.is_string()) return text_of(value);
  refuse("a text, a number, true or false", value);
}

platform::DateTime moment_of(const Json& value) {
  const std::string text = text_of(value);
  platform::DateTime moment;
  int length = 0;
  const int fields =
      std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%n", &moment.year, &moment.month,
                  &moment.day, &moment.hour, &moment.minute, &moment.second, &length);
  // The printed form is the only one: what sscanf takes beyond it prints otherwise.
  if (fields != 6 || moment_value(moment) != value) {
    refuse("a moment such as \"2026-01-05 10:00:00\"", value);
  }
  return moment;
}

platform::FontChoice font_of(const Json& value) {
  if (!value.is_object()) refuse("a font", value);
  constexpr int largest_size = 1000;
  Json size = member(value, "size");
  // A size may have a fraction, of which the console knows nothing.
  if (size.is_number_float()) size = std::lrint(size.get<double>());
  return {text_of(member(value, "name")), static_cast<int>(number_of(size, 1, largest_size)),
          truth_of(member(value, "bold")), truth_of(member(value, "italic"))};
}

}  // namespace lineweir::driver

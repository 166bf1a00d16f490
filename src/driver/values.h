#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "elements/property.h"
#include "platform/dialogs.h"
#include "platform/remote_objects.h"
#include "platform/system_clock.h"

namespace lineweir::driver {

// Values as commands and replies hold them. A text is a sequence of bytes, whose JSON form has the
// code points U+0000 to U+00FF; only the texts of the forms that show the call log are UTF-8, and
// JSON has them as they are. What doesn't fit is NotUnderstood.
using Json = nlohmann::ordered_json;

// One line of printable ASCII.
std::string printed(const Json& value);
Json parsed(std::string_view text);

// The line as one of printable ASCII, whatever a failure's description holds.
std::string on_one_line(std::string_view text);

// How a text's bytes become those of JSON.
enum class TextKind { Bytes, Utf8 };

Json text_value(std::string_view text, TextKind kind = TextKind::Bytes);
Json texts_value(const std::vector<std::string>& texts, TextKind kind = TextKind::Bytes);
Json property_value(const PropertyValue& value, TextKind kind);
Json remote_value(const platform::RemoteValue& value);
// "2026-01-05 10:00:00".
Json moment_value(const platform::DateTime& moment);
Json font_value(const platform::FontChoice& font);

std::string text_of(const Json& value, TextKind kind = TextKind::Bytes);
std::vector<std::string> texts_of(const Json& value, TextKind kind = TextKind::Bytes);
bool truth_of(const Json& value);
// A number without a fraction.
std::int64_t number_of(const Json& value, std::int64_t least, std::int64_t most);
int number_of(const Json& value);
// The value as a property of that type takes it.
PropertyValue property_value_of(const Json& value, const PropertyValue& same_type, TextKind kind);
platform::RemoteValue remote_value_of(const Json& value);
platform::DateTime moment_of(const Json& value);
platform::FontChoice font_of(const Json& value);

}  // namespace lineweir::driver

#pragma once

#include <span>
#include <string_view>

#include "forms/entry_fields.h"

namespace lineweir::seat {

// What a screener learns of a caller. Every text fits its field.
struct CallerStory {
  std::string_view name;
  std::string_view city;
  std::string_view topic;
};

std::span<const CallerStory> caller_stories();

// What a screener tells the host now and then.
std::span<const std::string_view> screener_messages();

}  // namespace lineweir::seat

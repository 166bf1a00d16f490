#include "wire/rights_layout.h"

#include <algorithm>

#include "base/bits.h"
#include "base/names.h"
#include "wire/server_packet_framing.h"

namespace lineweir {
namespace {

// Of a character without flags that are used: not 0, which some receivers take for a text's end,
// and none that could end a frame.
constexpr char unused_flags = '@';

constexpr bool is_used(std::size_t character) {
  return std::any_of(rights_layout.begin(), rights_layout.end(),
                     [character](const auto& place) { return place.character == character; });
}

constexpr const RightPlace& place_of(Right right) {
  return rights_layout[static_cast<std::size_t>(right)];
}

}  // namespace

std::optional<Right> find_right(std::string_view name) {
  for (const RightPlace& place : rights_layout) {
    if (same_name(place.name, name)) return place.right;
  }
  return std::nullopt;
}

bool allows(std::string_view rights, Right right) {
  const RightPlace& place = place_of(right);
  if (place.character > rights.size()) return false;
  return get_bit(rights[place.character - 1], place.bit).value_or(false);
}

std::string with_right(std::string_view rights, Right right, bool allowed) {
  std::string changed(rights.substr(0, rights_length));
  while (changed.size() < rights_length) {
    changed += is_used(changed.size() + 1) ? '\0' : unused_flags;
  }
  const RightPlace& place = place_of(right);
  const int flag = 1 << (place.bit - 1);
  char& character = changed[place.character - 1];
  const int flags = static_cast<unsigned char>(character);
  character = static_cast<char>(allowed ? flags | flag : flags & ~flag);
  return changed;
}

std::string_view why_rights_cannot_travel(std::string_view rights) {
  if (rights.find(end_marker) != std::string_view::npos) {
    return "these rights together would end the frame that carries them";
  }
  if (rights.ends_with(pad_byte) || rights.ends_with(end_marker.front())) {
    return "the last of these rights would be lost on the way";
  }
  return {};
}

}  // namespace lineweir

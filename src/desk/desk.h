#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desk/desk_layout.h"
#include "desk/lamp_reader.h"

namespace lineweir::desk {

// What a cadence byte makes of a lamp: "", "on", "AIR", "ring", "hold", "rdy"; the number of one
// that has no name.
std::string lamp_text(int cadence);

// A switch console: what its lamps show, and the codes of its keys.
class Desk {
 public:
  explicit Desk(Layout layout) : layout_(layout) {}

  Layout layout() const { return layout_; }

  // Takes what the console sends. Gives the lamps that changed by it.
  std::vector<LampPlace> receive(std::string_view bytes);

  // The bytes that a key sends; nothing for a key that this layout doesn't have.
  std::optional<std::string> press(std::string_view key) const;

  // The cadence byte of a lamp.
  int lamp(LampPlace place) const;
  // What the lamp beside this name shows, as lamp_text; nothing where there is none.
  std::optional<std::string> shown(std::string_view lamp) const;

  // How many bytes were no lamp message or had an address that no lamp has.
  std::size_t noise() const { return reader_.noise() + strange_; }

  // The console seen from above: each lamp in its key, the other keys below.
  std::string picture() const;

 private:
  std::string lamp_row(std::string_view heading, int row) const;
  std::string heading_row(int first_line) const;

  Layout layout_;
  LampReader reader_;
  std::size_t strange_ = 0;
  std::array<std::array<int, lamp_columns>, lamp_rows> lamps_{};
};

}  // namespace lineweir::desk

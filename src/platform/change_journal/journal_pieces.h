#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::platform {

// The longest piece that is read: a change is bounded by its fields.
inline constexpr std::size_t longest_piece = 1024 * 1024;

// A piece of a journal as it stands in the file: four bytes of length and four of CRC-32, both the
// least first, and the content.
void append_piece(std::string& bytes, std::string_view content);

// The contents up to the first piece that isn't whole, whatever the bytes are.
std::vector<std::string_view> whole_pieces(std::string_view bytes);
// As many bytes as these pieces take.
std::size_t whole_length(std::string_view bytes);

}  // namespace lineweir::platform

#include "platform/change_journal/journal_pieces.h"

#include <boost/crc.hpp>
#include <cstdint>

namespace lineweir::platform {
namespace {

constexpr std::size_t number_size = 4;

std::uint32_t checksum(std::string_view content) {
  boost::crc_32_type crc;
  crc.process_bytes(content.data(), content.size());
  return crc.checksum();
}

void append_number(std::string& bytes, std::uint32_t number) {
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>(static_cast<unsigned char>(number >> shift));
  }
}

std::uint32_t number_at(std::string_view bytes, std::size_t place) {
  std::uint32_t number = 0;
  for (std::size_t i = number_size; i-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
  }
  return number;
}

}  // namespace

void append_piece(std::string& bytes, std::string_view content) {
  append_number(bytes, static_cast<std::uint32_t>(content.size()));
  append_number(bytes, checksum(content));
  bytes += content;
}

std::vector<std::string_view> whole_pieces(std::string_view bytes) {
  std::vector<std::string_view> pieces;
  while (bytes.size() >= 2 * number_size) {
    const std::size_t length = number_at(bytes, 0);
    const std::string_view rest = bytes.substr(2 * number_size);
    if (length > longest_piece || length > rest.size()) break;
    const std::string_view content = rest.substr(0, length);
    if (checksum(content) != number_at(bytes, number_size)) break;
    pieces.push_back(content);
    bytes = rest.substr(length);
  }
  return pieces;
}

std::size_t whole_length(std::string_view bytes) {
  std::size_t length = 0;
  for (const std::string_view piece : whole_pieces(bytes)) length += 2 * number_size + piece.size();
  return length;
}

}  // namespace lineweir::platform

#include "server/line_order.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "lines/equipment_kinds.h"

namespace lineweir::server {
namespace {

constexpr int lines_at_most = 20;
// In place of a line, behind the letter of a handset's position, it releases the position.
constexpr int release_number = 15;
constexpr int second = 1;
constexpr std::string_view words_with_line = "FHSLNC";
constexpr std::string_view taking_words = "NCPO";
// Stand alone.
constexpr std::string_view words_without_number = "XR";
// Number something else than a line; the equipment knows what.
constexpr std::string_view words_with_number = "TUV";

std::string word_of(char letter, int number) { return letter + zero_filled(number, 2); }

std::optional<LineOrder> handset_order(const ServerPacket& packet, int kind) {
  const int number = packet.LineNo;
  if (server_decides(kind)) {
    if (number >= lines_at_most) return std::nullopt;
    return LineOrder{LineOrder::Kind::ToOwnPosition, {}, number};
  }
  const bool is_second = packet.AltInfo == second || packet.Buffer.front() == 'O';
  const char position = is_second ? 'O' : 'P';
  const bool is_line = number < lines_at_most && number != release_number;
  if (number > 99) return std::nullopt;
  return LineOrder{LineOrder::Kind::Word, word_of(position, number), is_line ? number : -1};
}

// With equipment that numbers its positions line 0 stands for a place.
std::optional<LineOrder> place_order(const ServerPacket& packet, char letter, int kind) {
  if (!server_decides(kind) || packet.LineNo != 0 || packet.Bank > second) return std::nullopt;
  const auto order = letter == 'F' ? LineOrder::Kind::DropPlace : LineOrder::Kind::HoldPlace;
  return LineOrder{order, {}, -1, packet.Bank};
}

bool is_on_conference(const ServerPacket& packet, int kind) {
  return packet.Bank == second || (!server_decides(kind) && packet.AltInfo == second);
}

}  // namespace

std::optional<LineOrder> line_order(const ServerPacket& packet, int kind) {
  if (packet.Buffer.size() != 1) return std::nullopt;
  char letter = packet.Buffer.front();
  if (letter == 'P' || letter == 'O') return handset_order(packet, kind);
  if (letter == 'F' || letter == 'H') {
    if (auto order = place_order(packet, letter, kind)) return order;
  }
  if (words_without_number.find(letter) != std::string_view::npos) {
    return LineOrder{LineOrder::Kind::Word, std::string(1, letter)};
  }
  if (packet.LineNo > 99) return std::nullopt;
  if (words_with_number.find(letter) != std::string_view::npos) {
    return LineOrder{LineOrder::Kind::Word, word_of(letter, packet.LineNo)};
  }
  if (words_with_line.find(letter) == std::string_view::npos) return std::nullopt;
  if (packet.LineNo >= lines_at_most) return std::nullopt;
  if (letter == 'N' && is_on_conference(packet, kind)) letter = 'C';
  return LineOrder{LineOrder::Kind::Word, word_of(letter, packet.LineNo), packet.LineNo};
}

std::optional<LineOrder> digit_order(const ServerPacket& packet) {
  constexpr std::string_view digits = "0123456789*#";
  if (packet.Buffer.size() != 1) return std::nullopt;
  const std::size_t digit = digits.find(packet.Buffer.front());
  if (digit == std::string_view::npos || packet.LineNo >= lines_at_most) return std::nullopt;
  return LineOrder{LineOrder::Kind::Word, word_of('Z', static_cast<int>(digit)), packet.LineNo};
}

std::optional<LineOrder> seize_order(const ServerPacket& packet, int kind) {
  const int line = packet.LineNo;
  if (line >= lines_at_most) return std::nullopt;
  if (packet.Bank == 0) return LineOrder{LineOrder::Kind::Word, word_of('N', line), line};
  if (packet.Bank == second) return LineOrder{LineOrder::Kind::Word, word_of('C', line), line};
  if (server_decides(kind)) return LineOrder{LineOrder::Kind::ToOwnPosition, {}, line};
  if (line == release_number) return std::nullopt;
  return LineOrder{LineOrder::Kind::Word, word_of('P', line), line};
}

bool takes_line(const LineOrder& order) {
  if (order.kind == LineOrder::Kind::ToOwnPosition) return true;
  return order.kind == LineOrder::Kind::Word && order.line >= 0 &&
         taking_words.find(order.word.front()) != std::string_view::npos;
}

}  // namespace lineweir::server

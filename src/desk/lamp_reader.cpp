#include "desk/lamp_reader.h"

namespace lineweir::desk {
namespace {

constexpr std::size_t cadence_length = 2;

}  // namespace

std::vector<LampMessage> LampReader::receive(std::string_view bytes) {
  std::vector<LampMessage> messages;
  for (const char byte : bytes) {
    if (const auto message = take(static_cast<unsigned char>(byte))) messages.push_back(*message);
  }
  return messages;
}

std::optional<LampMessage> LampReader::take(int byte) {
  if (byte < first_address) {
    if (cadence_.size() == cadence_length) {
      cadence_.erase(cadence_.begin());
      ++noise_;
    }
    cadence_.push_back(byte);
    return std::nullopt;
  }
  if (cadence_.size() < cadence_length) {
    noise_ += cadence_.size() + 1;
    cadence_.clear();
    return std::nullopt;
  }
  const LampMessage message{byte, cadence_[0], cadence_[1]};
  cadence_.clear();
  return message;
}

}  // namespace lineweir::desk

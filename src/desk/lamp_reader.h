#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace lineweir::desk {

// Two cadence bytes for the lamps at an address.
struct LampMessage {
  int address;
  int first;
  int second;

  friend bool operator==(const LampMessage&, const LampMessage&) = default;
};

// Addresses begin here; no cadence byte is as high, so that a message's end is always known.
inline constexpr int first_address = 192;

// Finds the lamp messages in a stream of bytes, however it is cut. A message is two cadence bytes
// and an address; what doesn't fit that is noise.
class LampReader {
 public:
  std::vector<LampMessage> receive(std::string_view bytes);

  // How many bytes have been noise so far.
  std::size_t noise() const { return noise_; }

 private:
  std::optional<LampMessage> take(int byte);

  // The cadence bytes since the last address, of which the last two count.
  std::vector<int> cadence_;
  std::size_t noise_ = 0;
};

}  // namespace lineweir::desk

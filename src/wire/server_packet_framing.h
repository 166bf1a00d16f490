#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

// A frame on the socket is a start marker, a body and an end marker. The body is eight bytes of
// header and the buffer, padded to an even length. Nothing in a body is escaped: the first end
// marker that leaves a body of at least seven bytes ends the frame.
inline constexpr std::string_view start_marker = "\4\4";
inline constexpr std::string_view end_marker = "\5\5";
inline constexpr char pad_byte = '\xFF';
inline constexpr std::size_t header_length = 8;
inline constexpr std::size_t shortest_body = 7;

// Makes the length of a buffer even.
void pad(std::string& buffer);

// The frame as it goes out.
std::string framed(std::string_view body);

// The bytes received and not yet consumed, `RecString`, and the cutting of frames from its head.
//
// A frame ends at the first 05 05, at position E, and begins behind the first 04 04 in front of E.
// With no 04 04 there it begins with the second byte, whatever that is. Where that leaves fewer
// than seven bytes, the 05 05 lay inside the header, and the next one behind E is tried: it may
// share a byte with the one before. What stands in front of a 04 04 goes with the frame. The second
// byte of an end marker stays at the head for the next frame.
//
// Each byte is looked at once for each marker, however the bytes arrive and however many wait.
class ReceiveBuffer {
 public:
  void append(std::string_view bytes);

  // The body of the first frame, or nothing until one is whole. It stays the first until it is
  // dropped. The view holds until the next append, drop or assign.
  std::optional<std::string_view> first_body();

  // Drops the first frame and all in front of it, up to the first byte of its end marker. Nothing
  // where there is no whole frame.
  void drop_first();

  // Drops what stands behind the last frame that is whole.
  void drop_unfinished();

  std::string_view text() const { return std::string_view(bytes_).substr(head_); }
  void assign(std::string_view text);

 private:
  bool find_end();
  std::size_t body_begin() const;
  void compact();

  // All positions count from the first byte of bytes_.
  std::string bytes_;
  std::size_t head_ = 0;
  // No end of the first frame lies before this place.
  std::size_t end_searched_ = 0;
  std::optional<std::size_t> end_;
  // No start marker lies between the head and this place.
  std::size_t start_searched_ = 0;
  std::optional<std::size_t> start_;
};

}  // namespace lineweir

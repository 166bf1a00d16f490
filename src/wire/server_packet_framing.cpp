#include "wire/server_packet_framing.h"

#include <algorithm>
#include <cstring>

namespace lineweir {
namespace {

// The first place in [from, end) at which a byte stands twice.
std::optional<std::size_t> find_pair(std::string_view text, char byte, std::size_t from,
                                     std::size_t end) {
  while (from + 1 < end) {
    const void* found = std::memchr(text.data() + from, byte, end - 1 - from);
    if (found == nullptr) return std::nullopt;
    const auto place = static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
    if (text[place + 1] == byte) return place;
    from = place + 2;
  }
  return std::nullopt;
}

}  // namespace

void pad(std::string& buffer) {
  if (buffer.size() % 2 != 0) buffer += pad_byte;
}

std::string framed(std::string_view body) {
  std::string frame;
  frame.reserve(start_marker.size() + body.size() + end_marker.size());
  frame += start_marker;
  frame += body;
  frame += end_marker;
  return frame;
}

void ReceiveBuffer::append(std::string_view bytes) {
  compact();
  bytes_ += bytes;
}

std::optional<std::string_view> ReceiveBuffer::first_body() {
  if (!end_ && !find_end()) return std::nullopt;
  return std::string_view(bytes_).substr(body_begin(), *end_ - body_begin());
}

void ReceiveBuffer::drop_first() {
  if (!end_) return;
  head_ = *end_ + 1;
  end_searched_ = head_;
  end_.reset();
  start_searched_ = head_;
  start_.reset();
}

void ReceiveBuffer::drop_unfinished() {
  ReceiveBuffer rest = *this;
  while (rest.first_body()) rest.drop_first();
  std::string whole(text().substr(0, text().size() - rest.text().size()));
  // A frame's end marker shares its second byte with what follows.
  if (!whole.empty()) whole += end_marker[1];
  assign(whole);
}

void ReceiveBuffer::assign(std::string_view text) {
  *this = ReceiveBuffer{};
  bytes_ = text;
}

bool ReceiveBuffer::find_end() {
  while (const auto end = find_pair(bytes_, end_marker[0], end_searched_, bytes_.size())) {
    end_searched_ = *end + 1;
    if (!start_) {
      start_ = find_pair(bytes_, start_marker[0], start_searched_, *end);
      start_searched_ = *end;
    }
    if (*end >= body_begin() + shortest_body) {
      end_ = end;
      return true;
    }
  }
  // The last byte may be the first half of a marker.
  if (!bytes_.empty()) end_searched_ = std::max(end_searched_, bytes_.size() - 1);
  return false;
}

std::size_t ReceiveBuffer::body_begin() const {
  return start_ ? *start_ + start_marker.size() : head_ + 1;
}

// Moves what is left to the front once at least as much has been dropped, so that a byte is moved
// once on the average.
void ReceiveBuffer::compact() {
  if (head_ == 0 || head_ < bytes_.size() - head_) return;
  bytes_.erase(0, head_);
  end_searched_ -= head_;
  start_searched_ -= head_;
  if (end_) *end_ -= head_;
  if (start_) *start_ -= head_;
  head_ = 0;
}

}  // namespace lineweir

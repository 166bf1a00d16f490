// The bytes of a server, of any kind. The first byte gives the cuts of the stream that follows;
// however it is cut, the frames and the rest must be those of the plain rule, and every codec must
// survive what stands in them, and read what it has written itself.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "serverlink/command_frame.h"
#include "support/plain_cutter.h"
#include "wire/frame_trace.h"
#include "wire/packet_text.h"
#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

using namespace lineweir;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

void check_records(const std::string& buffer) {
  if (const auto details = decode_caller_data(buffer)) {
    const std::string encoded = encode_caller_data(*details);
    require(buffer.starts_with(encoded));
    require(decode_caller_data(encoded) == details);
  }
  if (const auto message = decode_text_message(buffer)) {
    require(decode_text_message(encode_text_message(*message)) == message);
  }
  if (const auto login = decode_login(buffer)) {
    require(login->user.size() + login->password.size() + 1 <= buffer.size());
  }
  std::size_t length = 0;
  for (const std::string& item : decode_list(buffer)) length += item.size() + 1;
  require(length <= buffer.size());
  require(TextWrit_NullRemove(buffer).size() <= buffer.size());
}

void check_command(const std::string& word, const ServerPacket& source) {
  LineTable lines;
  lines.ThePhoneFlag = source.Bank % 5;
  DialState dial{source.LineNo - 1, source.AltInfo - 1};
  try {
    const auto packet = command_frame(
        word, source.Bank, {source.GroupNo, source.Console, source.CMD % 2 != 0, lines, dial});
    require(!packet || (packet->Buffer.size() <= 1 && packet->GroupNo == source.GroupNo));
  } catch (const Failure& failure) {
    require(failure.number() == failure_number::invalid_argument);
  }
}

void check_body(std::string_view body) {
  const ServerPacket packet = packet_of(body);
  ServerPacket sent = packet;
  pad(sent.Buffer);
  require(body_of(sent).size() % 2 == 0);
  // An odd buffer gets its pad back; an even one keeps its length, so a last 255 is taken from it.
  if (packet.Buffer.size() % 2 != 0) require(packet_of(body_of(sent)) == packet);
  require(frame_trace(body, packet).size() == received_frame_trace(body, packet).size());
  check_records(packet.Buffer);
  check_command(packet.Buffer, packet);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  std::size_t cut = data[0];
  const std::string_view stream(reinterpret_cast<const char*>(data + 1), size - 1);
  check_records(std::string(stream));

  ReceiveBuffer buffer;
  test::PlainCutter plain;
  for (std::size_t begin = 0; begin < stream.size();) {
    const std::size_t length = 1 + cut % 31;
    cut = cut * 5 + 3;
    buffer.append(stream.substr(begin, length));
    plain.append(stream.substr(begin, length));
    for (const std::string& expected : plain.take()) {
      const auto body = buffer.first_body();
      require(body == expected);
      check_body(*body);
      buffer.drop_first();
    }
    require(!buffer.first_body());
    require(buffer.text() == plain.text());
    begin += length;
  }
  return 0;
}

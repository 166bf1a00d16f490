#include "wire/sent_frame.h"

#include "support/bytes.h"
#include "support/packet_gen.h"
#include "support/plain_cutter.h"
#include "support/property_check.h"
#include "wire/server_packet_framing.h"

namespace lineweir::test {
namespace {

// What a receiver makes of a frame that comes behind another one.
std::vector<ServerPacket> received(const std::string& bytes) {
  ReceiveBuffer buffer;
  buffer.append(bytes);
  std::vector<ServerPacket> packets;
  while (const auto body = buffer.first_body()) {
    packets.push_back(packet_of(*body));
    buffer.drop_first();
  }
  return packets;
}

ServerPacket packet_with(std::string buffer) {
  return server_packet(ServerCommand::SrvMessage, 1, std::move(buffer));
}

TEST_SUITE("wire/sent_frame") {
  TEST_CASE("a text that ends nothing is carried as it stands") {
    for (const std::string& buffer :
         {std::string(), std::string("N"), std::string("NN"), std::string("\4\4"),
          bytes({5, 'x', 5, 'x'}), bytes({255, 'x'}), bytes({'x', 5, 255}), bytes({'x', 'x', 5}),
          std::string(32766, 'x')}) {
      CHECK(carried_buffer(buffer) == buffer);
    }
  }

  TEST_CASE("what would end a frame, or be lost, is a blank") {
    CHECK(carried_buffer(bytes({5, 5})) == bytes({5, ' '}));
    CHECK(carried_buffer(bytes({'a', 5, 5, 5, 'b'})) == bytes({'a', 5, ' ', 5, 'b'}));
    CHECK(carried_buffer(bytes({'a', 5})) == bytes({'a', ' '}));
    CHECK(carried_buffer(bytes({'a', 255})) == bytes({'a', 255, ' '}));
    // The length 5 stands in front of it.
    CHECK(carried_buffer(bytes({5, 'a', 'a', 'a', 'a'})) == bytes({' ', 'a', 'a', 'a', 'a'}));
    std::string long_one(261, 'a');
    long_one.front() = 5;
    CHECK(carried_buffer(long_one).front() == ' ');
    // The length 5 that a blank behind the last byte makes.
    CHECK(carried_buffer(bytes({5, 'a', 'a', 255})) == bytes({' ', 'a', 'a', 255, ' '}));
  }

  TEST_CASE("a buffer is cut to what a frame holds") {
    for (const std::size_t size : {32766U, 32767U, 32768U, 100'000U}) {
      const std::string carried = carried_buffer(std::string(size, 'x'));
      CHECK(carried.size() == 32766);
      CHECK(carried_buffer(std::string(size, '\xFF')).size() == 32767);
      CHECK(received(sent_frame(packet_with(std::string(size, '\5')))).size() == 1);
    }
  }

  TEST_CASE("a server's packet carries nothing but its group and its buffer") {
    const ServerPacket packet = server_packet(ServerCommand::SrvFlashMessage, 7, "x");
    CHECK(packet.CMD == 135);
    CHECK(packet.GroupNo == 7);
    CHECK(packet.Buffer == "x");
    for (const auto field : {packet.LineNo, packet.AltInfo, packet.Console, packet.Bank}) {
      CHECK(field == no_value);
    }
  }

  TEST_CASE("whatever is sent, a receiver gets what the frame carries, and the next one too") {
    check_property([] {
      std::string bytes;
      std::vector<ServerPacket> sent;
      const auto buffers = *rc::gen::container<std::vector<std::string>>(
          rc::gen::oneOf(frame_garbage(), field_text(),
                         // Around the lengths that end in 5.
                         rc::gen::map(rc::gen::inRange(255, 520), [](int size) {
                           return std::string(static_cast<std::size_t>(size), '\5');
                         })));
      for (const std::string& buffer : buffers) {
        ServerPacket packet = *sound_packet();
        packet.Buffer = buffer;
        bytes += sent_frame(packet);
        packet.set_buffer(carried_buffer(buffer));
        sent.push_back(packet);
      }
      RC_ASSERT(received(bytes) == sent);
      // By the plain rule too.
      PlainCutter plain;
      plain.append(bytes);
      RC_ASSERT(plain.take().size() == sent.size());
    });
  }

  TEST_CASE("what is carried once is carried again as it stands, and changes nowhere else") {
    check_property([] {
      const std::string buffer = *frame_garbage();
      const std::string carried = carried_buffer(buffer);
      RC_ASSERT(carried_buffer(carried) == carried);
      RC_ASSERT(carried.size() >= buffer.size() && carried.size() <= buffer.size() + 1);
      for (std::size_t i = 0; i < buffer.size(); ++i) {
        RC_ASSERT(carried[i] == buffer[i] || (carried[i] == ' ' && buffer[i] == '\5'));
      }
    });
  }
}

}  // namespace
}  // namespace lineweir::test

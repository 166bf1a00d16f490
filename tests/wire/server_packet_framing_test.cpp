#include "wire/server_packet_framing.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/bytes.h"
#include "support/packet_gen.h"
#include "support/plain_cutter.h"
#include "support/property_check.h"
#include "support/server_packet.h"

namespace lineweir::test {
namespace {

using Bodies = std::vector<std::string>;

Bodies take_all(ReceiveBuffer& buffer) {
  Bodies bodies;
  while (const auto body = buffer.first_body()) {
    bodies.emplace_back(*body);
    buffer.drop_first();
  }
  return bodies;
}

Bodies bodies_of(std::string_view received) {
  ReceiveBuffer buffer;
  buffer.append(received);
  return take_all(buffer);
}

const std::string body_1 = bytes({134, 3, 1, 255, 0, 0, 0, 1, 'N', 255});
const std::string body_2 = bytes({142, 255, 1, 255, 0, 0, 0, 0});

TEST_SUITE("wire/server_packet_framing") {
  TEST_CASE("a frame is a body between its markers") {
    CHECK(framed("body") == bytes({4, 4, 'b', 'o', 'd', 'y', 5, 5}));
  }

  TEST_CASE("a buffer of odd length gets one byte 255") {
    std::string odd = "N";
    pad(odd);
    CHECK(odd == bytes({'N', 255}));
    std::string even = "NN";
    pad(even);
    CHECK(even == "NN");
    std::string empty;
    pad(empty);
    CHECK(empty.empty());
  }

  TEST_CASE("two frames in one arrival come in their order") {
    CHECK(bodies_of(framed(body_1) + framed(body_2)) == Bodies{body_1, body_2});
  }

  TEST_CASE("a frame in two arrivals comes after the second, wherever it was bodies_of") {
    const std::string frame = framed(body_1);
    for (std::size_t cut_at = 0; cut_at < frame.size(); ++cut_at) {
      CAPTURE(cut_at);
      ReceiveBuffer buffer;
      buffer.append(frame.substr(0, cut_at));
      CHECK_FALSE(buffer.first_body());
      CHECK(buffer.text() == frame.substr(0, cut_at));
      buffer.append(frame.substr(cut_at));
      CHECK(take_all(buffer) == Bodies{body_1});
    }
  }

  TEST_CASE("the first body stays the first until it is dropped") {
    ReceiveBuffer buffer;
    buffer.append(framed(body_1));
    CHECK(buffer.first_body() == body_1);
    buffer.append(framed(body_2));
    CHECK(buffer.first_body() == body_1);
    buffer.drop_first();
    CHECK(buffer.first_body() == body_2);
  }

  TEST_CASE(
      "a frame that was asked for stays the same when what stood in front of it is moved away") {
    ReceiveBuffer buffer;
    buffer.append(framed(body_1 + std::string(1000, 'x')) + framed(body_2));
    REQUIRE(buffer.first_body());
    buffer.drop_first();
    CHECK(buffer.first_body() == body_2);
    buffer.append(framed(body_1));
    CHECK(take_all(buffer) == Bodies{body_2, body_1});
  }

  TEST_CASE("a buffer that was asked while it was empty takes what comes then") {
    ReceiveBuffer buffer;
    CHECK_FALSE(buffer.first_body());
    buffer.append(framed(body_1));
    CHECK(take_all(buffer) == Bodies{body_1});
  }

  TEST_CASE("what stands behind the last whole frame is dropped when no more can follow it") {
    ReceiveBuffer buffer;
    const std::string whole = framed(body_1) + framed(body_2);
    buffer.append(whole + framed(body_1).substr(0, 7));
    buffer.drop_unfinished();
    CHECK(buffer.text() == whole);
    CHECK(take_all(buffer) == Bodies{body_1, body_2});
    buffer.append(framed(body_1).substr(0, 7));
    buffer.drop_unfinished();
    CHECK(buffer.text().empty());
  }

  TEST_CASE("without a whole frame nothing is dropped") {
    ReceiveBuffer buffer;
    buffer.append("abc");
    buffer.drop_first();
    CHECK(buffer.text() == "abc");
  }

  TEST_CASE(
      "the second byte of an end marker stays at the head, and the next start passes it over") {
    ReceiveBuffer buffer;
    buffer.append(framed(body_1));
    CHECK(take_all(buffer) == Bodies{body_1});
    CHECK(buffer.text() == bytes({5}));
    buffer.append(framed(body_2));
    CHECK(take_all(buffer) == Bodies{body_2});
    CHECK(buffer.text() == bytes({5}));
  }

  TEST_CASE("05 05 in the header is known by the short body") {
    for (std::size_t place = 0; place < 6; ++place) {
      CAPTURE(place);
      std::string body = bytes({134, 3, 1, 2, 0, 0, 1, 0});
      body[place] = '\5';
      body[place + 1] = '\5';
      CHECK(bodies_of(framed(body)) == Bodies{body});
    }
  }

  TEST_CASE("a Size of 05 05 leaves a body of six bytes and is known in the same way") {
    const std::string body = bytes({134, 3, 1, 2, 0, 0, 5, 5}) + std::string(1286, 'x');
    CHECK(bodies_of(framed(body)) == Bodies{body});
  }

  TEST_CASE("more than one 05 05 in the header") {
    const std::string body = bytes({134, 5, 5, 0, 5, 5, 0, 0});
    CHECK(bodies_of(framed(body)) == Bodies{body});
    const std::string all_fives = bytes({5, 5, 5, 5, 5, 5, 0, 0});
    CHECK(bodies_of(framed(all_fives)) == Bodies{all_fives});
  }

  TEST_CASE(
      "property of the format: a low byte of Size 5 before a buffer that begins with 5 cuts") {
    // The body has seven bytes, which is enough, so that the buffer is lost.
    const std::string body = bytes({134, 3, 1, 2, 0, 0, 0, 5, 5, 'a', 'b', 'c', 'd', 255});
    CHECK(bodies_of(framed(body)).front() == bytes({134, 3, 1, 2, 0, 0, 0}));
  }

  TEST_CASE("property of the format: 05 05 in a buffer splits the frame there") {
    const std::string front = bytes({140, 255, 1, 255, 0, 0, 0, 12, 'a', 'b'});
    const std::string rest = "cdefghij";
    CHECK(bodies_of(framed(front + bytes({5, 5}) + rest)) == Bodies{front, rest});
    CHECK(bodies_of(framed(front + bytes({5, 5}) + "short")) == Bodies{front});
  }

  TEST_CASE("property of the format: a 5 at the end of a buffer belongs to the end marker") {
    const std::string body = bytes({140, 255, 1, 255, 0, 0, 0, 2, 'a', 5});
    ReceiveBuffer buffer;
    buffer.append(framed(body));
    CHECK(take_all(buffer) == Bodies{body.substr(0, 9)});
    CHECK(buffer.text() == bytes({5, 5}));
    buffer.append(framed(body_2));
    CHECK(take_all(buffer) == Bodies{body_2});
  }

  TEST_CASE("property of the format: a missing start marker costs the first byte") {
    CHECK(bodies_of(body_1 + bytes({5, 5})) == Bodies{body_1.substr(1)});
  }

  TEST_CASE("property of the format: after a frame that byte is the leftover 05") {
    CHECK(bodies_of(framed(body_1) + body_2 + bytes({5, 5})) == Bodies{body_1, body_2});
  }

  TEST_CASE("property of the format: what stands in front of a start marker goes with the frame") {
    ReceiveBuffer buffer;
    buffer.append("noise" + framed(body_1));
    CHECK(take_all(buffer) == Bodies{body_1});
    CHECK(buffer.text() == bytes({5}));
  }

  TEST_CASE(
      "property of the format: the first 04 04 starts the frame, and later ones are its bytes") {
    CHECK(bodies_of(bytes({4, 4, 4, 4}) + body_1 + bytes({5, 5})) ==
          Bodies{bytes({4, 4}) + body_1});
    CHECK(bodies_of(bytes({4}) + framed(body_1)) == Bodies{bytes({4}) + body_1});
  }

  TEST_CASE("a lone 05 05 at the head waits for the next end marker") {
    ReceiveBuffer buffer;
    buffer.append(bytes({5, 5}));
    CHECK_FALSE(buffer.first_body());
    CHECK(buffer.text() == bytes({5, 5}));
    buffer.append(framed(body_1));
    CHECK(take_all(buffer) == Bodies{body_1});
  }

  TEST_CASE("a row of fives makes the frame that the plain rule makes") {
    for (std::size_t count = 0; count < 40; ++count) {
      CAPTURE(count);
      const std::string fives(count, '\5');
      PlainCutter plain;
      plain.append(fives);
      CHECK(bodies_of(fives) == plain.take());
    }
  }

  TEST_CASE("bytes without an end marker stay") {
    ReceiveBuffer buffer;
    const std::string much(100000, '\4');
    buffer.append(much);
    CHECK_FALSE(buffer.first_body());
    CHECK(buffer.text() == much);
  }

  TEST_CASE("an assigned text is bodies_of from its first byte") {
    ReceiveBuffer buffer;
    buffer.append(framed(body_1) + "rest");
    take_all(buffer);
    buffer.assign(framed(body_2));
    CHECK(take_all(buffer) == Bodies{body_2});
    buffer.assign("");
    CHECK(buffer.text().empty());
    CHECK_FALSE(buffer.first_body());
  }

  TEST_CASE("random frames bodies_of at random places are the same frames") {
    check_property([] {
      const auto packets = *rc::gen::container<std::vector<ServerPacket>>(sound_packet());
      std::string stream;
      Bodies sent;
      for (const ServerPacket& packet : packets) {
        const std::string frame = frame_of(packet);
        sent.push_back(frame.substr(2, frame.size() - 4));
        stream += frame;
      }
      const auto lengths = *rc::gen::arbitrary<std::vector<std::uint8_t>>();
      ReceiveBuffer buffer;
      Bodies received;
      for (const std::string& piece : pieces_of(stream, lengths)) {
        buffer.append(piece);
        for (auto& body : take_all(buffer)) received.push_back(std::move(body));
      }
      RC_ASSERT(received == sent);
      RC_ASSERT(buffer.text() == (sent.empty() ? "" : "\5"));
    });
  }

  TEST_CASE("any bytes bodies_of at random places give the plain rule's frames and rest") {
    check_property([] {
      const auto stream = *frame_garbage();
      const auto lengths = *rc::gen::arbitrary<std::vector<std::uint8_t>>();
      ReceiveBuffer buffer;
      PlainCutter plain;
      for (const std::string& piece : pieces_of(stream, lengths)) {
        buffer.append(piece);
        plain.append(piece);
        RC_ASSERT(take_all(buffer) == plain.take());
        RC_ASSERT(buffer.text() == plain.text());
      }
    });
  }

  TEST_CASE("a frame may wait in the buffer while others arrive behind it") {
    check_property([] {
      const auto pieces = *rc::gen::container<Bodies>(frame_garbage());
      const auto takes =
          *rc::gen::container<std::vector<bool>>(pieces.size(), rc::gen::arbitrary<bool>());
      ReceiveBuffer buffer;
      PlainCutter plain;
      Bodies taken;
      Bodies expected;
      for (std::size_t i = 0; i < pieces.size(); ++i) {
        buffer.append(pieces[i]);
        plain.append(pieces[i]);
        for (auto& body : plain.take()) expected.push_back(std::move(body));
        if (const auto body = buffer.first_body(); body && takes[i]) {
          taken.emplace_back(*body);
          buffer.drop_first();
        }
      }
      for (auto& body : take_all(buffer)) taken.push_back(std::move(body));
      RC_ASSERT(taken == expected);
      RC_ASSERT(buffer.text() == plain.text());
    });
  }
}

}  // namespace
}  // namespace lineweir::test

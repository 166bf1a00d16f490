#include "wire/serial_buffer.h"

#include <doctest/doctest.h>

#include <array>
#include <utility>

#include "support/property_check.h"
#include "support/reference_stream.h"
#include "support/stream_gen.h"

namespace lineweir::test {
namespace {

using Items = std::vector<std::pair<char, int>>;

Items pairs_of(const std::vector<StatusItem>& items) {
  Items pairs;
  for (const StatusItem& item : items) pairs.emplace_back(item.letter, item.line);
  return pairs;
}

// Takes all items out, as a data event does.
Items take(SerialBuffer& buffer, std::string_view characters, int line_count = 10) {
  buffer.append(characters);
  const StatusScan scan = buffer.scan(line_count);
  buffer.drop(scan.consumed);
  return pairs_of(scan.items);
}

TEST_SUITE("boxlink/serial buffer") {
  TEST_CASE("items are consumed") {
    SerialBuffer buffer;
    CHECK(take(buffer, "F00F01F02") == Items{{'F', 0}, {'F', 1}, {'F', 2}});
    CHECK(buffer.text().empty());
  }

  TEST_CASE("of a line only the last report counts") {
    SerialBuffer buffer;
    CHECK(take(buffer, "S05H05") == Items{{'H', 5}});
    CHECK(buffer.text().empty());
  }

  TEST_CASE("items are handled by line, not by arrival") {
    SerialBuffer buffer;
    CHECK(take(buffer, "S01N00") == Items{{'N', 0}, {'S', 1}});
    CHECK(buffer.text().empty());
  }

  TEST_CASE("a cut item waits for its rest") {
    SerialBuffer buffer;
    CHECK(take(buffer, "S0").empty());
    CHECK(buffer.text() == "S0");
    CHECK(take(buffer, "5") == Items{{'S', 5}});
    CHECK(buffer.text().empty());

    CHECK(take(buffer, "N01H").size() == 1);
    CHECK(buffer.text() == "H");
    CHECK(take(buffer, "02") == Items{{'H', 2}});
  }

  TEST_CASE("a token with no letter in front is left alone, and so are its characters") {
    SerialBuffer buffer;
    CHECK(take(buffer, "05").empty());
    CHECK(buffer.text() == "05");
    CHECK(take(buffer, "").empty());
    CHECK(buffer.text() == "05");
    CHECK(take(buffer, "N05") == Items{{'N', 5}});
    CHECK(buffer.text().empty());
  }

  TEST_CASE("other text is passed over with the item behind it, and stays where none follows") {
    SerialBuffer buffer;
    CHECK(take(buffer, "Line monitor ON").empty());
    CHECK(take(buffer, "\r\nN03tail") == Items{{'N', 3}});
    CHECK(buffer.text() == "tail");
  }

  TEST_CASE("lines above 9 can't be addressed: their tokens report the first two digits") {
    SerialBuffer buffer;
    CHECK(take(buffer, "N012", 20) == Items{{'N', 1}, {'N', 1}});
    CHECK(buffer.text() == "2");
  }

  TEST_CASE("a token is found wherever it was cut while nothing was taken out") {
    for (const std::size_t place : {1U, 2U, 3U}) {
      CAPTURE(place);
      SerialBuffer buffer;
      buffer.append(std::string_view("N012").substr(0, place));
      buffer.append(std::string_view("N012").substr(place));
      CHECK(pairs_of(buffer.scan(20).items) == Items{{'N', 1}, {'N', 1}});
    }
  }

  TEST_CASE("tokens of lines above the count are not looked for") {
    SerialBuffer buffer;
    CHECK(take(buffer, "N05", 5).empty());
    CHECK(buffer.text() == "N05");
    CHECK(take(buffer, "", 6) == Items{{'N', 5}});
    CHECK(take(buffer, "N00", 0).empty());
    CHECK(take(buffer, "", -1).empty());
    CHECK(buffer.text() == "N00");
  }

  TEST_CASE("a token may take the letter's place of another") {
    SerialBuffer buffer;
    CHECK(take(buffer, "N000") == Items{{'0', 0}});
    CHECK(buffer.text().empty());
  }

  TEST_CASE("what isn't dropped is found again, with what has come since") {
    SerialBuffer buffer;
    buffer.append("S05");
    CHECK(pairs_of(buffer.scan(10).items) == Items{{'S', 5}});
    CHECK(pairs_of(buffer.scan(10).items) == Items{{'S', 5}});
    CHECK(buffer.text() == "S05");
    CHECK(take(buffer, "N01") == Items{{'N', 1}, {'S', 5}});
  }

  TEST_CASE("dropping more than there is empties it") {
    SerialBuffer buffer;
    buffer.append("N05");
    buffer.drop(100);
    CHECK(buffer.text().empty());
    CHECK(buffer.scan(10).items.empty());
  }

  TEST_CASE("an assigned text is as good as one that arrived") {
    SerialBuffer buffer;
    buffer.append("N05H0");
    buffer.assign("S03F0");
    CHECK(take(buffer, "7") == Items{{'S', 3}, {'F', 7}});
    CHECK(buffer.text().empty());
  }
}

TEST_SUITE("boxlink/serial buffer against the plain rule") {
  void check_against_reference(const std::vector<std::string>& pieces,
                               const std::vector<std::uint8_t>& choices) {
    SerialBuffer buffer;
    ReferenceStream reference;
    std::size_t step = 0;
    for (const std::string& piece : pieces) {
      const unsigned choice = step < choices.size() ? choices[step] : 0U;
      ++step;
      constexpr std::array line_counts = {10, 20, 10, 20, 3, 0, 11, 19};
      const int line_count = line_counts[choice % line_counts.size()];
      // Now and then the handler fails, so that nothing is dropped.
      const bool fails = choice >= 224;

      buffer.append(piece);
      reference.append(piece);
      const StatusScan scan = buffer.scan(line_count);
      RC_ASSERT(pairs_of(scan.items) == pairs_of(reference.items(line_count)));
      if (!fails) {
        buffer.drop(scan.consumed);
        reference.drop();
      }
      RC_ASSERT(buffer.text() == reference.buffer());
    }
  }

  TEST_CASE("broken streams, cut anywhere, give the same items and leave the same rest") {
    check_property(
        [](const std::vector<std::size_t>& cuts, const std::vector<std::uint8_t>& choices) {
          check_against_reference(cut(*broken_stream(), cuts), choices);
        });
  }

  TEST_CASE("whole items, cut anywhere, give the same items and leave the same rest") {
    check_property(
        [](const std::vector<std::size_t>& cuts, const std::vector<std::uint8_t>& choices) {
          check_against_reference(cut(*item_stream(), cuts), choices);
        });
  }

  TEST_CASE("any bytes, cut anywhere, give the same items and leave the same rest") {
    check_property([](const std::string& stream, const std::vector<std::size_t>& cuts,
                      const std::vector<std::uint8_t>& choices) {
      check_against_reference(cut(stream, cuts), choices);
    });
  }

  TEST_CASE("a stream of whole items ends in the same reports however it is cut") {
    check_property([](const std::vector<std::size_t>& cuts) {
      const std::string stream = *item_stream();
      std::array<char, 10> expected{};
      for (std::size_t i = 0; i < stream.size(); i += 3) {
        expected[static_cast<std::size_t>(stream[i + 2] - '0')] = stream[i];
      }
      std::array<char, 10> last{};
      SerialBuffer buffer;
      for (const std::string& piece : cut(stream, cuts)) {
        for (const auto& [letter, line] : take(buffer, piece)) {
          last[static_cast<std::size_t>(line)] = letter;
        }
      }
      RC_ASSERT(last == expected);
      RC_ASSERT(buffer.text().empty());
    });
  }
}

}  // namespace
}  // namespace lineweir::test

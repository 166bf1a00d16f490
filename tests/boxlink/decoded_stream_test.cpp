#include <doctest/doctest.h>

#include "support/property_check.h"
#include "support/reference_stream.h"
#include "support/scripted_console.h"
#include "support/stream_gen.h"

namespace lineweir::test {
namespace {

std::string letters_of(const Console& console) {
  std::string letters;
  for (int line = 0; line < console.lines.LineCount; ++line) {
    letters += console.lines.StatusLetter(line);
  }
  return letters;
}

// What the letters become by the items of the plain rule alone.
std::string letter_after(char letter) {
  return std::string(1, letter == 'F' || letter == 'B' ? ' ' : letter);
}

TEST_SUITE("boxlink/decoded stream") {
  TEST_CASE("a stream of whole items gives the same letters however it is cut") {
    check_property([](const std::vector<std::size_t>& cuts) {
      const std::string stream = *item_stream();
      std::string expected(10, ' ');
      for (std::size_t i = 0; i < stream.size(); i += 3) {
        expected.replace(static_cast<std::size_t>(stream[i + 2] - '0'), 1, letter_after(stream[i]));
      }
      ScriptedConsole test;
      for (const std::string& piece : cut(stream, cuts)) test.box_sends(piece);
      RC_ASSERT(letters_of(test.console) == expected);
      RC_ASSERT(test.console.decoder.serial_buffer.text().empty());
      RC_ASSERT(test.trace.empty());
    });
  }

  TEST_CASE("broken streams give the letters of the plain rule and leave its rest") {
    check_property([](const std::vector<std::size_t>& cuts, bool twenty_lines) {
      ScriptedConsole test;
      if (twenty_lines) test.console.layout.set_line_count(20);
      std::string expected(twenty_lines ? 20 : 10, ' ');
      ReferenceStream reference;
      for (const std::string& piece : cut(*broken_stream(), cuts)) {
        test.box_sends(piece);
        if (piece.empty()) continue;
        reference.append(piece);
        for (const StatusItem& item : reference.items(test.console.lines.LineCount)) {
          expected.replace(static_cast<std::size_t>(item.line), 1, letter_after(item.letter));
        }
        reference.drop();
        RC_ASSERT(letters_of(test.console) == expected);
        RC_ASSERT(test.console.decoder.serial_buffer.text() == reference.buffer());
      }
      RC_ASSERT(test.trace.empty());
    });
  }
}

}  // namespace
}  // namespace lineweir::test

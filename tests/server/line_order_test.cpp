#include "server/line_order.h"

#include <doctest/doctest.h>

#include "base/text.h"
#include "serverlink/command_frame.h"
#include "wire/server_packet_framing.h"

namespace lineweir::server {
namespace {

using Kind = LineOrder::Kind;

constexpr int no_bank = 255;
constexpr int lines = 20;

// A console that sends command words.
struct Sender {
  int kind = 1;
  bool screener = false;
  int console = 0;
  // Of every line.
  char letter = ' ';
  int dial_line = no_line;
};

// The word's frame as it is cut from the bytes that the console sends.
std::optional<ServerPacket> received(const Sender& sender, const std::string& word, int bank) {
  LineTable table;
  table.resize(lines);
  table.ThePhoneFlag = sender.kind;
  for (int line = 0; line < lines; ++line) table.StatusLetter(line) = sender.letter;
  const DialState dial{sender.dial_line, no_line};
  auto packet = command_frame(word, bank, {1, sender.console, sender.screener, table, dial});
  if (!packet) return std::nullopt;
  pad(packet->Buffer);
  ReceiveBuffer buffer;
  buffer.append(framed(body_of(*packet)));
  return packet_of(buffer.first_body().value());
}

std::optional<LineOrder> order_of(const Sender& sender, const std::string& word, int bank) {
  const auto packet = received(sender, word, bank);
  REQUIRE(packet);
  CHECK(packet->CMD == static_cast<int>(ClientCommand::CmdLineCommand));
  return line_order(*packet, sender.kind);
}

LineOrder word_order(const std::string& word, int line) { return {Kind::Word, word, line}; }

std::string numbered(char letter, int number) { return letter + zero_filled(number, 2); }

// Wherever the caller is, whichever the hybrid, in both modes.
template <class Check>
void for_each_sender(int kind, Check check) {
  for (const bool screener : {false, true}) {
    for (const char letter : std::string(" RNCPOHSLKE")) {
      const Sender sender{kind, screener, screener ? 1 : 0, letter};
      CAPTURE(kind);
      CAPTURE(screener);
      CAPTURE(letter);
      check(sender);
    }
  }
}

ServerPacket frame(int line, int alt_info, int bank, const std::string& buffer) {
  ServerPacket packet = client_packet(ClientCommand::CmdLineCommand, 1, 0);
  packet.LineNo = field_byte(line);
  packet.AltInfo = field_byte(alt_info);
  packet.Bank = field_byte(bank);
  packet.Buffer = buffer;
  return packet;
}

TEST_CASE("what a console sends of a line is the same word at the exchange, with every kind") {
  for (const int kind : {1, 2, 3, 4}) {
    for_each_sender(kind, [](const Sender& sender) {
      for (int line = 0; line < lines; ++line) {
        const bool is_place = sender.kind == 4 && line == 0;
        for (const int bank : {0, 1, no_bank}) {
          for (const char letter : std::string("SL")) {
            const std::string word = numbered(letter, line);
            CHECK(order_of(sender, word, bank) == word_order(word, line));
          }
          for (const char letter : std::string("FH")) {
            const std::string word = numbered(letter, line);
            if (is_place && bank != no_bank) continue;
            CHECK(order_of(sender, word, bank) == word_order(word, line));
          }
        }
        CHECK(order_of(sender, numbered('N', line), 0) == word_order(numbered('N', line), line));
        CHECK(order_of(sender, numbered('C', line), 1) == word_order(numbered('C', line), line));
      }
    });
  }
}

TEST_CASE("a handset's words come out as they were sent, where the positions have no numbers") {
  for (const int kind : {1, 2, 3}) {
    for_each_sender(kind, [](const Sender& sender) {
      for (const char letter : std::string("PO")) {
        for (const int bank : {0, 1, no_bank}) {
          for (int line = 0; line < lines; ++line) {
            const std::string word = numbered(letter, line);
            CHECK(order_of(sender, word, bank) == word_order(word, line == 15 ? -1 : line));
          }
          for (const int tone : {20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 31, 32}) {
            const std::string word = numbered(letter, tone);
            CHECK(order_of(sender, word, bank) == word_order(word, -1));
          }
        }
      }
    });
  }
}

TEST_CASE("words that number no line, or nothing, come out as they were sent") {
  for (const int kind : {1, 2, 3, 4}) {
    for_each_sender(kind, [](const Sender& sender) {
      for (const int bank : {0, 1, no_bank}) {
        for (const char* word : {"X", "R"}) {
          CHECK(order_of(sender, word, bank) == word_order(word, -1));
        }
        for (const int tone : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}) {
          const std::string word = numbered('T', tone);
          CHECK(order_of(sender, word, bank) == word_order(word, -1));
        }
        for (const char letter : std::string("UV")) {
          for (int number = 0; number < 100; ++number) {
            const std::string word = numbered(letter, number);
            CHECK(order_of(sender, word, bank) == word_order(word, -1));
          }
        }
      }
    });
  }
}

TEST_CASE("with numbered positions a handset's word takes the line to the seat's own") {
  for_each_sender(4, [](const Sender& sender) {
    for (const char letter : std::string("PO")) {
      for (int line = 0; line < lines; ++line) {
        const LineOrder own{Kind::ToOwnPosition, {}, line};
        CHECK(order_of(sender, numbered(letter, line), 0) == own);
        CHECK(order_of(sender, numbered(letter, line), 1) == own);
      }
      CHECK_FALSE(order_of(sender, numbered(letter, 20), 0));
    }
  });
}

TEST_CASE("with numbered positions the words of line 0 drop and hold a place") {
  for_each_sender(4, [](const Sender& sender) {
    for (const int bank : {0, 1}) {
      CHECK(order_of(sender, "F00", bank) == LineOrder{Kind::DropPlace, {}, -1, bank});
      CHECK(order_of(sender, "H00", bank) == LineOrder{Kind::HoldPlace, {}, -1, bank});
    }
    CHECK(order_of(sender, "F00", no_bank) == word_order("F00", 0));
  });
  // There is no third place.
  for (const int bank : {2, 3, 254}) {
    CHECK(line_order(frame(0, 255, bank, "F"), 4) == word_order("F00", 0));
    CHECK(line_order(frame(0, 255, bank, "H"), 4) == word_order("H00", 0));
  }
}

TEST_CASE("a hybrid is told by AltInfo or by Bank, with numbered positions by Bank alone") {
  for (const int kind : {1, 2, 3}) {
    CHECK(line_order(frame(4, 0, 0, "N"), kind) == word_order("N04", 4));
    CHECK(line_order(frame(4, 1, 0, "N"), kind) == word_order("C04", 4));
    CHECK(line_order(frame(4, 0, 1, "N"), kind) == word_order("C04", 4));
    CHECK(line_order(frame(4, 255, 255, "N"), kind) == word_order("N04", 4));
    CHECK(line_order(frame(4, 255, 255, "C"), kind) == word_order("C04", 4));
  }
  CHECK(line_order(frame(4, 1, 0, "N"), 4) == word_order("N04", 4));
  CHECK(line_order(frame(4, 0, 1, "N"), 4) == word_order("C04", 4));
}

TEST_CASE("a peer may send the second position's own letter") {
  CHECK(line_order(frame(4, 255, 0, "O"), 1) == word_order("O04", 4));
  CHECK(line_order(frame(4, 255, 0, "P"), 1) == word_order("P04", 4));
  CHECK(line_order(frame(4, 1, 0, "P"), 1) == word_order("O04", 4));
}

TEST_CASE("no other letter is an order, and no text but one letter") {
  const std::string known = "FHSLNCPOXRTUV";
  for (int code = 0; code < 256; ++code) {
    const char letter = static_cast<char>(code);
    if (known.find(letter) != std::string::npos) continue;
    CAPTURE(code);
    for (const int kind : {1, 4}) CHECK_FALSE(line_order(frame(3, 0, 0, {letter}), kind));
  }
  for (const char* buffer : {"", "NN", "N05", "N0", "F\2"}) {
    CHECK_FALSE(line_order(frame(3, 0, 0, buffer), 1));
  }
}

TEST_CASE("a number that is none of its letter's is no order") {
  for (int number = 0; number < 256; ++number) {
    CAPTURE(number);
    for (const int kind : {1, 2, 3, 4}) {
      for (const char letter : std::string("FHSLNC")) {
        const bool is_order = line_order(frame(number, 255, 255, {letter}), kind).has_value();
        CHECK(is_order == (number < lines));
      }
      for (const char letter : std::string("TUV")) {
        const bool is_order = line_order(frame(number, 255, 0, {letter}), kind).has_value();
        CHECK(is_order == (number < 100));
      }
      const bool is_order = line_order(frame(number, 0, 0, "P"), kind).has_value();
      CHECK(is_order == (number < (kind == 4 ? lines : 100)));
      CHECK(line_order(frame(number, 0, 0, "X"), kind) == word_order("X", -1));
    }
  }
}

TEST_CASE("a digit comes out as its tone on the line that is dialled on") {
  const Sender sender{4, true, 2, ' ', 7};
  for (int digit = 0; digit < 12; ++digit) {
    const std::string word = numbered('Z', digit);
    const auto packet = received(sender, word, no_bank);
    REQUIRE(packet);
    CHECK(packet->CMD == static_cast<int>(ClientCommand::CmdDialDigit));
    CHECK(digit_order(*packet) == word_order(word, 7));
  }
  CHECK_FALSE(digit_order(*received(sender, "Z12", no_bank)));
  CHECK_FALSE(received({4, true, 2}, "Z01", no_bank));
}

TEST_CASE("what is no digit, or of no line, dials nothing") {
  const std::string digits = "0123456789*#";
  for (int code = 0; code < 256; ++code) {
    const char digit = static_cast<char>(code);
    CAPTURE(code);
    const bool is_order = digit_order(frame(3, 0, 0, {digit})).has_value();
    CHECK(is_order == (digits.find(digit) != std::string::npos));
    CHECK(digit_order(frame(code, 0, 0, "5")).has_value() == (code < lines));
  }
  CHECK_FALSE(digit_order(frame(3, 0, 0, "12")));
}

TEST_CASE("a line is seized on a hybrid, or at the screener's handset") {
  for (int line = 0; line < lines; ++line) {
    for (const int kind : {1, 2, 3, 4}) {
      CHECK(seize_order(frame(line, 0, 0, {}), kind) == word_order(numbered('N', line), line));
      CHECK(seize_order(frame(line, 0, 1, {}), kind) == word_order(numbered('C', line), line));
    }
    for (const int kind : {1, 2, 3}) {
      const auto order = seize_order(frame(line, 0, no_bank, {}), kind);
      // The word would release the position.
      const bool has_word = line != 15;
      CHECK(order.has_value() == has_word);
      if (has_word) CHECK(order == word_order(numbered('P', line), line));
    }
    CHECK(seize_order(frame(line, 0, no_bank, {}), 4) == LineOrder{Kind::ToOwnPosition, {}, line});
  }
  for (int line = lines; line < 256; ++line) CHECK_FALSE(seize_order(frame(line, 0, 0, {}), 1));
}

TEST_CASE("a line is taken by who brings it to a hybrid or a handset") {
  for (const char* word : {"N03", "C03", "P03", "O03"}) CHECK(takes_line(word_order(word, 3)));
  for (const char* word : {"F03", "H03", "S03", "L03", "Z03"}) {
    CHECK_FALSE(takes_line(word_order(word, 3)));
  }
  for (const char* word : {"P15", "O15", "P25", "T04", "X"}) {
    CHECK_FALSE(takes_line(word_order(word, -1)));
  }
  CHECK(takes_line({Kind::ToOwnPosition, {}, 3}));
  CHECK_FALSE(takes_line({Kind::DropPlace, {}, -1, 0}));
  CHECK_FALSE(takes_line({Kind::HoldPlace, {}, -1, 1}));
}

}  // namespace
}  // namespace lineweir::server

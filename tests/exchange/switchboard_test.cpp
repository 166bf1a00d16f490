#include "exchange/switchboard.h"

#include <doctest/doctest.h>

#include <string>

using namespace lineweir::exchange;

namespace {

// What a word changes, as the items that report it.
std::string obey(Switchboard& lines, std::string_view text) {
  const auto word = parse_word(text);
  REQUIRE(word);
  std::string items;
  for (const LineChange& change : lines.obey(*word)) {
    if (!items.empty()) items += ' ';
    items += status_item(change.line, change.letter);
  }
  return items;
}

}  // namespace

TEST_CASE("a call goes through the studio") {
  Switchboard lines(10);
  CHECK(lines.ring(3) == LineChanges{{3, 'R'}});
  CHECK(obey(lines, "P03") == "P03");
  CHECK(obey(lines, "H03") == "H03");
  CHECK(obey(lines, "O03") == "O03");
  CHECK(obey(lines, "S03") == "S03");
  CHECK(obey(lines, "N03") == "N03");
  CHECK(obey(lines, "C03") == "C03");
  CHECK(obey(lines, "F03") == "F03");
  CHECK(lines.letter(3) == idle_letter);
}

TEST_CASE("who stood at a handset position goes on hold, and is reported first") {
  Switchboard lines(10);
  lines.ring(3);
  lines.ring(4);
  obey(lines, "P03");
  CHECK(obey(lines, "P04") == "H03 P04");
  CHECK(obey(lines, "O03") == "O03");
  CHECK(obey(lines, "O04") == "H03 O04");
  CHECK_FALSE(lines.find('P'));
  CHECK(lines.set_letter(7, 'O') == LineChanges{{4, 'H'}, {7, 'O'}});
}

TEST_CASE("a hybrid takes any number of lines") {
  Switchboard lines(10);
  for (const char* word : {"N00", "N01", "C02", "C03"}) obey(lines, word);
  CHECK(lines.letter(0) == 'N');
  CHECK(lines.letter(1) == 'N');
  CHECK(lines.letter(2) == 'C');
  CHECK(lines.letter(3) == 'C');
}

TEST_CASE("a lock is taken and given back on either hybrid, and only on air") {
  Switchboard lines(10);
  obey(lines, "N00");
  CHECK(obey(lines, "L00") == "L00");
  CHECK(obey(lines, "L00") == "N00");
  obey(lines, "C01");
  CHECK(obey(lines, "L01") == "K01");
  CHECK(obey(lines, "L01") == "C01");
  for (const char letter : {'R', 'S', 'H', 'P', 'O', 'E', 'Y', 'B', 'F'}) {
    lines.set_letter(2, letter);
    CHECK(obey(lines, "L02") == "");
    CHECK(lines.letter(2) == letter);
  }
}

TEST_CASE("the position words drop what is at the position, with twenty lines too") {
  Switchboard lines(20);
  obey(lines, "N15");
  obey(lines, "P07");
  obey(lines, "O08");
  CHECK(obey(lines, "P15") == "F07");
  CHECK(obey(lines, "O15") == "F08");
  CHECK(lines.letter(15) == 'N');
  CHECK(obey(lines, "P15") == "");
  CHECK(obey(lines, "O15") == "");
}

TEST_CASE("P, O, N and C seize an idle line; H, S, L and F change nothing on it") {
  Switchboard lines(10);
  CHECK(obey(lines, "P00") == "P00");
  CHECK(obey(lines, "O01") == "O01");
  CHECK(obey(lines, "N02") == "N02");
  CHECK(obey(lines, "C03") == "C03");
  for (const char* word : {"H04", "S04", "L04", "F04"}) CHECK(obey(lines, word) == "");
  CHECK(lines.letter(4) == idle_letter);
}

TEST_CASE("tones and remote next change nothing") {
  Switchboard lines(10);
  obey(lines, "P00");
  obey(lines, "N01");
  for (const char* word :
       {"P20", "P29", "P31", "O32", "T00", "T12", "Z01", "V01", "X", "R", "M", "Q00"}) {
    CAPTURE(word);
    CHECK(obey(lines, word) == "");
  }
}

TEST_CASE("the same letter again is no change") {
  Switchboard lines(10);
  for (const char* word : {"P00", "O01", "N02", "C03", "H02", "S03"}) {
    obey(lines, word);
    CHECK(obey(lines, word) == "");
  }
}

TEST_CASE("a line made busy takes nothing but a drop") {
  Switchboard lines(10);
  CHECK(lines.make_busy(4) == LineChanges{{4, 'B'}});
  for (const char* word : {"P04", "O04", "N04", "C04", "H04", "S04", "L04"})
    CHECK(obey(lines, word) == "");
  CHECK(lines.ring(4).empty());
  CHECK(lines.hang_up(4).empty());
  CHECK(lines.end_busy(4) == LineChanges{{4, 'F'}});
  lines.make_busy(4);
  CHECK(obey(lines, "F04") == "F04");
}

TEST_CASE("calls, hang-ups and busy fit only their own states") {
  Switchboard lines(10);
  CHECK(lines.hang_up(1).empty());
  CHECK(lines.end_busy(1).empty());
  lines.ring(1);
  CHECK(lines.ring(1).empty());
  CHECK(lines.make_busy(1).empty());
  CHECK(lines.end_busy(1).empty());
  CHECK(lines.hang_up(1) == LineChanges{{1, 'F'}});
}

TEST_CASE("every status letter can be set and nothing else") {
  Switchboard lines(10);
  for (const char letter : status_letters.substr(1)) CHECK(lines.set_letter(0, letter).size() == 1);
  CHECK(lines.set_letter(0, 'x').empty());
  CHECK(lines.set_letter(0, ' ').empty());
}

TEST_CASE("a line out of range has nothing to change") {
  Switchboard lines(10);
  for (const int line : {-1, 10, 99}) {
    CHECK(lines.letter(line) == idle_letter);
    CHECK(lines.ring(line).empty());
    CHECK(lines.hang_up(line).empty());
    CHECK(lines.make_busy(line).empty());
    CHECK(lines.end_busy(line).empty());
    CHECK(lines.set_letter(line, 'N').empty());
    CHECK(lines.obey({Action::AirOnMain, line}).empty());
    CHECK(lines.obey({Action::ToPosition1, line}).empty());
  }
}

TEST_CASE("a failed seizure of a position displaces nobody") {
  Switchboard lines(10);
  obey(lines, "P00");
  CHECK(obey(lines, "P12") == "");
  lines.make_busy(1);
  CHECK(obey(lines, "P01") == "");
  CHECK(lines.letter(0) == 'P');
}

TEST_CASE("an item is the letter and the line in two digits") {
  CHECK(status_item(5, 'N') == "N05");
  CHECK(status_item(0, 'F') == "F00");
  CHECK(status_item(12, 'C') == "C12");
}

TEST_CASE("a numbered position takes one line, and its letter is the code of its number") {
  Switchboard lines(10);
  lines.ring(3);
  lines.ring(4);
  for (const int position : {0, 1, 5, most_positions - 1}) {
    const char letter = static_cast<char>(lineweir::first_position_code + position);
    CHECK(lines.take_to_position(3, position) == LineChanges{{3, letter}});
    CHECK(lines.take_to_position(3, position).empty());
    CHECK(lines.take_to_position(4, position) == LineChanges{{3, 'H'}, {4, letter}});
    CHECK(lines.find(letter) == 4);
  }
}

TEST_CASE("numbered positions and the two handsets are places of their own") {
  Switchboard lines(10);
  for (const int line : {0, 1, 2, 3}) lines.ring(line);
  obey(lines, "P00");
  obey(lines, "O01");
  lines.take_to_position(2, 0);
  lines.take_to_position(3, 1);
  CHECK(lines.letter(0) == 'P');
  CHECK(lines.letter(1) == 'O');
  CHECK(lines.letter(2) == '\x80');
  CHECK(lines.letter(3) == '\x81');
  CHECK(obey(lines, "P15") == "F00");
  CHECK(obey(lines, "H02") == "H02");
}

TEST_CASE("a numbered position seizes a free line, but none that is busy or isn't there") {
  Switchboard lines(10);
  CHECK(lines.take_to_position(0, 2) == LineChanges{{0, '\x82'}});
  lines.make_busy(1);
  CHECK(lines.take_to_position(1, 2).empty());
  for (const int line : {-1, 10, 20}) CHECK(lines.take_to_position(line, 2).empty());
  for (const int position : {-1, most_positions, 1000}) {
    CHECK(lines.take_to_position(3, position).empty());
  }
  CHECK(lines.letter(0) == '\x82');
  CHECK(lines.hang_up(0) == LineChanges{{0, 'F'}});
}

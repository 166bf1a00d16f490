#include "callcontrol/dial_words.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/failure_number.h"

namespace lineweir::test {
namespace {

std::vector<std::string> all_words(const DialSeat& seat) {
  std::vector<std::string> words;
  for (int key = 0; key < dial_key_count; ++key) words.push_back(dial_word(key, seat).word);
  return words;
}

DialSeat talent(int kind, int hybrid) { return {{true, kind, false, false}, false, hybrid}; }
DialSeat producer(int kind, int handset) {
  return {{false, kind, handset == 1, handset == 2}, true, bank_main};
}

using Words = std::vector<std::string>;

const Words tones_1 = {"P20", "P21", "P22", "P23", "P24", "P25",
                       "P26", "P27", "P28", "P29", "P31", "P32"};
const Words tones_2 = {"O20", "O21", "O22", "O23", "O24", "O25",
                       "O26", "O27", "O28", "O29", "O31", "O32"};
const Words digits = {"Z00", "Z01", "Z02", "Z03", "Z04", "Z05",
                      "Z06", "Z07", "Z08", "Z09", "Z10", "Z11"};

TEST_SUITE("callcontrol/dial_words") {
  TEST_CASE("the host's keys are tones on the hybrid; kind 3 numbers the tone of 0 behind 9") {
    for (const int kind : {1, 2, 3, 4}) {
      CAPTURE(kind);
      const Words expected = {kind == 3 ? "T10" : "T00",
                              "T01",
                              "T02",
                              "T03",
                              "T04",
                              "T05",
                              "T06",
                              "T07",
                              "T08",
                              "T09",
                              "T11",
                              "T12"};
      CHECK(all_words(talent(kind, bank_main)) == expected);
    }
  }

  TEST_CASE("the screener's keys are tones on the handset, digits for a server that dials") {
    for (const int kind : {1, 2, 3}) {
      CAPTURE(kind);
      CHECK(all_words(producer(kind, 1)) == tones_1);
      CHECK(all_words(producer(kind, 2)) == tones_2);
      CHECK(all_words(producer(kind, 0)) == tones_2);
    }
    for (const int handset : {0, 1, 2}) CHECK(all_words(producer(4, handset)) == digits);
  }

  TEST_CASE("tones on a hybrid carry its bank, all others none") {
    for (int key = 0; key < dial_key_count; ++key) {
      CHECK(dial_word(key, talent(1, bank_main)).bank == 0);
      CHECK(dial_word(key, talent(1, bank_conference)).bank == 1);
      CHECK(dial_word(key, producer(1, 1)).bank == 255);
      CHECK(dial_word(key, producer(1, 2)).bank == 255);
      CHECK(dial_word(key, producer(4, 1)).bank == 255);
    }
  }

  TEST_CASE("a key that the pad doesn't have is out of range") {
    for (const int key : {-1, 12, 255}) {
      CHECK(failure_number_of([&] { dial_word(key, talent(1, bank_main)); }) == 9);
    }
  }

  TEST_CASE("each character of the pad has its key, no other has one") {
    const std::string characters = "0123456789*#";
    for (int code = 0; code < 256; ++code) {
      const auto place = characters.find(static_cast<char>(code));
      CHECK(dial_key_of(code) == (place == std::string::npos ? -1 : static_cast<int>(place)));
    }
  }

  TEST_CASE("the lamp is red on air, green on the handset or where reserved, else grey") {
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      for (const int kind : {1, 2, 3, 4}) {
        for (const int console : {0, 2, 127, 255}) {
          CAPTURE(code);
          CAPTURE(kind);
          const bool reserved = code >= 128 && code - 128 == console && kind == 4;
          const std::string_view otherwise = reserved ? "GreenPic" : "GreyPic";
          const bool on_air = letter == 'N' || letter == 'C';
          const bool on_handset = letter == 'P' || letter == 'O';
          CHECK(dial_lamp(letter, true, kind, console) == (on_air ? "RedPic" : otherwise));
          CHECK(dial_lamp(letter, false, kind, console) == (on_handset ? "GreenPic" : otherwise));
        }
      }
    }
  }
}

}  // namespace
}  // namespace lineweir::test

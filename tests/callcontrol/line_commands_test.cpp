#include "callcontrol/line_commands.h"

#include <doctest/doctest.h>

#include <string>

#include "support/all_letters.h"

namespace lineweir::test {
namespace {

Seat talent(int kind) { return {true, kind, false, false}; }
Seat command_seat(int kind, int handset) { return {false, kind, handset == 1, handset == 2}; }

// "N05 0", or empty where there is no word.
std::string told(const std::optional<CommandWord>& command) {
  return command ? command->word + " " + std::to_string(command->bank) : std::string();
}

std::string main_row(const Seat& seat, char letter, int line = 5) {
  return told(line_command(main_row_rules, seat, letter, line));
}
std::string conference_row(const Seat& seat, char letter) {
  return told(line_command(conference_row_rules, seat, letter, 5));
}

TEST_SUITE("callcontrol/line_commands") {
  TEST_CASE("a word is a letter and the line in two digits") {
    CHECK(numbered_word('F', 0) == "F00");
    CHECK(numbered_word('F', 9) == "F09");
    CHECK(numbered_word('F', 10) == "F10");
    CHECK(numbered_word('F', 19) == "F19");
  }

  TEST_CASE("all letters are walked: those of the set and such as nobody knows") {
    CHECK(all_letters().size() >= 16);
  }

  TEST_CASE("only a line taken by other equipment may not be commanded") {
    for (const char letter : all_letters()) {
      CHECK(may_be_commanded(letter, false) == (letter != 'E'));
      CHECK(may_be_commanded(letter, true));
    }
  }

  TEST_CASE("the main row button in talent mode") {
    for (int kind = 1; kind <= 4; ++kind) {
      for (const char letter : all_letters()) {
        CAPTURE(kind);
        CAPTURE(letter);
        const bool locks = letter == 'N' && kind <= 2;
        CHECK(main_row(talent(kind), letter) == (locks ? "L05 0" : "N05 0"));
      }
    }
  }

  TEST_CASE("the main row button in producer mode, whatever the letter") {
    struct Row {
      int kind;
      int handset;
      std::string_view word;
    };
    for (const Row& row :
         {Row{1, 0, "P05 0"}, Row{1, 1, "P05 0"}, Row{1, 2, "P05 0"}, Row{2, 0, ""},
          Row{2, 1, "P05 0"}, Row{2, 2, "O05 0"}, Row{3, 0, ""}, Row{3, 1, "C05 1"}, Row{3, 2, ""},
          Row{4, 0, ""}, Row{4, 1, "P05 0"}, Row{4, 2, "O05 0"}}) {
      for (const char letter : all_letters()) {
        CAPTURE(row.kind);
        CAPTURE(row.handset);
        CHECK(main_row(command_seat(row.kind, row.handset), letter) == row.word);
      }
    }
  }

  TEST_CASE("with both handsets checked the later word wins") {
    for (const int kind : {2, 4}) {
      CHECK(main_row({false, kind, true, true}, 'R') == "O05 0");
    }
  }

  TEST_CASE("the conference row button in talent mode") {
    for (int kind = 1; kind <= 4; ++kind) {
      for (const char letter : all_letters()) {
        const bool locks = letter == 'C' && kind <= 2;
        CHECK(conference_row(talent(kind), letter) == (locks ? "L05 1" : "C05 1"));
      }
    }
  }

  TEST_CASE("the conference row button in producer mode has a word with kind 4 only") {
    for (int kind = 1; kind <= 4; ++kind) {
      CHECK(conference_row(command_seat(kind, 1), 'S') == (kind == 4 ? "P05 1" : ""));
    }
  }

  TEST_CASE("drop and hold on the main hybrid, line by line") {
    struct Row {
      Seat seat;
      char letter;
      int bank;
    };
    std::vector<Row> rows;
    for (const int kind : {1, 2, 3}) {
      rows.push_back({talent(kind), 'N', 0});
      rows.push_back({command_seat(kind, 1), 'P', 0});
      rows.push_back({command_seat(kind, 2), 'O', 0});
    }
    rows.push_back({command_seat(3, 1), 'C', 1});

    const auto expected = [&](const Seat& seat, char letter) -> std::optional<int> {
      for (const Row& row : rows) {
        if (row.seat.talent == seat.talent && row.seat.equipment_kind == seat.equipment_kind &&
            (seat.talent ||
             (row.seat.handset_1 == seat.handset_1 && row.seat.handset_2 == seat.handset_2)) &&
            row.letter == letter) {
          return row.bank;
        }
      }
      return std::nullopt;
    };
    for (int kind = 1; kind <= 4; ++kind) {
      for (const Seat& seat :
           {talent(kind), command_seat(kind, 0), command_seat(kind, 1), command_seat(kind, 2)}) {
        for (const char letter : all_letters()) {
          CAPTURE(kind);
          CAPTURE(letter);
          const auto bank = expected(seat, letter);
          const auto word = [&](char first) {
            return bank ? std::string(1, first) + "12 " + std::to_string(*bank) : std::string();
          };
          CHECK(told(line_command(drop1_rules, seat, letter, 12)) == word('F'));
          CHECK(told(line_command(hold1_rules, seat, letter, 12)) == word('H'));
        }
      }
    }
  }

  TEST_CASE("drop and hold on the conference hybrid, line by line") {
    for (int kind = 1; kind <= 4; ++kind) {
      for (const char letter : all_letters()) {
        const bool fits = letter == 'C' && kind != 4;
        CHECK(told(line_command(drop2_rules, talent(kind), letter, 3)) == (fits ? "F03 1" : ""));
        CHECK(told(line_command(drop2_rules, command_seat(kind, 1), letter, 3)) == "");
        CHECK(told(line_command(hold2_rules, talent(kind), letter, 3)) == (fits ? "H03 1" : ""));
        CHECK(told(line_command(hold2_rules, command_seat(kind, 1), letter, 3)) ==
              (fits ? "H03 1" : ""));
      }
    }
  }

  TEST_CASE("words that name no line") {
    for (int kind = 1; kind <= 4; ++kind) {
      CAPTURE(kind);
      const bool decides = kind == 4;
      for (const Seat& seat : {talent(kind), command_seat(kind, 0), command_seat(kind, 1)}) {
        CHECK(told(fixed_command(drop1_fixed, seat)) == (decides ? "F00 0" : ""));
        CHECK(told(fixed_command(hold1_fixed, seat)) == (decides ? "H00 0" : ""));
        CHECK(told(fixed_command(hold2_fixed, seat)) == (decides ? "H00 1" : ""));
      }
      CHECK(told(fixed_command(drop2_fixed, talent(kind))) == (decides ? "F00 1" : ""));
      CHECK(told(fixed_command(drop2_fixed, command_seat(kind, 1))) ==
            (decides ? "F00 1" : "P15 1"));
      CHECK(told(fixed_command(drop2_fixed, command_seat(kind, 2))) ==
            (decides ? "F00 1" : "O15 1"));
      CHECK(told(fixed_command(drop2_fixed, command_seat(kind, 0))) ==
            (decides ? "F00 1" : "O15 1"));
    }
  }

  TEST_CASE("a kind that nobody knows counts where kinds are only left out") {
    for (const int kind : {-1, 0, 5, 99}) {
      CHECK(main_row(talent(kind), 'N') == "N05 0");
      CHECK(main_row(command_seat(kind, 1), 'R') == "");
      CHECK(told(line_command(drop1_rules, talent(kind), 'N', 5)) == "F05 0");
      CHECK(told(fixed_command(drop1_fixed, talent(kind))) == "");
    }
  }
}

}  // namespace
}  // namespace lineweir::test

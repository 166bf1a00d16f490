#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/entry_fields.h"
#include "letters/letters.h"
#include "platform/database.h"

namespace lineweir {

// What the log knows of the caller with a telephone number.
struct CallerHistory {
  // As many rows as this are looked at, the newest.
  static constexpr int most_calls = 1000;

  int calls = 0;
  int on_air = 0;
  // Date and time at which the caller was last on air; empty if never.
  std::string last_on_air;
  // The newest that the log has of the fields that can be filled in; each may be empty.
  EntryTexts known;

  friend bool operator==(const CallerHistory&, const CallerHistory&) = default;
};

// The forms in which a number is looked up: its digits as they are, and with or without the country
// code 1. None for too few digits, or for one digit again and again, as 0000000 where nobody knows.
std::vector<std::string> number_forms(std::string_view number);

// Whether both are the number of one caller, however they are written.
bool same_number(std::string_view number, std::string_view other);

// In the console's letters. Nothing where the log doesn't know the number.
std::optional<CallerHistory> find_history(platform::Recordset& log, const Letters& letters,
                                          std::string_view number);

// "once", "3 times".
std::string times_in_words(int count);

// As the user reads it, in three short lines.
std::string history_text(const CallerHistory& history);

// In a few words, beside what else is known of the caller. Nothing is known of one who isn't in the
// log: then this is the first call.
std::string history_in_short(const std::optional<CallerHistory>& history);

// Whether the known text says more than the typed one, and nothing else: whoever has typed another
// one keeps it.
bool completes(std::string_view typed, std::string_view known);

}  // namespace lineweir

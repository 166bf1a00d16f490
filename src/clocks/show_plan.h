#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "base/fixed_text.h"

namespace lineweir {

inline constexpr int show_entry_count = 42;
inline constexpr int show_start_entry = 1;
inline constexpr int show_end_entry = 2;
inline constexpr int first_event_entry = 3;

// The plan's texts, numbered from 1. A number outside the plan is a Failure of number 9.
template <std::size_t Width>
class ShowEntryTexts {
 public:
  static constexpr std::size_t width = Width;

  FixedText<Width>& operator()(int entry) { return texts_[place(entry)]; }
  const FixedText<Width>& operator()(int entry) const { return texts_[place(entry)]; }

  friend bool operator==(const ShowEntryTexts&, const ShowEntryTexts&) = default;

 private:
  static std::size_t place(int entry) {
    if (entry < 1 || entry > show_entry_count) {
      throw Failure(failure_number::out_of_range, "Subscript out of range");
    }
    return static_cast<std::size_t>(entry - 1);
  }

  std::array<FixedText<Width>, show_entry_count> texts_;
};

// The plan of a show. Entry 1 is Show Start and entry 2 Show End, which have no text; the others
// are events in order, each with the time at which it ends. A time is "hh:mm:ss", or "xx:mm:ss" in
// a show that runs anew every hour.
struct ShowPlan {
  ShowEntryTexts<11> ShowTimes;
  ShowEntryTexts<20> ShowTexts;

  friend bool operator==(const ShowPlan&, const ShowPlan&) = default;
};

// The plan's file: 42 records of 31 bytes and nothing else. Record k begins at byte (k - 1) * 31.
//
//   offset 0   11 bytes   ShowTimes(k), padded with blanks on the right
//   offset 11  20 bytes   ShowTexts(k), padded with blanks on the right; blank in records 1 and 2
inline constexpr std::size_t show_record_size =
    decltype(ShowPlan::ShowTimes)::width + decltype(ShowPlan::ShowTexts)::width;
inline constexpr std::size_t show_file_size = show_entry_count * show_record_size;

std::string encode_show_plan(const ShowPlan& plan);

// Reads a plan as far as the bytes go: what is missing is blank, what is too much is passed over,
// and any byte is taken as the character that it is.
ShowPlan decode_show_plan(std::string_view bytes);

// Whether that is a plan's file, or the beginning of one, and nothing else: the times hold what is
// in times. A file that holds nothing isn't.
bool is_show_plan(std::string_view bytes);

// The number of entries of which the bytes hold at least the beginning.
int show_entries_held(std::string_view bytes);

// Moves the entry and all behind it one place on, so that the last is lost, and leaves it blank.
void insert_show_entry(ShowPlan& plan, int entry);

// Takes the entry out; all behind it move up, and the last is left blank.
void delete_show_entry(ShowPlan& plan, int entry);

}  // namespace lineweir

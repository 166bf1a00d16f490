#include "callerdata/entry_fit.h"

#include <algorithm>
#include <utility>

#include "base/telephone_number.h"
#include "base/text.h"

namespace lineweir {
namespace {

// Tells a number with its country's code from one without, and is dropped last.
constexpr char country_sign = '+';

// What people write between digits, with the no-break space and the dash of the sets of one byte.
constexpr std::string_view separators = " -()./,:_\xA0\x96";

bool is_separator(char c) { return separators.find(c) != std::string_view::npos; }

std::string without_separators(std::string_view text) {
  std::string bare(text);
  std::erase_if(bare, is_separator);
  return bare;
}

// Begins as a number does; an extension may follow it.
bool is_number(std::string_view text) {
  const std::string bare = without_separators(text);
  return !bare.empty() && (is_digit(bare.front()) || bare.front() == country_sign) &&
         std::ranges::count_if(bare, is_digit) >= least_digits_of_number;
}

EditedText without_separators(const EditedText& edited) {
  const auto before_caret = left_part(edited.text, static_cast<std::size_t>(edited.caret));
  return {without_separators(std::string_view(edited.text)),
          static_cast<int>(without_separators(before_caret).size())};
}

void drop_country_sign(EditedText& edited) {
  if (edited.text.front() != country_sign) return;
  edited.text.erase(0, 1);
  edited.caret = std::max(0, edited.caret - 1);
}

}  // namespace

EditedText fit_text(std::string_view before, EditedText edited, std::size_t room) {
  std::string& text = edited.text;
  if (text.size() <= room) return edited;
  // What was put in ends at the caret; behind it stands what stood there before.
  const std::size_t shorter = std::min(before.size(), text.size());
  const std::size_t behind_caret =
      text.size() - std::min(text.size(), static_cast<std::size_t>(edited.caret));
  std::size_t same_end = 0;
  while (same_end < std::min(shorter, behind_caret) &&
         before[before.size() - 1 - same_end] == text[text.size() - 1 - same_end]) {
    ++same_end;
  }
  std::size_t same_begin = 0;
  while (same_begin < shorter - same_end && before[same_begin] == text[same_begin]) ++same_begin;
  const std::size_t put_in_end = text.size() - same_end;
  const std::size_t left_out = std::min(text.size() - room, put_in_end - same_begin);
  edited.left_out = left_out > 0;
  const std::size_t cut = put_in_end - left_out;
  text.erase(cut, left_out);
  if (edited.caret > static_cast<int>(cut)) {
    edited.caret = std::max(static_cast<int>(cut), edited.caret - static_cast<int>(left_out));
  }
  return edited;
}

EditedText fit_number(std::string_view before, EditedText edited, std::size_t room) {
  if (edited.text.size() <= room || !is_number(edited.text)) {
    return fit_text(before, std::move(edited), room);
  }
  EditedText bare = without_separators(edited);
  if (bare.text.size() > room) drop_country_sign(bare);
  return fit_text(without_separators(before), std::move(bare), room);
}

std::string number_within(std::string_view text, std::size_t room) {
  if (text.size() <= room || !is_number(text)) return std::string(text);
  EditedText bare = without_separators(EditedText{std::string(text), 0});
  if (bare.text.size() > room) drop_country_sign(bare);
  return bare.text;
}

}  // namespace lineweir

#include "practice/practice_results.h"

#include <charconv>
#include <vector>

#include "base/text.h"

namespace lineweir::practice {
namespace {

constexpr std::size_t most_shows = 100;
constexpr std::string_view heading =
    "Level,Date,Played,Calls,Answered,OnAir,LongestWait,DeadAir,Dropped,GaveUp";

constexpr std::array numbers = {
    &Result::played,       &Result::calls,    &Result::answered, &Result::on_air,
    &Result::longest_wait, &Result::dead_air, &Result::dropped,  &Result::gave_up,
};

// What is better the less it is, and the more it is.
enum class Aim { Less, More, Whole };

struct RowRule {
  std::string_view name;
  int Result::*number;
  Aim aim;
  bool is_time;
};

constexpr std::array<RowRule, page_row_count> row_rules = {{
    {"Length of the show", &Result::played, Aim::Whole, true},
    {"Callers answered", &Result::answered, Aim::More, false},
    {"Callers on air", &Result::on_air, Aim::More, false},
    {"Longest wait", &Result::longest_wait, Aim::Less, true},
    {"Dead air between callers", &Result::dead_air, Aim::Less, true},
    {"Callers dropped", &Result::dropped, Aim::Less, false},
    {"Callers who gave up", &Result::gave_up, Aim::Less, false},
}};

std::vector<std::string_view> parted(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<int> whole_number(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size() || number < 0) return std::nullopt;
  return number;
}

std::optional<Result> parse_result(std::string_view line) {
  const auto fields = parted(line, ',');
  if (fields.size() != numbers.size() + 2) return std::nullopt;
  Result result{.level = std::string(fields[0]), .date = std::string(fields[1])};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto number = whole_number(fields[i + 2]);
    if (!number) return std::nullopt;
    result.*numbers[i] = *number;
  }
  return result;
}

std::string line_of(const Result& result) {
  std::string line = result.level + ',' + result.date;
  for (const auto number : numbers) line += ',' + std::to_string(result.*number);
  return line;
}

int whole_seconds(Moment time) {
  return static_cast<int>(std::chrono::round<std::chrono::seconds>(time).count());
}

std::string shown(const RowRule& rule, const Result& result) {
  const int number = result.*rule.number;
  if (!rule.is_time) {
    const bool of_all = rule.number == &Result::answered;
    return std::to_string(number) + (of_all ? " of " + std::to_string(result.calls) : "");
  }
  return minutes_text(number);
}

std::string verdict_of(const RowRule& rule, const Result& now, const Result& before) {
  if (rule.aim == Aim::Whole) return {};
  const int gain = now.*rule.number - before.*rule.number;
  if (gain == 0) return "the same";
  return (gain > 0) == (rule.aim == Aim::More) ? "better" : "worse";
}

}  // namespace

Result result_of(const Score& score, std::string_view level, std::string_view date, Moment played) {
  return {.level = std::string(level),
          .date = std::string(date),
          .played = whole_seconds(played),
          .calls = score.calls,
          .answered = score.answered,
          .on_air = score.on_air,
          .longest_wait = whole_seconds(score.longest_wait),
          .dead_air = whole_seconds(score.dead_air),
          .dropped = score.dropped,
          .gave_up = score.gave_up};
}

std::optional<Result> last_result(std::string_view text, std::string_view level) {
  std::optional<Result> last;
  for (const std::string_view line : parted(text, '\n')) {
    auto result = parse_result(line);
    if (result && result->level == level) last = std::move(result);
  }
  return last;
}

std::string with_result(std::string_view text, const Result& result) {
  std::vector<std::string> lines;
  for (const std::string_view line : parted(text, '\n')) {
    if (const auto kept = parse_result(line)) lines.push_back(line_of(*kept));
  }
  lines.push_back(line_of(result));
  const std::size_t first = lines.size() > most_shows ? lines.size() - most_shows : 0;
  std::string all = std::string(heading) + '\n';
  for (std::size_t i = first; i < lines.size(); ++i) all += lines[i] + '\n';
  return all;
}

std::array<PageRow, page_row_count> page_rows(const Result& now,
                                              const std::optional<Result>& before) {
  std::array<PageRow, page_row_count> rows;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const RowRule& rule = row_rules[i];
    rows[i] = {std::string(rule.name), shown(rule, now), before ? shown(rule, *before) : "",
               before ? verdict_of(rule, now, *before) : ""};
  }
  return rows;
}

std::string minutes_text(int seconds) {
  return std::to_string(seconds / 60) + ':' + zero_filled(seconds % 60, 2);
}

}  // namespace lineweir::practice

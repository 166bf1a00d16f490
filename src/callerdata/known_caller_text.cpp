#include "callerdata/known_caller_text.h"

#include <algorithm>
#include <array>

#include "base/iso_date.h"
#include "base/text.h"
#include "base/time_text.h"
#include "elements/control.h"

namespace lineweir {
namespace {

constexpr std::array<std::string_view, caller_flag_count> words = {"", "Regular", "Careful",
                                                                   "Barred"};

// A flag that no user has set has its "(admin)" already.
void append_in_brackets(std::string& text, const std::string& more) {
  if (more.empty()) return;
  text += more.front() == '(' ? " " + more : " (" + more + ")";
}

// "31.12.2026" with its parts in the order of the screen's dates.
std::string from_day_first(std::string_view text) {
  const auto first = text.find('.');
  const auto second = text.find('.', first + 1);
  if (first == std::string_view::npos || second == std::string_view::npos) return {};
  return std::string(text.substr(first + 1, second - first - 1)) + "/" +
         std::string(text.substr(0, first)) + "/" + std::string(text.substr(second + 1));
}

}  // namespace

std::string_view flag_word(CallerFlag flag) { return words[static_cast<std::size_t>(flag)]; }

int flag_color(CallerFlag flag) {
  constexpr std::array<int, caller_flag_count> colors = {color_white, 0x3A7A1F, 0x4DB7FF, 0x1C1CB7};
  return colors[static_cast<std::size_t>(flag)];
}

std::string flag_text(const CallerKnown& known) {
  std::string text(flag_word(known.flag));
  if (text.empty()) return text;
  if (!known.until.empty()) text += " until " + shown_day(known.until);
  if (!known.reason.empty()) text += ": " + known.reason;
  append_in_brackets(text, known.flagged_by);
  return text;
}

std::string flag_in_short(const CallerKnown& known) {
  std::string text(flag_word(known.flag));
  if (!text.empty() && !known.reason.empty()) text += ": " + known.reason;
  return text;
}

std::string calls_text(const CallerKnown& known) {
  const auto history = history_of(known);
  if (!history) return {};
  std::string text = history_text(*history);
  if (history->on_air == 0) return text.substr(0, text.find("\r\n"));
  const std::string& last = history->last_on_air;
  text = "On air " + times_in_words(history->on_air);
  if (!last.empty()) text += ", last " + last.substr(0, last.find(' '));
  return text;
}

std::string person_text(const CallerKnown& known) {
  return known.name.empty() || known.city.empty() ? known.name + known.city
                                                  : known.name + ", " + known.city;
}

std::optional<CallerHistory> history_of(const CallerKnown& known) {
  if (known.calls == 0) return std::nullopt;
  CallerHistory history;
  history.calls = known.calls;
  history.on_air = known.on_air;
  if (const auto last = iso_minute_of(known.last_on_air)) {
    history.last_on_air = minute_text(*last);
  }
  const auto known_as = [&](CallerField field) -> std::string& {
    return history.known[static_cast<std::size_t>(entry_of(field) - 1)];
  };
  known_as(CallerField::CallerName) = known.name;
  known_as(CallerField::City) = known.city;
  return history;
}

std::optional<CallerHistory> richer(const std::optional<CallerHistory>& log,
                                    const CallerKnown* known) {
  auto history = known == nullptr ? std::nullopt : history_of(*known);
  if (!history || (log && log->calls >= history->calls)) return log;
  for (std::size_t i = 0; log && i < history->known.size(); ++i) {
    if (history->known[i].empty()) history->known[i] = log->known[i];
  }
  return history;
}

std::string shown_day(std::string_view until) {
  const auto day = iso_date_of(until);
  return day ? date_text(*day) : std::string();
}

std::optional<platform::DateTime> typed_day(std::string_view text) {
  text = trimmed(text);
  if (const auto day = iso_date_of(text)) return day;
  const std::string day_first = from_day_first(text);
  // A time of day behind it means something else.
  if (text.find(' ') != std::string_view::npos) return std::nullopt;
  return date_of(day_first.empty() ? text : std::string_view(day_first));
}

}  // namespace lineweir

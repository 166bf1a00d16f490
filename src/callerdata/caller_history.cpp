#include "callerdata/caller_history.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/names.h"
#include "base/telephone_number.h"
#include "base/text.h"
#include "callerdata/entry_fit.h"
#include "callerdata/log_places.h"
#include "callerdata/log_text.h"

namespace lineweir {
namespace {

constexpr std::size_t digits_without_country_code = 10;

struct KnownCall {
  platform::RowId row = 0;
  // Its date in a form that can be put in order.
  std::string day;
  std::string date;
  std::string placed_on_air;
  EntryTexts known;
};

std::vector<std::size_t> entries_to_fill_in() {
  std::vector<std::size_t> entries;
  for (std::size_t i = 0; i < entry_fields.size(); ++i) {
    if (!entry_fields[i].filled_in_as.empty()) entries.push_back(i);
  }
  return entries;
}

std::vector<KnownCall> find_calls(platform::Recordset& log, const Letters& letters,
                                  std::string_view number) {
  const std::vector<std::size_t> entries = entries_to_fill_in();
  const LogPlaces places = require_log_columns(log.fields());
  std::vector<int> columns = {places.of(CallerField::CallDate),
                              places.of(CallerField::TimePlacedOnAir)};
  for (const std::size_t entry : entries) {
    columns.push_back(places.of(entry_fields[entry].field));
  }
  std::vector<KnownCall> calls;
  for (const std::string& form : number_forms(number)) {
    log.find_number(places.of(CallerField::PhoneNumber), form, CallerHistory::most_calls, columns,
                    [&](platform::RowId row, auto values) {
                      const auto text = [&](std::size_t i) {
                        return std::string(trimmed(letters.from_utf8(values[i])));
                      };
                      KnownCall call{row, {}, text(0), text(1), {}};
                      append_sort_key(call.day, SortKind::Date, values[0]);
                      for (std::size_t i = 0; i < entries.size(); ++i) {
                        call.known[entries[i]] = text(2 + i);
                      }
                      calls.push_back(std::move(call));
                    });
  }
  // Calls that were brought in from another log may be older than those in front of them.
  std::ranges::sort(calls, std::greater(),
                    [](const KnownCall& call) { return std::pair(call.day, call.row); });
  return calls;
}

}  // namespace

std::string times_in_words(int count) {
  if (count == 1) return "once";
  // As many as are looked at in a log; a server counts on.
  const bool all = count != CallerHistory::most_calls;
  return std::to_string(count) + (all ? " times" : " times or more");
}

bool same_number(std::string_view number, std::string_view other) {
  const std::string key = telephone_key(number);
  return !key.empty() && key == telephone_key(other);
}

std::vector<std::string> number_forms(std::string_view number) {
  std::string key = telephone_key(number);
  if (key.empty()) return {};
  std::vector<std::string> forms = {key};
  const bool lacks_country_code = key.size() == digits_without_country_code;
  if (lacks_country_code) forms.push_back("1" + key);
  if (forms.back().size() > digits_without_country_code) forms.push_back("00" + forms.back());
  // As it is typed it is looked for first.
  const auto typed = std::ranges::find(forms, digits_of(number));
  if (typed != forms.end()) std::rotate(forms.begin(), typed, typed + 1);
  return forms;
}

std::optional<CallerHistory> find_history(platform::Recordset& log, const Letters& letters,
                                          std::string_view number) {
  const std::vector<KnownCall> calls = find_calls(log, letters, number);
  if (calls.empty()) return std::nullopt;
  CallerHistory history;
  history.calls = std::min(static_cast<int>(calls.size()), CallerHistory::most_calls);
  for (const KnownCall& call : calls) {
    for (std::size_t i = 0; i < call.known.size(); ++i) {
      if (history.known[i].empty()) history.known[i] = call.known[i];
    }
    if (call.placed_on_air.empty()) continue;
    ++history.on_air;
    if (history.last_on_air.empty()) history.last_on_air = call.date + " " + call.placed_on_air;
  }
  return history;
}

std::string history_text(const CallerHistory& history) {
  std::string text = "Called " + times_in_words(history.calls);
  if (history.on_air == 0) {
    text += ", never on air";
  } else {
    text += ", on air " + times_in_words(history.on_air) + "\r\nLast on air " + history.last_on_air;
  }
  std::string who;
  for (const std::string& known : history.known) {
    if (!known.empty()) who += (who.empty() ? "" : ", ") + known;
  }
  return who.empty() ? text : text + "\r\n" + who;
}

std::string history_in_short(const std::optional<CallerHistory>& history) {
  if (!history) return "first call";
  if (history->on_air == 0)
    return "called " + times_in_words(history->calls) + " before, never on air";
  const std::string& last = history->last_on_air;
  return "on air " + times_in_words(history->on_air) + " before, last " +
         last.substr(0, last.find(' '));
}

bool completes(std::string_view typed, std::string_view known) {
  const auto begun = trimmed(typed);
  return begun.size() < known.size() && same_name(begun, left_part(known, begun.size()));
}

}  // namespace lineweir

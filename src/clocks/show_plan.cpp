#include "clocks/show_plan.h"

#include <algorithm>

namespace lineweir {
namespace {

constexpr std::size_t time_width = decltype(ShowPlan::ShowTimes)::width;
constexpr std::size_t text_width = decltype(ShowPlan::ShowTexts)::width;

// A piece of the bytes, shorter or empty where they end before it does.
std::string_view piece(std::string_view bytes, std::size_t offset, std::size_t length) {
  return offset < bytes.size() ? bytes.substr(offset, length) : std::string_view();
}

}  // namespace

std::string encode_show_plan(const ShowPlan& plan) {
  std::string bytes;
  bytes.reserve(show_file_size);
  for (int entry = 1; entry <= show_entry_count; ++entry) {
    bytes += plan.ShowTimes(entry).text();
    if (entry < first_event_entry) {
      bytes.append(text_width, ' ');
    } else {
      bytes += plan.ShowTexts(entry).text();
    }
  }
  return bytes;
}

ShowPlan decode_show_plan(std::string_view bytes) {
  ShowPlan plan;
  std::size_t offset = 0;
  for (int entry = 1; entry <= show_entry_count; ++entry) {
    plan.ShowTimes(entry) = piece(bytes, offset, time_width);
    plan.ShowTexts(entry) = piece(bytes, offset + time_width, text_width);
    offset += show_record_size;
  }
  return plan;
}

bool is_show_plan(std::string_view bytes) {
  // What was never written is byte 0 in the plans of some programs.
  constexpr std::string_view time_characters("0123456789:xX \0", 15);
  if (bytes.empty() || bytes.size() > show_file_size) return false;
  for (std::size_t offset = 0; offset < bytes.size(); offset += show_record_size) {
    const std::string_view time = piece(bytes, offset, time_width);
    if (time.find_first_not_of(time_characters) != std::string_view::npos) return false;
  }
  return true;
}

int show_entries_held(std::string_view bytes) {
  const std::size_t begun = (bytes.size() + show_record_size - 1) / show_record_size;
  return static_cast<int>(std::min<std::size_t>(begun, show_entry_count));
}

void insert_show_entry(ShowPlan& plan, int entry) {
  for (int i = show_entry_count; i > entry; --i) {
    plan.ShowTimes(i) = plan.ShowTimes(i - 1);
    plan.ShowTexts(i) = plan.ShowTexts(i - 1);
  }
  plan.ShowTimes(entry) = "";
  plan.ShowTexts(entry) = "";
}

void delete_show_entry(ShowPlan& plan, int entry) {
  for (int i = entry; i < show_entry_count; ++i) {
    plan.ShowTimes(i) = plan.ShowTimes(i + 1);
    plan.ShowTexts(i) = plan.ShowTexts(i + 1);
  }
  plan.ShowTimes(show_entry_count) = "";
  plan.ShowTexts(show_entry_count) = "";
}

}  // namespace lineweir

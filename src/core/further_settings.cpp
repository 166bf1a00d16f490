#include "core/further_settings.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/names.h"
#include "base/text.h"
#include "state/console_state.h"

namespace lineweir {
namespace {

struct Choice {
  std::string_view name;
  MenuItem MainForm::*item;
};

constexpr std::array choices = {
    Choice{"UrgentSound", &MainForm::UrgentSound},
};

constexpr std::string_view on = "1";
constexpr std::string_view off = "0";

std::vector<std::string> lines_of(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string_view name_of(std::string_view line) {
  return trimmed(line.substr(0, std::min(line.find('='), line.size())));
}

std::string_view value_of(std::string_view line) {
  const std::size_t equals = line.find('=');
  return equals == std::string_view::npos ? std::string_view() : trimmed(line.substr(equals + 1));
}

std::vector<std::string>::iterator find_line(std::vector<std::string>& lines,
                                             std::string_view name) {
  return std::ranges::find_if(
      lines, [&](const std::string& line) { return same_name(name_of(line), name); });
}

// In the place of the first that has the name; a file that was edited by hand may have several, of
// which the last one holds.
void set_line(std::vector<std::string>& lines, std::string_view name, std::string_view value) {
  auto line = find_line(lines, name);
  if (line == lines.end()) line = lines.insert(line, std::string());
  *line = std::string(name).append("=").append(value);
  lines.erase(
      std::remove_if(line + 1, lines.end(),
                     [&](const std::string& other) { return same_name(name_of(other), name); }),
      lines.end());
}

std::string text_of(const std::vector<std::string>& lines) {
  std::string whole;
  for (const std::string& line : lines) whole += line + "\n";
  return whole;
}

}  // namespace

void apply_further_settings(ConsoleState& state, std::string_view text) {
  for (const std::string& line : lines_of(text)) {
    for (const Choice& choice : choices) {
      if (same_name(name_of(line), choice.name)) {
        (state.Lineweir.*choice.item).checked = value_of(line) == on;
      }
    }
  }
}

std::string with_further_settings(const ConsoleState& state, std::string_view text) {
  std::vector<std::string> lines = lines_of(text);
  for (const Choice& choice : choices) {
    const bool checked = (state.Lineweir.*choice.item).checked;
    // What isn't there is as at a first start.
    if (checked || find_line(lines, choice.name) != lines.end()) {
      set_line(lines, choice.name, checked ? on : off);
    }
  }
  return text_of(lines);
}

std::vector<FurtherSetting> further_settings_of(std::string_view text) {
  std::vector<FurtherSetting> settings;
  for (const std::string& line : lines_of(text)) {
    if (name_of(line).empty()) continue;
    settings.push_back({std::string(name_of(line)), std::string(value_of(line))});
  }
  return settings;
}

std::string with_further_setting(std::string_view text, std::string_view name,
                                 std::string_view value) {
  std::vector<std::string> lines = lines_of(text);
  if (value.empty()) {
    std::erase_if(lines, [&](const std::string& line) { return same_name(name_of(line), name); });
  } else {
    set_line(lines, name, value);
  }
  return text_of(lines);
}

}  // namespace lineweir

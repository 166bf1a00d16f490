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
    std::string line(choice.name);
    line.append("=").append(checked ? on : off);
    const auto known = std::ranges::find_if(
        lines, [&](const std::string& other) { return same_name(name_of(other), choice.name); });
    if (known != lines.end()) {
      *known = line;
    } else if (checked) {
      lines.push_back(line);
    }
  }
  std::string whole;
  for (const std::string& line : lines) whole += line + "\n";
  return whole;
}

}  // namespace lineweir

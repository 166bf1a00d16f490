#include "serverd/group_settings.h"

#include <algorithm>

#include "letters/utf8.h"

namespace lineweir::serverd {

namespace {

constexpr int last_group = 250;
constexpr int longest_group_name = 40;
constexpr int longest_line_name = 10;
constexpr int longest_phone_name = 20;
constexpr std::size_t most_phones = 64;
constexpr double most_calls_per_minute = 600;

bool is_longer(const std::string& text, int size) {
  return cut_to_size(text, size).size() < text.size();
}

std::string at_most(int size) { return "at most " + std::to_string(size) + " characters"; }

void read_name(ConfigurationTable& table, server::GroupOptions& group) {
  const std::string expected = "a name of " + at_most(longest_group_name);
  group.name = table.text("name", expected).value_or("Studio " + std::to_string(group.number));
  if (is_longer(group.name, longest_group_name)) table.refuse("name", expected);
}

void read_lines(ConfigurationTable& table, server::GroupOptions& group) {
  group.lines = table.number("lines", 10, 20).value_or(group.lines);
  if (group.lines != 10 && group.lines != 20) {
    table.refuse("lines", "10 or 20, not " + std::to_string(group.lines));
  }
  const std::string names = "an array of at most " + std::to_string(group.lines) + " names of " +
                            at_most(longest_line_name);
  table.each_text("line_names", names, [&](const std::string& name, const toml::node& place) {
    if (is_longer(name, longest_line_name) ||
        group.line_names.size() == static_cast<std::size_t>(group.lines)) {
      table.refuse("line_names", place, names);
    }
    group.line_names.push_back(name);
  });
  table.each_number("missing_lines", 1, group.lines, [&](int line, const toml::node& place) {
    if (std::ranges::find(group.missing_lines, line) != group.missing_lines.end()) {
      table.refuse("missing_lines", place, "each line once");
    }
    group.missing_lines.push_back(line);
  });
}

void read_exchange(ConfigurationTable& table, const std::filesystem::path& folder,
                   server::GroupOptions& group) {
  constexpr std::string_view expected = "\"simulated\", or \"box:\" and a device";
  group.exchange = table.text("exchange", expected).value_or(group.exchange);
  const bool is_box =
      group.exchange.starts_with(exchange_at_box) && group.exchange.size() > exchange_at_box.size();
  if (is_box) {
    const std::filesystem::path device = folder / group.exchange.substr(exchange_at_box.size());
    group.exchange = std::string(exchange_at_box) + device.lexically_normal().string();
  } else if (group.exchange != "simulated") {
    table.refuse("exchange", std::string(expected) + ", not \"" + group.exchange + "\"");
  }
  group.calls_per_minute =
      table.fraction("calls_per_minute", 0, most_calls_per_minute).value_or(group.calls_per_minute);
  if (is_box && group.calls_per_minute > 0) {
    table.refuse("calls_per_minute", "0, since callers of a box are real");
  }
}

}  // namespace

server::GroupOptions read_group(ConfigurationTable& table, const std::filesystem::path& folder) {
  server::GroupOptions group;
  const auto number = table.number("number", 1, last_group);
  if (!number)
    table.refuse("number", "the group's number, from 1 to " + std::to_string(last_group));
  group.number = *number;
  read_name(table, group);
  read_lines(table, group);
  group.kind = table.number("kind", 1, 4).value_or(group.kind);
  read_exchange(table, folder, group);
  group.hybrids = table.two_flags("hybrids").value_or(group.hybrids);
  group.positions = table.two_flags("positions").value_or(group.positions);

  const std::string phones = "an array of at most " + std::to_string(most_phones) + " names of " +
                             at_most(longest_phone_name);
  table.each_text("phone_names", phones, [&](const std::string& name, const toml::node& place) {
    if (is_longer(name, longest_phone_name) || group.phone_names.size() == most_phones) {
      table.refuse("phone_names", place, phones);
    }
    group.phone_names.push_back(name);
  });
  return group;
}

}  // namespace lineweir::serverd

#include "serverd/configuration_table.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "letters/utf8.h"
#include "serverd/configuration.h"

namespace lineweir::serverd {

namespace {

// So much of a wrong value is shown.
constexpr int longest_shown = 40;

int line_of(const toml::source_region& source) { return static_cast<int>(source.begin.line); }

bool is_control(char32_t point) { return point < 0x20 || (point >= 0x7F && point < 0xA0); }

bool is_plain(std::string_view text) {
  while (!text.empty()) {
    const auto point = leading_point(text);
    if (!point || is_control(point->point)) return false;
    text.remove_prefix(point->size);
  }
  return true;
}

std::string shown(const toml::node& node) {
  if (const auto* const text = node.as_string()) {
    const std::string& value = text->get();
    if (!is_plain(value)) return "a text with control characters";
    const std::string_view cut = cut_to_size(value, longest_shown);
    return "\"" + std::string(cut) + (cut.size() < value.size() ? "…" : "") + "\"";
  }
  if (node.is_table()) return "a table";
  if (node.is_array()) return "an array";
  std::ostringstream value;
  node.visit([&value](const auto& each) {
    if constexpr (toml::is_value<decltype(each)>) value << each;
  });
  return value.str();
}

std::string between(std::string_view what, const std::string& least, const std::string& most) {
  return std::string(what) + " from " + least + " to " + most;
}

std::optional<int> number_of(const toml::node& node, int least, int most) {
  const auto* const number = node.as_integer();
  if (number == nullptr || number->get() < least || number->get() > most) return std::nullopt;
  return static_cast<int>(number->get());
}

std::optional<std::string> text_of(const toml::node& node) {
  const auto* const text = node.as_string();
  if (text == nullptr || text->get().empty() || !is_plain(text->get())) return std::nullopt;
  return text->get();
}

}  // namespace

std::optional<std::string> ConfigurationTable::text(std::string_view key,
                                                    std::string_view expected) {
  const toml::node* const node = find(key);
  if (node == nullptr) return std::nullopt;
  const auto text = text_of(*node);
  if (!text) refuse(key, *node, expected);
  return text;
}

std::optional<int> ConfigurationTable::number(std::string_view key, int least, int most) {
  const toml::node* const node = find(key);
  if (node == nullptr) return std::nullopt;
  const auto number = number_of(*node, least, most);
  if (!number) {
    refuse(key, *node, between("a whole number", std::to_string(least), std::to_string(most)));
  }
  return number;
}

std::optional<double> ConfigurationTable::fraction(std::string_view key, double least,
                                                   double most) {
  const toml::node* const node = find(key);
  if (node == nullptr) return std::nullopt;
  const auto number = node->is_number() ? node->value<double>() : std::nullopt;
  // Also one that is no number at all isn't between them.
  if (!number || !(*number >= least && *number <= most)) {
    std::ostringstream limits;
    limits << "a number from " << least << " to " << most;
    refuse(key, *node, limits.str());
  }
  return number;
}

std::optional<bool> ConfigurationTable::flag(std::string_view key) {
  const toml::node* const node = find(key);
  if (node == nullptr) return std::nullopt;
  if (!node->is_boolean()) refuse(key, *node, "true or false");
  return node->as_boolean()->get();
}

std::optional<std::array<bool, 2>> ConfigurationTable::two_flags(std::string_view key) {
  constexpr std::string_view expected = "two of true or false, such as [true, false]";
  const toml::array* const list = array(key, expected);
  if (list == nullptr) return std::nullopt;
  std::array<bool, 2> flags{};
  if (list->size() != flags.size()) refuse(key, *list, expected);
  for (std::size_t i = 0; i < flags.size(); ++i) {
    const toml::node& node = (*list)[i];
    if (!node.is_boolean()) refuse(key, node, expected);
    flags[i] = node.as_boolean()->get();
  }
  return flags;
}

std::optional<ConfigurationTable> ConfigurationTable::table(std::string_view key) {
  const toml::node* const node = find(key);
  if (node == nullptr) return std::nullopt;
  if (!node->is_table()) refuse(key, *node, "a table, [" + std::string(key) + "]");
  return ConfigurationTable(*node->as_table(), file_, prefix_ + std::string(key) + ".");
}

bool ConfigurationTable::each_text(std::string_view key, std::string_view expected,
                                   const TakeText& take) {
  const toml::array* const list = array(key, expected);
  if (list == nullptr) return false;
  for (const toml::node& node : *list) {
    const auto text = text_of(node);
    if (!text) refuse(key, node, expected);
    take(*text, node);
  }
  return true;
}

bool ConfigurationTable::each_number(std::string_view key, int least, int most,
                                     const TakeNumber& take) {
  const std::string expected =
      between("an array of whole numbers", std::to_string(least), std::to_string(most));
  const toml::array* const list = array(key, expected);
  if (list == nullptr) return false;
  for (const toml::node& node : *list) {
    const auto number = number_of(node, least, most);
    if (!number) refuse(key, node, expected);
    take(*number, node);
  }
  return true;
}

void ConfigurationTable::each_table(std::string_view key,
                                    const std::function<void(ConfigurationTable& each)>& take) {
  const std::string expected = "tables, [[" + std::string(key) + "]]";
  const toml::array* const list = array(key, expected);
  if (list == nullptr) return;
  for (const toml::node& node : *list) {
    if (!node.is_table()) refuse(key, node, expected);
    ConfigurationTable each(*node.as_table(), file_, prefix_ + std::string(key) + ".");
    take(each);
    each.refuse_unknown();
  }
}

int ConfigurationTable::line(std::string_view key) const {
  const toml::node* const node = table_.get(key);
  const int there = line_of(node != nullptr ? node->source() : table_.source());
  // The table of the whole file stands nowhere.
  return std::max(there, 1);
}

void ConfigurationTable::refuse(std::string_view key, std::string_view expected) const {
  throw ConfigurationError(
      configuration_error(file_, line(key), prefix_ + std::string(key), std::string(expected)));
}

void ConfigurationTable::refuse(std::string_view key, const toml::node& place,
                                std::string_view expected) const {
  throw ConfigurationError(configuration_error(file_, line_of(place.source()),
                                               prefix_ + std::string(key),
                                               std::string(expected) + ", not " + shown(place)));
}

void ConfigurationTable::refuse_unknown() const {
  for (const auto& [key, node] : table_) {
    if (std::ranges::find(known_, key.str()) != known_.end()) continue;
    std::string names;
    for (const std::string& name : known_) names += (names.empty() ? "" : ", ") + name;
    const std::string name = is_plain(key.str()) ? std::string(key.str()) : "a key";
    throw ConfigurationError(configuration_error(file_, line_of(key.source()), prefix_ + name,
                                                 "one of the keys " + names));
  }
}

const toml::node* ConfigurationTable::find(std::string_view key) {
  known_.emplace_back(key);
  return table_.get(key);
}

const toml::array* ConfigurationTable::array(std::string_view key, std::string_view expected) {
  const toml::node* const node = find(key);
  if (node == nullptr) return nullptr;
  if (!node->is_array()) refuse(key, *node, expected);
  return node->as_array();
}

}  // namespace lineweir::serverd

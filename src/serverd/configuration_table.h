#pragma once

#include <toml++/toml.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::serverd {

// A table of a configuration that is being read. What was asked for is known; what wasn't is
// refused at the end. Every refusal is a ConfigurationError.
class ConfigurationTable {
 public:
  // `prefix` stands in front of the names of its keys: "group." or nothing.
  ConfigurationTable(const toml::table& table, std::string file, std::string prefix)
      : table_(table), file_(std::move(file)), prefix_(std::move(prefix)) {}

  // Each is nothing where the key is left out. Texts are not empty and without control characters.
  std::optional<std::string> text(std::string_view key, std::string_view expected);
  std::optional<int> number(std::string_view key, int least, int most);
  std::optional<double> fraction(std::string_view key, double least, double most);
  std::optional<bool> flag(std::string_view key);
  std::optional<std::array<bool, 2>> two_flags(std::string_view key);
  std::optional<ConfigurationTable> table(std::string_view key);

  // Tells each element of an array with its place in the file. Whether the key is there.
  using TakeText = std::function<void(const std::string& text, const toml::node& place)>;
  bool each_text(std::string_view key, std::string_view expected, const TakeText& take);
  using TakeNumber = std::function<void(int number, const toml::node& place)>;
  bool each_number(std::string_view key, int least, int most, const TakeNumber& take);
  // The tables of an array: "[[group]]".
  void each_table(std::string_view key, const std::function<void(ConfigurationTable& each)>& take);

  // Where the key is, or the table that should have it.
  int line(std::string_view key) const;

  // What stands at the key, or at a place in it, is not what was expected.
  [[noreturn]] void refuse(std::string_view key, std::string_view expected) const;
  [[noreturn]] void refuse(std::string_view key, const toml::node& place,
                           std::string_view expected) const;
  void refuse_unknown() const;

 private:
  const toml::node* find(std::string_view key);
  const toml::array* array(std::string_view key, std::string_view expected);

  const toml::table& table_;
  std::string file_;
  std::string prefix_;
  std::vector<std::string> known_;
};

}  // namespace lineweir::serverd

#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "letters/code_pages.h"

namespace lineweir {

// What the words behind the program's name ask for.
struct CommandLine {
  // The console's own argument, or empty.
  std::string argument;
  // The set of the console's texts.
  const CodePage* code_page = &default_code_page();
  bool help = false;
  bool version = false;
  bool diagnose = false;
  // A console to practise on, in place of the real one.
  bool practice = false;
  // What can't be done, as a line for the user; empty where all can.
  std::string problem;
  // The first option that isn't known, as such a line. It may be one of Qt's, which are known only
  // when Qt has taken them off.
  std::string unknown_option;
};

extern const char* const usage_text;
extern const char* const no_display_text;
extern const char* const dead_display_text;

// Whether the words and the variables of the environment name a display, or a platform of Qt that
// needs none.
bool may_have_windows(const std::vector<std::string>& words,
                      const std::function<bool(const char* name)>& is_set);

// Without a word about it the set is that of the locale's language.
CommandLine parse_command_line(const std::vector<std::string>& words, std::string_view locale);

// The locale of the workstation's letters, such as "pl_PL.UTF-8".
std::string locale_of_letters();

}  // namespace lineweir

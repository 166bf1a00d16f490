#pragma once

#include <string_view>

#include "letters/code_page_tables.h"

namespace lineweir {

// By its name, in any case: "windows-1250", also "cp1250" and "1250". Null for any other text.
const CodePage* find_code_page(std::string_view name);

// Of Western European languages.
const CodePage& default_code_page();

// The set in which Windows writes the language of a locale such as "pl_PL.UTF-8" or
// "sr_RS@latin"; the default one for a language that has none.
const CodePage& code_page_of_locale(std::string_view locale);

}  // namespace lineweir

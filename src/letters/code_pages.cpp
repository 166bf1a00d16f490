#include "letters/code_pages.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace lineweir {
namespace {

constexpr std::string_view western = "windows-1252";
constexpr std::string_view latin = "latin";
constexpr std::string_view cyrillic = "cyrillic";

struct LanguageRow {
  std::string_view language;
  // Empty for any.
  std::string_view territory;
  std::string_view script;
  std::string_view code_page;
};

// The first row that fits decides.
constexpr std::array language_rows = {
    LanguageRow{"sr", "", latin, "windows-1250"},
    LanguageRow{"bs", "", cyrillic, "windows-1251"},
    LanguageRow{"az", "", cyrillic, "windows-1251"},
    LanguageRow{"uz", "", cyrillic, "windows-1251"},
    LanguageRow{"az", "IR", "", "windows-1256"},
    LanguageRow{"ku", "TR", "", "windows-1254"},
    LanguageRow{"pa", "PK", "", "windows-1256"},
    LanguageRow{"bs", "", "", "windows-1250"},
    LanguageRow{"cs", "", "", "windows-1250"},
    LanguageRow{"csb", "", "", "windows-1250"},
    LanguageRow{"dsb", "", "", "windows-1250"},
    LanguageRow{"hr", "", "", "windows-1250"},
    LanguageRow{"hsb", "", "", "windows-1250"},
    LanguageRow{"hu", "", "", "windows-1250"},
    LanguageRow{"pl", "", "", "windows-1250"},
    LanguageRow{"ro", "", "", "windows-1250"},
    LanguageRow{"sh", "", "", "windows-1250"},
    LanguageRow{"sk", "", "", "windows-1250"},
    LanguageRow{"sl", "", "", "windows-1250"},
    LanguageRow{"sq", "", "", "windows-1250"},
    LanguageRow{"szl", "", "", "windows-1250"},
    LanguageRow{"tk", "", "", "windows-1250"},
    LanguageRow{"ba", "", "", "windows-1251"},
    LanguageRow{"be", "", "", "windows-1251"},
    LanguageRow{"bg", "", "", "windows-1251"},
    LanguageRow{"cv", "", "", "windows-1251"},
    LanguageRow{"kk", "", "", "windows-1251"},
    LanguageRow{"ky", "", "", "windows-1251"},
    LanguageRow{"mk", "", "", "windows-1251"},
    LanguageRow{"mn", "", "", "windows-1251"},
    LanguageRow{"os", "", "", "windows-1251"},
    LanguageRow{"ru", "", "", "windows-1251"},
    LanguageRow{"sah", "", "", "windows-1251"},
    LanguageRow{"sr", "", "", "windows-1251"},
    LanguageRow{"tg", "", "", "windows-1251"},
    LanguageRow{"tt", "", "", "windows-1251"},
    LanguageRow{"uk", "", "", "windows-1251"},
    LanguageRow{"el", "", "", "windows-1253"},
    LanguageRow{"az", "", "", "windows-1254"},
    LanguageRow{"crh", "", "", "windows-1254"},
    LanguageRow{"tr", "", "", "windows-1254"},
    LanguageRow{"uz", "", "", "windows-1254"},
    LanguageRow{"he", "", "", "windows-1255"},
    LanguageRow{"iw", "", "", "windows-1255"},
    LanguageRow{"yi", "", "", "windows-1255"},
    LanguageRow{"ar", "", "", "windows-1256"},
    LanguageRow{"ckb", "", "", "windows-1256"},
    LanguageRow{"fa", "", "", "windows-1256"},
    LanguageRow{"ku", "", "", "windows-1256"},
    LanguageRow{"ps", "", "", "windows-1256"},
    LanguageRow{"sd", "", "", "windows-1256"},
    LanguageRow{"ug", "", "", "windows-1256"},
    LanguageRow{"ur", "", "", "windows-1256"},
    LanguageRow{"et", "", "", "windows-1257"},
    LanguageRow{"lt", "", "", "windows-1257"},
    LanguageRow{"ltg", "", "", "windows-1257"},
    LanguageRow{"lv", "", "", "windows-1257"},
    LanguageRow{"sgs", "", "", "windows-1257"},
    LanguageRow{"vi", "", "", "windows-1258"},
};

std::string lower_case(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return lower;
}

// The part behind the mark, which is taken off the text.
std::string_view cut_behind(std::string_view& text, std::string_view marks) {
  const auto at = text.find_first_of(marks);
  if (at == std::string_view::npos) return {};
  const auto behind = text.substr(at + 1);
  text = text.substr(0, at);
  return behind;
}

std::string_view script_named(std::string_view name) {
  const std::string lower = lower_case(name);
  if (lower == "latn" || lower == latin) return latin;
  if (lower == "cyrl" || lower == cyrillic) return cyrillic;
  return {};
}

bool is_script_code(std::string_view part) { return part.size() == 4; }

}  // namespace

const CodePage* find_code_page(std::string_view name) {
  const std::string lower = lower_case(name);
  for (const CodePage& page : code_pages) {
    const auto number = page.name.substr(page.name.find('-') + 1);
    for (const std::string_view prefix : {"windows-", "windows", "cp", ""}) {
      if (lower == std::string(prefix) + std::string(number)) return &page;
    }
  }
  return nullptr;
}

const CodePage& default_code_page() { return *find_code_page(western); }

const CodePage& code_page_of_locale(std::string_view locale) {
  std::string_view script = script_named(cut_behind(locale, "@"));
  cut_behind(locale, ".");
  std::string_view territory = cut_behind(locale, "_-");
  // "sr_Latn_RS".
  std::string_view first = territory;
  const auto behind_script = cut_behind(first, "_-");
  if (is_script_code(first)) {
    script = script_named(first);
    territory = behind_script;
  }
  const std::string language = lower_case(locale);
  const auto fits = [&](const LanguageRow& row) {
    return row.language == language && (row.territory.empty() || row.territory == territory) &&
           (row.script.empty() || row.script == script);
  };
  const auto found = std::ranges::find_if(language_rows, fits);
  return found == language_rows.end() ? default_code_page() : *find_code_page(found->code_page);
}

}  // namespace lineweir

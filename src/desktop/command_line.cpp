#include "desktop/command_line.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace lineweir {
namespace {

constexpr std::string_view charset_option = "--charset";

// The value of the option at the word, from behind "=" or from the next word, which is passed over.
std::optional<std::string> charset_at(const std::vector<std::string>& words, std::size_t& at) {
  const std::string_view word = words[at];
  if (!word.starts_with(charset_option)) return std::nullopt;
  const std::string_view behind = word.substr(charset_option.size());
  if (behind.starts_with('=')) return std::string(behind.substr(1));
  if (!behind.empty()) return std::nullopt;
  return at + 1 < words.size() ? words[++at] : std::string();
}

}  // namespace

const char* const usage_text =
    "Usage: lineweir [--charset SET] [--practice] [--diagnose] [D|E]\n"
    "The operator's console of a talk show's telephones.\n"
    "\n"
    "  D               write the trace to LWDebug.txt\n"
    "  E               let the line buttons act on lines that other equipment has taken\n"
    "  --charset SET   the character set of all texts, windows-1250 to windows-1258;\n"
    "                  without it the one of the locale's language\n"
    "  --diagnose      say what the console finds here, and what to do where it lacks something\n"
    "  --practice      a show to practise on: simulated callers, and nothing of it reaches\n"
    "                  the real lines, log or settings\n"
    "  --version       say which version this is\n"
    "  --help          say this\n";

const char* const no_display_text =
    "lineweir: there is no display, neither DISPLAY nor WAYLAND_DISPLAY is set; start it in a "
    "desktop session. lineweir --diagnose tells more.\n";

const char* const dead_display_text =
    "lineweir: the display that DISPLAY or WAYLAND_DISPLAY names doesn't answer; start it in a "
    "desktop session. lineweir --diagnose tells more.\n";

bool may_have_windows(const std::vector<std::string>& words,
                      const std::function<bool(const char* name)>& is_set) {
  const auto names_platform = [](std::string_view word) {
    return word.starts_with("-platform") || word.starts_with("--platform");
  };
  return is_set("DISPLAY") || is_set("WAYLAND_DISPLAY") || is_set("QT_QPA_PLATFORM") ||
         std::any_of(words.begin(), words.end(), names_platform);
}

CommandLine parse_command_line(const std::vector<std::string>& words, std::string_view locale) {
  CommandLine line;
  line.code_page = &code_page_of_locale(locale);
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--help" || words[i] == "-h") {
      line.help = true;
    } else if (words[i] == "--version") {
      line.version = true;
    } else if (words[i] == "--diagnose") {
      line.diagnose = true;
    } else if (words[i] == "--practice") {
      line.practice = true;
    } else if (const auto charset = charset_at(words, i)) {
      const CodePage* page = find_code_page(*charset);
      if (page != nullptr) {
        line.code_page = page;
      } else {
        line.problem = "lineweir: no such character set: " + *charset + "\n";
      }
    } else if (words[i].starts_with("--")) {
      if (line.unknown_option.empty()) {
        line.unknown_option =
            "lineweir: there is no option " + words[i] + "; lineweir --help lists them\n";
      }
    } else if (line.argument.empty()) {
      line.argument = words[i];
    }
  }
  return line;
}

std::string locale_of_letters() {
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

}  // namespace lineweir

#include "driver/interpreter.h"

#include <fstream>

#include "driver/commands.h"
#include "driver/refusal.h"
#include "driver/words.h"

namespace lineweir::driver {
namespace {

Reply error(std::string_view text, bool failed) { return {"error " + on_one_line(text), failed}; }

constexpr int deepest_include = 8;

std::optional<Reply> include(Session& session, const std::filesystem::path& path, int depth) {
  if (depth == deepest_include) throw NotUnderstood("scripts include one another without end");
  std::ifstream script(path, std::ios::binary);
  if (!script || std::filesystem::is_directory(path)) {
    throw NotUnderstood(path.filename().string() + " can't be read");
  }
  int number = 0;
  for (std::string line; std::getline(script, line);) {
    ++number;
    const auto reply = carry_out(session, line, path.parent_path(), depth + 1);
    if (!reply || !reply->failed) continue;
    return error(path.filename().string() + ":" + std::to_string(number) + ": " + reply->line,
                 true);
  }
  return Reply{"ok"};
}

}  // namespace

std::optional<Reply> carry_out(Session& session, std::string_view line,
                               const std::filesystem::path& folder, int depth) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.starts_with('#')) return std::nullopt;
  try {
    const auto words = split_words(line);
    if (words.empty()) return std::nullopt;
    if (words.size() == 2 && words[0] == "include") {
      return include(session, folder / text_of(parsed(words[1])), depth);
    }
    const auto value = run_command(session, words);
    return Reply{value ? "= " + printed(*value) : "ok"};
  } catch (const NotAsExpected& refusal) {
    // Its values are printed already.
    return Reply{std::string("error ") + refusal.what(), true};
  } catch (const NotUnderstood& refusal) {
    return error(refusal.what(), true);
  } catch (const Refusal& refusal) {
    return error(refusal.what(), false);
  } catch (const Failure& failure) {
    return error(failure.what(), true);
  } catch (const std::exception& exception) {
    return error(std::string("internal error: ") + exception.what(), true);
  }
}

bool carry_out_all(Session& session, std::istream& lines, const std::string& name,
                   std::ostream& replies, std::ostream& complaints) {
  bool all_well = true;
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    const auto reply = carry_out(session, line, std::filesystem::path(name).parent_path());
    if (!reply) continue;
    replies << reply->line << std::endl;
    if (!reply->failed) continue;
    all_well = false;
    complaints << name << ":" << number << ": " << line << "\n    " << reply->line << std::endl;
  }
  return all_well;
}

}  // namespace lineweir::driver

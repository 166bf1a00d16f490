#include "driver/interpreter.h"

#include "driver/commands.h"
#include "driver/refusal.h"
#include "driver/words.h"

namespace lineweir::driver {
namespace {

Reply error(std::string_view text, bool failed) { return {"error " + on_one_line(text), failed}; }

}  // namespace

std::optional<Reply> carry_out(Session& session, std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.starts_with('#')) return std::nullopt;
  try {
    const auto words = split_words(line);
    if (words.empty()) return std::nullopt;
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
    const auto reply = carry_out(session, line);
    if (!reply) continue;
    replies << reply->line << std::endl;
    if (!reply->failed) continue;
    all_well = false;
    complaints << name << ":" << number << ": " << line << "\n    " << reply->line << std::endl;
  }
  return all_well;
}

}  // namespace lineweir::driver

#include "driver/interpreter.h"

#include "driver/commands.h"
#include "driver/refusal.h"
#include "driver/words.h"

namespace lineweir::driver {
namespace {

// A usage line is words in lower case, which stand for themselves, parameters, which don't,
// optional parameters in brackets, and "..." for any number of them.
struct Match {
  std::size_t literals = 0;
  bool whole = false;
  std::vector<std::string> parameters;
};

bool is_literal(std::string_view word) { return word.front() >= 'a' && word.front() <= 'z'; }

Match match(std::string_view usage, const std::vector<std::string>& words) {
  Match result;
  std::size_t next = 0;
  for (const std::string& wanted : split_words_plainly(usage)) {
    if (wanted == "...") {
      while (next < words.size()) result.parameters.push_back(words[next++]);
    } else if (next == words.size()) {
      if (!wanted.starts_with('[')) return result;
    } else if (!is_literal(wanted)) {
      result.parameters.push_back(words[next++]);
    } else if (words[next] == wanted) {
      ++result.literals;
      ++next;
    } else {
      return result;
    }
  }
  result.whole = next == words.size();
  return result;
}

std::optional<Json> run(Session& session, const std::vector<std::string>& words) {
  std::size_t most_literals = 0;
  std::string_view nearest;
  for (const Command& command : commands()) {
    Match found = match(command.usage, words);
    if (found.whole) return command.run(session, Arguments(std::move(found.parameters)));
    if (found.literals > most_literals) {
      most_literals = found.literals;
      nearest = command.usage;
    }
  }
  if (nearest.empty()) throw NotUnderstood("no such command: " + on_one_line(words.front()));
  throw NotUnderstood("usage: " + std::string(nearest));
}

Reply error(std::string_view text, bool failed) { return {"error " + on_one_line(text), failed}; }

}  // namespace

std::optional<Reply> carry_out(Session& session, std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.starts_with('#')) return std::nullopt;
  try {
    const auto words = split_words(line);
    if (words.empty()) return std::nullopt;
    const auto value = run(session, words);
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

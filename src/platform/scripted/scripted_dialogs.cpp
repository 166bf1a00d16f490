#include "platform/scripted/scripted_dialogs.h"

#include <utility>

namespace lineweir::platform {
namespace {

template <class Answer>
std::optional<Answer> next_answer(std::deque<std::optional<Answer>>& waiting) {
  if (waiting.empty()) return std::nullopt;
  std::optional<Answer> answer = std::move(waiting.front());
  waiting.pop_front();
  return answer;
}

}  // namespace

std::optional<std::string> ScriptedDialogs::ask_file(const FileQuestion& question) {
  asked_.emplace_back(question);
  return next_answer(files_);
}

std::optional<std::string> ScriptedDialogs::ask_input(const InputQuestion& question) {
  asked_.emplace_back(question);
  return next_answer(inputs_);
}

bool ScriptedDialogs::ask_yes_no(const std::string& question) {
  asked_.emplace_back(YesNoQuestion{question});
  return next_answer(questions_).value_or(false);
}

std::optional<FontChoice> ScriptedDialogs::ask_font(const FontChoice& present) {
  asked_.emplace_back(present);
  return next_answer(fonts_);
}

void ScriptedDialogs::message(const std::string& text) {
  if (on_message) on_message(text);
}

std::vector<AskedDialog> ScriptedDialogs::take_asked() { return std::exchange(asked_, {}); }

}  // namespace lineweir::platform

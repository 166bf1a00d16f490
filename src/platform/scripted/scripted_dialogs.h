#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/dialogs.h"

namespace lineweir::platform {

struct YesNoQuestion {
  std::string text;
};

// A dialog that was shown, as its question.
using AskedDialog = std::variant<FileQuestion, InputQuestion, YesNoQuestion, FontChoice>;

// Dialogs that are answered beforehand: each takes the first answer waiting for its kind, and is
// cancelled if there is none. No value in place of an answer cancels too.
class ScriptedDialogs final : public Dialogs {
 public:
  std::optional<std::string> ask_file(const FileQuestion& question) override;
  std::optional<std::string> ask_input(const InputQuestion& question) override;
  bool ask_yes_no(const std::string& question) override;
  std::optional<FontChoice> ask_font(const FontChoice& present) override;
  void message(const std::string& text) override;

  void answer_file(std::optional<std::string> path) { files_.push_back(std::move(path)); }
  void answer_input(std::optional<std::string> text) { inputs_.push_back(std::move(text)); }
  void answer_question(std::optional<bool> yes) { questions_.push_back(yes); }
  void answer_font(std::optional<FontChoice> font) { fonts_.push_back(std::move(font)); }

  // The dialogs shown since the last call; messages are no questions.
  std::vector<AskedDialog> take_asked();

  // Told of each message.
  std::function<void(const std::string& text)> on_message;

 private:
  std::deque<std::optional<std::string>> files_;
  std::deque<std::optional<std::string>> inputs_;
  std::deque<std::optional<bool>> questions_;
  std::deque<std::optional<FontChoice>> fonts_;
  std::vector<AskedDialog> asked_;
};

}  // namespace lineweir::platform

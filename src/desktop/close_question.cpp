#include "desktop/close_question.h"

#include <QGuiApplication>
#include <string>
#include <vector>

#include "base/text.h"
#include "core/console.h"
#include "desktop/window_focus.h"
#include "lines/status_letters.h"
#include "state/wire.h"
#include "ui_close_question.h"

namespace lineweir {
namespace {

constexpr DialogRow close_question_row = {
    nullptr, [](QWidget& window) { Ui::CloseQuestion().setupUi(&window); }, DialogKind::Dialog};

std::string_view what_closing_does(std::size_t callers) {
  if (callers == 0) return {};
  return callers == 1
             ? "Closing Lineweir doesn't end the call, but it can't be held or dropped from here "
               "any more."
             : "Closing Lineweir doesn't end the calls, but they can't be held or dropped from "
               "here "
               "any more.";
}

std::vector<int> lines_on_air(const Console& console) {
  std::vector<int> lines;
  for (int line = 0; line < console.lines.LineCount; ++line) {
    if (is_on_air_or_locked(console.lines.StatusLetter(line))) lines.push_back(line);
  }
  return lines;
}

// "1", "1 and 4", "1, 4 and 5".
std::string listed(const std::vector<int>& lines) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool last = i + 1 == lines.size();
    if (i > 0) text += last ? " and " : ", ";
    text += std::to_string(lines[i] + 1);
  }
  return text;
}

std::string who_is_on_air(const Console& console, const std::vector<int>& lines) {
  if (lines.empty()) return "Nobody is on air any more.";
  if (lines.size() > 1) {
    return std::to_string(lines.size()) + " callers are on air, on lines " + listed(lines) + ".";
  }
  const auto name = trimmed(console.Lineweir.LineName(lines.front()).caption.get());
  const std::string line = "line " + listed(lines);
  return name.empty() ? "The caller on " + line + " is on air."
                      : std::string(name) + " is on air, on " + line + ".";
}

}  // namespace

CloseQuestionForm::CloseQuestionForm() : Form("CloseQuestion") {
  caption = "Close Lineweir?";
  width = 6300;
  height = 1950;
}

CloseQuestion::CloseQuestion(Console& console, WindowFocus& focus,
                             std::function<QWidget*()> main_window)
    : FormWatch(console.Lineweir),
      console_(console),
      focus_(focus),
      frame_(form_, close_question_row, focus, std::move(main_window)),
      news_([this] { tell(); }) {
  form_.letters = console.Lineweir.letters;
  wire(console.Lineweir.on_close, console.trace, "Lineweir_Form_QueryUnload",
       [this] { main_form_closes(); });
  wire(form_.StayButton.on_click, console.trace, "CloseQuestion_StayButton_Click",
       [this] { form_.unload(); });
  wire(form_.CloseButton.on_click, console.trace, "CloseQuestion_CloseButton_Click", [this] {
    form_.unload();
    console_.Lineweir.unload();
  });
}

CloseQuestion::~CloseQuestion() { console_.Lineweir.on_close.forget_handler(); }

void CloseQuestion::flush() {
  news_.flush();
  frame_.flush();
}

void CloseQuestion::main_form_closes() {
  if (lines_on_air(console_).empty() || qGuiApp->isSavingSession()) {
    return console_.Lineweir.unload();
  }
  ask();
}

void CloseQuestion::ask() {
  MainForm& main = console_.Lineweir;
  // In front of a window that isn't seen the question wouldn't be seen either.
  if (main.window_state == window_minimised) main.window_state = window_normal;
  form_.show();
  tell();
  form_.StayButton.set_focus();
  // It answers the user, who may have closed the window in the window manager's own way, of which
  // the program sees no key and no click.
  frame_.flush();
  focus_.give_to(*frame_.window());
}

void CloseQuestion::tell() {
  if (!form_.visible) return;
  if (!console_.Lineweir.visible) return form_.unload();
  const std::vector<int> lines = lines_on_air(console_);
  form_.WhoLabel.caption = who_is_on_air(console_, lines);
  form_.WhatLabel.caption = what_closing_does(lines.size());
}

void CloseQuestion::changed(Element&, PropertyId) {
  if (form_.visible) news_.mark();
}

}  // namespace lineweir

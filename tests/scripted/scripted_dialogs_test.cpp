#include "platform/scripted/scripted_dialogs.h"

#include <doctest/doctest.h>

namespace lineweir::platform {
namespace {

TEST_CASE("Answers wait in order, one queue for each kind of dialog") {
  ScriptedDialogs dialogs;
  dialogs.answer_file("first");
  dialogs.answer_file(std::nullopt);
  dialogs.answer_file("third");
  dialogs.answer_input("text");
  CHECK(dialogs.ask_file({}) == "first");
  CHECK_FALSE(dialogs.ask_file({}).has_value());
  CHECK(dialogs.ask_input({"prompt", ""}) == "text");
  CHECK(dialogs.ask_file({}) == "third");
}

TEST_CASE("A dialog without an answer is cancelled") {
  ScriptedDialogs dialogs;
  CHECK_FALSE(dialogs.ask_file({}).has_value());
  CHECK_FALSE(dialogs.ask_input({"", ""}).has_value());
  CHECK_FALSE(dialogs.ask_yes_no(""));
  CHECK_FALSE(dialogs.ask_font({}).has_value());
}

TEST_CASE("What was asked is kept in order; messages are told and not kept") {
  ScriptedDialogs dialogs;
  std::string message;
  dialogs.on_message = [&](const std::string& text) { message = text; };
  dialogs.answer_question(true);
  CHECK(dialogs.ask_yes_no("Sure?"));
  dialogs.message("Done");
  dialogs.ask_file({"Open", "All|*.*", "x.txt", false});
  CHECK(message == "Done");
  const auto asked = dialogs.take_asked();
  REQUIRE(asked.size() == 2);
  CHECK(std::get<YesNoQuestion>(asked[0]).text == "Sure?");
  CHECK(std::get<FileQuestion>(asked[1]).title == "Open");
  CHECK(dialogs.take_asked().empty());
}

}  // namespace
}  // namespace lineweir::platform

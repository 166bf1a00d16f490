#include <doctest/doctest.h>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_CASE("a message of many lines has a box that holds them, and the next one the box of ever") {
  ScriptedConsole desk;
  MessageBoxForm& box = desk.console.MyMsgbox;
  desk.console.messages.ShowMessage("One line.");
  const int height = box.height;
  const int button = box.OKButton.top;
  std::string lines = "What failed:";
  for (int i = 0; i < 10; ++i) lines += "\nstudio.example, port 2001: It can't be reached.";
  desk.console.messages.ShowMessage(lines);
  CHECK(box.height > height + 3000);
  CHECK(box.OKButton.top - button == box.height - height);
  CHECK(box.Label1.top + box.Label1.height <= box.OKButton.top);
  desk.console.messages.ShowMessage(std::string(100'000, '\n'));
  CHECK(box.height < 8000);
  desk.console.messages.offer_reconnection();
  CHECK(box.height == height);
  desk.console.messages.ShowMessage("One line.");
  CHECK(box.height == height);
  CHECK(box.ReconnectButton.top == button);
}

}  // namespace
}  // namespace lineweir::test

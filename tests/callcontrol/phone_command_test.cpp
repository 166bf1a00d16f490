#include "callcontrol/phone_command.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "serverlink/command_frame.h"
#include "support/bytes.h"
#include "support/listen.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

struct PhoneDesk : ScriptedConsole {
  explicit PhoneDesk(std::string_view command_line = {}) : ScriptedConsole(command_line) {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.trace.on_line = [this](const std::string& line) {
      if (line.find("Error") != std::string::npos) reports.push_back(line);
    };
    platform.comm1.take_writes();
  }

  void open_serial() {
    if (!platform.comm1.is_open()) platform.comm1.open();
  }
  void open_socket() {
    platform.winsock1.stand_connected();
    console.Lineweir.WinsockMenu.checked = true;
  }
  void open_remote() {
    platform.remote_objects.set_present(true);
    console.remote.SerialInputObject = platform.remote_objects.create("Quorlink.SerialInput");
    console.Lineweir.NetworkConnectionOption.checked = true;
  }

  void command(std::string_view word, int bank = bank_main) {
    console.phone.PhoneCommand(word, bank);
  }
  Texts serial() { return platform.comm1.take_writes(); }
  Texts socket() { return platform.winsock1.take_writes(); }
  // Each write of InputSerialPort as "group=text".
  Texts remote() {
    Texts writes;
    for (const auto& call : platform.remote_objects.take_calls()) {
      REQUIRE(call.object == "SerialInput");
      REQUIRE(call.member == "InputSerialPort");
      REQUIRE(call.arguments.size() == 2);
      writes.push_back(std::to_string(std::get<std::int64_t>(call.arguments[0])) + "=" +
                       std::get<std::string>(call.arguments[1]));
    }
    return writes;
  }

  Texts messages;
  Texts reports;
};

const std::string frame_of_n05 = bytes({4, 4, 4, 5, 1, 0, 0, 0, 0, 1, 'N', 255, 5, 5});

TEST_SUITE("callcontrol/PhoneCommand") {
  TEST_CASE("over the serial port goes the word and nothing else") {
    PhoneDesk desk;
    desk.open_serial();
    desk.command("N05");
    desk.command("X", bank_none);
    CHECK(desk.serial() == Texts{"N05", "X"});
  }

  TEST_CASE("with the serial port closed a command vanishes without a message") {
    PhoneDesk desk("D");
    desk.platform.comm1.close();
    desk.command("N05");
    CHECK(desk.serial().empty());
    CHECK(desk.messages.empty());
    CHECK(desk.reports.empty());
  }

  TEST_CASE("over the socket goes the word's frame") {
    PhoneDesk desk;
    desk.open_socket();
    desk.command("N05");
    CHECK(desk.socket() == Texts{frame_of_n05});
  }

  TEST_CASE("the frame is made of the console's state") {
    PhoneDesk desk;
    desk.open_socket();
    desk.console.program.GroupNumber = 4;
    desk.console.program.ConsoleNumber = 2;
    desk.console.lines.StatusLetter(5) = 'C';
    desk.command("F05", bank_conference);
    desk.console.lines.ThePhoneFlag = 4;
    desk.console.Lineweir.ScreenerMode.checked = true;
    desk.command("F05", bank_conference);
    desk.console.dial.DialLine = 3;
    desk.command("Z10", bank_none);
    CHECK(desk.socket() == Texts{bytes({4, 4, 4, 5, 4, 66, 2, 1, 0, 1, 'F', 255, 5, 5}),
                                 bytes({4, 4, 4, 5, 4, 2, 2, 1, 0, 1, 'F', 255, 5, 5}),
                                 bytes({4, 4, 14, 3, 4, 2, 2, 255, 0, 1, '*', 255, 5, 5})});
  }

  TEST_CASE("a digit with no line to dial on isn't sent") {
    PhoneDesk desk;
    desk.open_socket();
    desk.command("Z05", bank_none);
    CHECK(desk.socket().empty());
    CHECK(desk.messages.empty());
  }

  TEST_CASE("each command is two writes of the remote object, the second empty") {
    PhoneDesk desk;
    desk.console.program.GroupNumber = 2;
    desk.open_remote();
    desk.command("N05");
    desk.command("X", bank_none);
    desk.command("Z05", bank_none);
    CHECK(desk.remote() == Texts{"2=N05", "2=", "2=X", "2=", "2=Z05", "2="});
  }

  TEST_CASE("remote objects come before the socket, and the socket before the serial port") {
    PhoneDesk desk;
    desk.open_serial();
    desk.open_socket();
    desk.command("N05");
    CHECK(desk.socket().size() == 1);
    CHECK(desk.serial().empty());
    desk.open_remote();
    desk.command("N05");
    CHECK(desk.remote().size() == 2);
    CHECK(desk.socket().empty());
    CHECK(desk.serial().empty());
  }

  TEST_CASE("on a closed socket the message is shown and the command dropped") {
    PhoneDesk desk("D");
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.command("N05");
    CHECK(desk.messages == Texts{"Lineweir is not currently connected to a server."});
    CHECK(desk.reports.empty());
    desk.platform.winsock1.stand_connected();
    CHECK(desk.socket().empty());
  }

  TEST_CASE("a command that can't be sent is reported after its retries") {
    PhoneDesk desk("D");
    desk.open_socket();
    desk.command("N05", 256);
    CHECK(desk.reports ==
          Texts{"Lineweir_PhoneCommand Error - Invalid procedure call or argument"});
    CHECK(desk.messages.empty());
    CHECK(desk.socket().empty());
  }

  TEST_CASE("without the remote objects the command is reported") {
    PhoneDesk desk("D");
    desk.console.Lineweir.NetworkConnectionOption.checked = true;
    desk.command("N05");
    CHECK(desk.reports ==
          Texts{"Lineweir_PhoneCommand Error - The remote objects are not connected"});
  }

  TEST_CASE("remote objects that come back within the retries get the command once") {
    PhoneDesk desk("D");
    desk.open_remote();
    desk.platform.remote_objects.set_present(false);
    desk.platform.loop.schedule(platform::Milliseconds{0},
                                [&] { desk.platform.remote_objects.set_present(true); });
    desk.command("N05");
    CHECK(desk.remote() == Texts{"1=N05", "1="});
    CHECK(desk.reports.empty());
  }

  TEST_CASE("a command pressed while another is retried is dropped") {
    PhoneDesk desk("D");
    desk.open_remote();
    desk.platform.remote_objects.set_present(false);
    desk.platform.loop.schedule(platform::Milliseconds{0}, [&] {
      desk.platform.remote_objects.set_present(true);
      desk.command("H02");
    });
    desk.command("N05");
    CHECK(desk.remote() == Texts{"1=N05", "1="});
  }
}

TEST_SUITE("callcontrol/UCommand") {
  struct NextDesk : PhoneDesk {
    NextDesk() : PhoneDesk("D") {
      open_serial();
      form().RemoteNext.checked = true;
      form().StudioMode.checked = true;
      form().NextButton.enabled = true;
      form().NextToConfButton.enabled = true;
      listen(form().NextButton.on_click, [this] { pressed.push_back("NextButton"); });
      listen(form().NextToConfButton.on_click, [this] { pressed.push_back("NextToConfButton"); });
    }
    MainForm& form() { return console.Lineweir; }
    void word(std::string_view text) { console.phone.UCommand(text); }

    Texts pressed;
  };

  TEST_CASE("05 presses the first next button that is enabled") {
    NextDesk desk;
    desk.word("U05");
    CHECK(desk.pressed == Texts{"NextButton"});
    desk.form().NextButton.enabled = false;
    desk.word("U05");
    CHECK(desk.pressed == Texts{"NextButton", "NextToConfButton"});
    desk.form().NextToConfButton.enabled = false;
    desk.word("U05");
    CHECK(desk.pressed.size() == 2);
    CHECK(desk.serial().empty());
  }

  TEST_CASE("05 does nothing in producer mode or with remote next off") {
    NextDesk desk;
    desk.form().StudioMode.checked = false;
    desk.form().ScreenerMode.checked = true;
    desk.word("U05");
    desk.form().StudioMode.checked = true;
    desk.form().RemoteNext.checked = false;
    desk.word("U05");
    CHECK(desk.pressed.empty());
    CHECK(desk.serial().empty());
  }

  TEST_CASE("any other word is passed on as it stands while remote next is on") {
    NextDesk desk;
    desk.form().StudioMode.checked = false;
    desk.word("U07");
    desk.word("U");
    desk.form().RemoteNext.checked = false;
    desk.word("U08");
    CHECK(desk.serial() == Texts{"U07", "U"});
    CHECK(desk.pressed.empty());
  }

  TEST_CASE("a word that is passed on over the socket has no bank") {
    NextDesk desk;
    desk.open_socket();
    desk.word("U07");
    CHECK(desk.socket() == Texts{bytes({4, 4, 4, 7, 1, 255, 0, 0, 0, 1, 'U', 255, 5, 5})});
  }

  TEST_CASE("a button that fails is reported") {
    NextDesk desk;
    listen(desk.form().NextButton.on_click,
           [] { throw Failure(failure_number::type_mismatch, "x"); });
    desk.word("U05");
    CHECK(desk.reports == Texts{"Lineweir_UCommand Error - x"});
  }
}

}  // namespace
}  // namespace lineweir::test

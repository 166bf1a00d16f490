#include "serverlink/server_link.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "support/bytes.h"
#include "support/failure_number.h"
#include "support/scripted_console.h"
#include "support/server_packet.h"

namespace lineweir::test {
namespace {

using platform::Milliseconds;
using Texts = std::vector<std::string>;

constexpr Milliseconds wins_timer_interval{50};

std::string message_frame(const std::string& text) {
  return frame_of(server_packet(ServerCommand::SrvMessage, text));
}

// A console on a standing connection, which writes down the texts of SrvMessage.
struct Connected : ScriptedConsole {
  explicit Connected(std::string_view command_line = {}) : ScriptedConsole(command_line) {
    platform.winsock1.stand_connected();
    console.server.handle(ServerCommand::SrvMessage, [this](const ServerPacket& packet) {
      messages.push_back(packet.Buffer);
    });
  }

  ServerLink& server() { return console.server; }
  bool timer_armed() const { return console.Lineweir.WinsTimer.enabled; }
  void arrive(const std::string& received) {
    platform.winsock1.arrive(received);
    platform.loop.advance(Milliseconds{0});
  }
  void pass() { platform.loop.advance(wins_timer_interval); }

  Texts messages;
};

TEST_SUITE("serverlink/server_link") {
  TEST_CASE("a packet goes out as one frame, padded to an even length") {
    Connected link;
    ServerPacket packet = link.server().packet(ClientCommand::CmdFlashMessage);
    packet.set_buffer("abc");
    link.server().send(packet);
    CHECK(link.platform.winsock1.take_writes() ==
          Texts{bytes({4, 4, 7, 255, 1, 255, 0, 255, 0, 3, 'a', 'b', 'c', 255, 5, 5})});
  }

  TEST_CASE("a packet is of this console's group and number") {
    Connected link;
    link.console.program.GroupNumber = 7;
    link.console.program.ConsoleNumber = 3;
    const ServerPacket packet = link.server().packet(ClientCommand::CmdTimeRequest);
    CHECK(packet.GroupNo == 7);
    CHECK(packet.Console == 3);
  }

  TEST_CASE("without a connection a packet isn't sent and the sender is told") {
    ScriptedConsole lonely;
    const auto send = [&] {
      lonely.console.server.send(lonely.console.server.packet(ClientCommand::CmdTimeRequest));
    };
    CHECK(failure_number_of(send) == failure_number::socket_wrong_state);
    CHECK(lonely.platform.winsock1.take_writes().empty());
  }

  TEST_CASE("arriving bytes are gathered at once and handled 50 ms later") {
    Connected link;
    link.arrive(message_frame("hello"));
    CHECK(link.server().RecString.text() == message_frame("hello"));
    CHECK(link.timer_armed());
    link.platform.loop.advance(wins_timer_interval - Milliseconds{1});
    CHECK(link.messages.empty());
    link.platform.loop.advance(Milliseconds{1});
    CHECK(link.messages == Texts{"hello"});
    CHECK_FALSE(link.timer_armed());
    CHECK(link.server().RecString.text() == "\5");
  }

  TEST_CASE("two frames in one arrival are handled in one pass, in order") {
    Connected link;
    link.arrive(message_frame("first") + message_frame("second"));
    link.pass();
    CHECK(link.messages == Texts{"first", "second"});
  }

  TEST_CASE("a frame in two arrivals is handled after the second") {
    Connected link;
    const std::string frame = message_frame("split");
    link.arrive(frame.substr(0, 9));
    link.pass();
    CHECK(link.messages.empty());
    CHECK_FALSE(link.timer_armed());
    link.arrive(frame.substr(9));
    link.pass();
    CHECK(link.messages == Texts{"split"});
  }

  TEST_CASE("a lone 05 05 doesn't hold the loop: the next arrival goes on") {
    Connected link;
    link.arrive(bytes({5, 5}));
    link.pass();
    CHECK_FALSE(link.timer_armed());
    CHECK(link.server().RecString.text() == bytes({5, 5}));
    link.arrive(message_frame("behind"));
    link.pass();
    CHECK(link.messages == Texts{"behind"});
  }

  TEST_CASE("a command that nobody handles and a code that means nothing are passed over") {
    Connected link("D");
    Texts reports;
    link.console.trace.on_line = [&](const std::string& line) {
      if (line.find("Error") != std::string::npos) reports.push_back(line);
    };
    std::string stream;
    for (int code = 0; code < 256; ++code) {
      ServerPacket packet = server_packet(ServerCommand::SrvMessage, "x");
      packet.CMD = static_cast<std::uint8_t>(code);
      if (code != 140) link.server().handle(static_cast<ServerCommand>(code), {});
      stream += frame_of(packet);
    }
    link.arrive(stream);
    link.pass();
    CHECK(link.messages == Texts{"x"});
    CHECK(reports.empty());
    CHECK(link.server().RecString.text() == "\5");
  }

  TEST_CASE("what was received before is kept across connections") {
    Connected link;
    const std::string frame = message_frame("kept");
    link.arrive(frame.substr(0, 6));
    link.platform.winsock1.close();
    link.platform.winsock1.stand_connected();
    link.arrive(frame.substr(6));
    link.pass();
    CHECK(link.messages == Texts{"kept"});
  }

  TEST_CASE("a sender gathers what has arrived before it sends") {
    Connected link;
    link.platform.winsock1.on_data_arrival.forget_handler();
    link.arrive("abc");
    CHECK(link.server().RecString.text().empty());
    link.server().send(link.server().packet(ClientCommand::CmdTimeRequest));
    CHECK(link.server().RecString.text() == "abc");
    CHECK(link.timer_armed());
  }

  TEST_CASE("with nothing received a sender doesn't arm the timer") {
    Connected link;
    link.server().TextWrit_CheckWinsPort();
    CHECK_FALSE(link.timer_armed());
  }

  TEST_CASE("a frame whose handler fails is reported and handled again at the next arrival") {
    Connected link("D");
    Texts reports;
    link.console.trace.on_line = [&](const std::string& line) {
      if (line.find("Error") != std::string::npos) reports.push_back(line);
    };
    int times = 0;
    link.server().handle(ServerCommand::SrvTime, [&](const ServerPacket&) {
      if (++times == 1) throw Failure(failure_number::type_mismatch, "Type mismatch");
    });
    link.arrive(frame_of(server_packet(ServerCommand::SrvTime, "?")) + message_frame("behind"));
    link.pass();
    CHECK(times == 1);
    CHECK(link.messages.empty());
    CHECK_FALSE(link.timer_armed());
    CHECK(reports == Texts{"Lineweir_WinsTimer_Timer Error - Type mismatch"});

    link.pass();
    CHECK(times == 1);
    link.arrive(message_frame("last"));
    link.pass();
    CHECK(times == 2);
    CHECK(link.messages == Texts{"behind", "last"});
  }

  TEST_CASE("bytes that arrive while a handler waits are handled behind its frame") {
    Connected link;
    int depth = 0;
    link.server().handle(ServerCommand::SrvTime, [&](const ServerPacket& packet) {
      CHECK(++depth == 1);
      link.platform.winsock1.arrive(message_frame("meanwhile"));
      for (int i = 0; i < 100; ++i) link.platform.loop.yield();
      CHECK(packet.Buffer == "wait");
      CHECK(link.messages.empty());
      --depth;
    });
    link.arrive(frame_of(server_packet(ServerCommand::SrvTime, "wait")));
    link.pass();
    CHECK(link.messages == Texts{"meanwhile"});
    CHECK(link.server().RecString.text() == "\5");
  }

  TEST_CASE("a megabyte without an end marker, 100 bytes at a time, stays and is cut in the end") {
    Connected link;
    const std::string piece(100, 'x');
    ServerPacket packet = server_packet(ServerCommand::SrvMessage, "");
    link.arrive(start_marker.data() + body_of(packet));
    for (int i = 0; i < 10000; ++i) link.arrive(piece);
    link.pass();
    CHECK(link.messages.empty());
    link.arrive(std::string(end_marker));
    link.pass();
    CHECK(link.messages == Texts{std::string(1000000, 'x')});
  }
}

TEST_SUITE("serverlink/server_link trace") {
  const Texts sent_lines = {bytes({4, 4, 7, 255, 1, 255, 0, 255, 0, 1, 'h', 255, 5, 5}),
                            "CMD 7",
                            "LineNo 255",
                            "GroupNo 1",
                            "AltInfo 255",
                            "Console 0",
                            "Bank 255",
                            "Size 0 1",
                            "Buffer h\xFF",
                            ""};
  const Texts received_lines = {"\t\t\t" + bytes({140, 255, 1, 255, 255, 255, 0, 1, 'h', 255}),
                                "\t\t\tCMD 140",
                                "\t\t\tLineNo 255",
                                "\t\t\tGroupNo 1",
                                "\t\t\tAltInfo 255",
                                "\t\t\tConsole 255",
                                "\t\t\tBank 255",
                                "\t\t\tSize 0 1",
                                "\t\t\tBuffer h",
                                ""};

  std::string joined(const Texts& lines) {
    std::string text;
    for (const auto& line : lines) text += line + "\r\n";
    return text;
  }

  void send_h(Connected & link) {
    ServerPacket packet = link.server().packet(ClientCommand::CmdFlashMessage);
    packet.set_buffer("h");
    link.server().send(packet);
  }

  TEST_CASE("frames in both directions go to the window, with the caret at its end") {
    Connected link("D");
    TextBox& window = link.console.DebugForm.Text1;
    window.text = "before\r\n";
    send_h(link);
    link.arrive(message_frame("h"));
    link.pass();
    CHECK(window.text.get() == "before\r\n" + joined(sent_lines) + joined(received_lines));
    CHECK(window.sel_start.get() == static_cast<int>(window.text.get().size()));
  }

  TEST_CASE("the trace file has the same lines with date and time on a line in front") {
    Connected link("D");
    link.platform.clock.put({2026, 1, 5, 10, 0, 0});
    const std::string name(trace_file_name);
    const std::string before = link.platform.files.read(name).value_or("");
    send_h(link);
    CHECK(*link.platform.files.read(name) ==
          before + "1/5/2026 10:00:00 AM\r\n" + joined(sent_lines));
  }

  TEST_CASE("without DebugMode no frame is traced") {
    Connected link;
    link.console.trace.on_line = [](const std::string&) { FAIL("traced"); };
    send_h(link);
    link.arrive(message_frame("h"));
    link.pass();
    CHECK(link.messages == Texts{"h"});
    CHECK(link.console.DebugForm.Text1.text.get().empty());
    CHECK_FALSE(link.platform.files.exists(std::string(trace_file_name)));
  }

  TEST_CASE("a frame that isn't sent isn't traced") {
    ScriptedConsole lonely("D");
    lonely.console.trace.on_line = [](const std::string&) { FAIL("traced"); };
    CHECK(failure_number_of([&] {
            lonely.console.server.send(lonely.console.server.packet(ClientCommand::CmdTimeRequest));
          }) == failure_number::socket_wrong_state);
  }

  TEST_CASE("a frame that makes the window too long clears it, and the file keeps it") {
    Connected link("D");
    ServerPacket packet = link.server().packet(ClientCommand::CmdFlashMessage);
    packet.set_buffer(std::string(20000, 'x'));
    link.server().send(packet);
    CHECK(link.console.DebugForm.Text1.text.get().empty());
    CHECK(link.platform.files.read(std::string(trace_file_name))->size() > 40000);
  }
}

}  // namespace
}  // namespace lineweir::test

#include <doctest/doctest.h>

#include <deque>
#include <random>
#include <string>
#include <vector>

#include "core/console.h"
#include "elements/key_characters.h"
#include "messages/conversation.h"
#include "platform/scripted/scripted_platform.h"
#include "support/server_packet.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

using platform::Milliseconds;

class Chance {
 public:
  explicit Chance(unsigned seed) : engine_(seed) {}
  int below(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }
  bool happens(double probability) { return below(1000) < probability * 1000; }

 private:
  std::mt19937 engine_;
};

// One seat of the studio, with its connection to the server.
struct MessageSeat {
  MessageSeat(platform::VirtualEventLoop& loop, const char* user) : workstation(loop) {
    loop.run([&] { console.startup.Main(""); });
    workstation.winsock1.stand_connected();
    console.Lineweir.WinsockMenu.checked = true;
    console.Lineweir.WinsTimer.enabled = true;
    console.login.UserName = user;
  }

  void write_line(const std::string& words) {
    TextBox& line = console.Lineweir.Text2;
    console.quick_line.open();
    line.text = words;
    int key = enter_key;
    line.on_key_press(key);
    CHECK(line.text == "");
  }

  void write_in_dialog(const std::string& words, bool urgent) {
    FlashMessageForm& dialog = console.FlashMessA;
    console.Lineweir.Text1.on_dbl_click();
    dialog.Text1.text = words;
    (urgent ? dialog.SendUrgent : dialog.FlashSend).on_click();
    CHECK_FALSE(dialog.visible);
  }

  platform::ScriptedPlatform workstation;
  Console console{workstation.services()};
};

// A server that sends each message to all seats in the order in which it gets them. What is on its
// way to a seat keeps its order, and takes as long as it takes.
class MessageServer {
 public:
  MessageServer(platform::VirtualEventLoop& loop, Chance& dice) : loop_(loop), dice_(dice) {}

  void connect(MessageSeat& seat) { seats_.push_back({&seat, {}, Milliseconds{0}}); }
  int messages() const { return messages_; }

  void work() {
    for (Line& from : seats_) {
      for (const std::string& bytes : from.seat->workstation.winsock1.take_writes()) {
        from.received.append(bytes);
      }
      while (const auto body = from.received.first_body()) {
        const ServerPacket packet = packet_of(*body);
        from.received.drop_first();
        if (packet.CMD == static_cast<int>(ClientCommand::CmdFlashMessage)) relay(packet.Buffer);
      }
    }
  }

 private:
  struct Line {
    MessageSeat* seat;
    ReceiveBuffer received;
    Milliseconds busy_until;
  };

  void relay(const std::string& message) {
    ++messages_;
    for (Line& to : seats_) {
      to.busy_until = std::max(to.busy_until, loop_.now() + Milliseconds{1 + dice_.below(400)});
      loop_.schedule(to.busy_until - loop_.now(), [seat = to.seat, message] {
        seat->workstation.winsock1.arrive(
            frame_of(server_packet(ServerCommand::SrvFlashMessage, message)));
      });
    }
  }

  platform::VirtualEventLoop& loop_;
  Chance& dice_;
  std::deque<Line> seats_;
  int messages_ = 0;
};

// The messages of the dialog's page without their times.
std::string without_times(const std::string& history) {
  std::string texts;
  for (std::size_t begin = 0; begin < history.size();) {
    const std::size_t end = std::min(history.find("\r\n", begin), history.size());
    const std::string line = history.substr(begin, end - begin);
    texts += (line.size() > 8 && line[2] == ':' ? line.substr(8) : line) + "\n";
    begin = end + 2;
  }
  return texts;
}

TEST_SUITE("messages/two seats") {
  TEST_CASE("two seats that write at once show the same at the end") {
    for (const unsigned seed : {1U, 2U, 3U}) {
      CAPTURE(seed);
      Chance dice(seed);
      platform::VirtualEventLoop loop;
      MessageSeat ann(loop, "Ann");
      MessageSeat ben(loop, "Ben");
      MessageServer server(loop, dice);
      server.connect(ann);
      server.connect(ben);
      for (int turn = 0; turn < 1000; ++turn) {
        MessageSeat& writer = dice.happens(0.5) ? ann : ben;
        const std::string words = "message " + std::to_string(turn);
        if (dice.happens(0.9)) {
          writer.write_line(words);
        } else {
          writer.write_in_dialog(words, dice.happens(0.3));
        }
        server.work();
        loop.advance(Milliseconds{dice.below(300)});
      }
      loop.advance(Milliseconds{5000});
      CHECK(server.messages() == 1000);
      const TextBox& one = ann.console.Lineweir.Text1;
      const TextBox& other = ben.console.Lineweir.Text1;
      CHECK(one.text == other.text);
      CHECK(one.back_color == other.back_color);
      CHECK(one.fore_color == other.fore_color);
      CHECK(one.text.get().size() <= longest_message);
      CHECK(one.text.get().find("message 999") != std::string::npos);
      const std::string told = without_times(ann.console.FlashMessA.Today.text);
      CHECK(told == without_times(ben.console.FlashMessA.Today.text));
      for (int turn = 0; turn < 1000; ++turn) {
        CHECK(told.find(": message " + std::to_string(turn) + "\n") != std::string::npos);
      }
    }
  }
}

}  // namespace
}  // namespace lineweir::test

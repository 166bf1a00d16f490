#include "exchange/box_exchange.h"

#include <doctest/doctest.h>

#include "exchange/switchboard.h"

#include <vector>

#include "platform/scripted/virtual_event_loop.h"
#include "support/box_cable.h"

using namespace lineweir;
using namespace lineweir::exchange;
using namespace std::chrono_literals;

namespace {

const std::string all_questions = "Q00Q01Q02Q03Q04Q05Q06Q07Q08Q09";

struct Desk {
  explicit Desk(int lines = 10)
      : exchange(std::make_unique<BoxExchange>(loop, lines, [this] { return cable.open(); })) {
    exchange->on_change = [this](LineChange change, const std::string&) { told.push_back(change); };
    exchange->on_reached = [this](bool is_reached) { reached.push_back(is_reached); };
  }

  void wait(platform::Milliseconds span) { loop.advance(span); }
  void hear(const std::string& bytes) { cable.port->on_bytes(bytes); }
  std::string take_sent() { return std::exchange(cable.sent, {}); }
  std::vector<LineChange> take_told() { return std::exchange(told, {}); }

  platform::VirtualEventLoop loop;
  test::BoxCable cable;
  std::vector<LineChange> told;
  std::vector<bool> reached;
  std::unique_ptr<BoxExchange> exchange;
};

using Changes = std::vector<LineChange>;

}  // namespace

TEST_SUITE("exchange/box_exchange") {
  TEST_CASE("the box is asked to report, and for all lines") {
    Desk desk;
    CHECK(desk.cable.opened == 0);
    desk.wait(0ms);
    CHECK(desk.take_sent() == "M" + all_questions);
    CHECK_FALSE(desk.exchange->is_reached());
    desk.hear("Line monitor ON\r\n");
    CHECK_FALSE(desk.exchange->is_reached());
    desk.hear("F00");
    CHECK(desk.exchange->is_reached());
    CHECK(desk.reached == std::vector{true});
  }

  TEST_CASE("of twenty lines those are asked for that the box can tell of") {
    Desk desk(20);
    desk.wait(0ms);
    CHECK(desk.take_sent() == "M" + all_questions);
    CHECK(desk.exchange->line_count() == 20);
    desk.hear("N012");
    CHECK(desk.exchange->letter(12) == 'F');
  }

  TEST_CASE("reports are changes, each once") {
    Desk desk;
    desk.wait(0ms);
    desk.hear("R03N05F01");
    CHECK(desk.take_told() == Changes{{3, 'R'}, {5, 'N'}});
    desk.hear("R03");
    CHECK(desk.take_told().empty());
    desk.hear("H0");
    CHECK(desk.take_told().empty());
    desk.hear("3 noise \xFF");
    CHECK(desk.take_told() == Changes{{3, 'H'}});
    CHECK(desk.exchange->letter(3) == 'H');
    CHECK(desk.exchange->letter(-1) == 'F');
    CHECK(desk.exchange->letter(10) == 'F');
  }

  TEST_CASE("letters that are none are passed over") {
    Desk desk;
    desk.wait(0ms);
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      if (status_letters.find(letter) != std::string_view::npos) continue;
      desk.hear(std::string(1, letter) + "04");
    }
    CHECK(desk.take_told().empty());
    for (const char letter : status_letters.substr(1)) desk.hear(std::string(1, letter) + "04");
    CHECK(desk.take_told().size() == status_letters.size() - 1);
  }

  TEST_CASE("words go out as they stand, and the two positions by their words") {
    Desk desk;
    desk.exchange->obey("N01");
    desk.exchange->take_to_position(1, 0);
    desk.wait(0ms);
    desk.take_sent();
    desk.exchange->obey("N01");
    desk.exchange->take_to_position(7, 0);
    desk.exchange->take_to_position(8, 1);
    desk.exchange->take_to_position(9, 2);
    desk.exchange->take_to_position(9, -1);
    CHECK(desk.take_sent() == "N01P07O08");
    CHECK_FALSE(desk.exchange->arrive(1, {}));
    CHECK_FALSE(desk.exchange->leave(1));
  }

  TEST_CASE("a box that says nothing to two questions in a row is lost, and asked on") {
    Desk desk;
    desk.wait(0ms);
    desk.hear("F00");
    desk.wait(5s);
    CHECK(desk.exchange->is_reached());
    desk.hear("N05");
    desk.wait(15s - 1ms);
    desk.take_sent();
    CHECK(desk.exchange->is_reached());
    desk.wait(1ms);
    CHECK_FALSE(desk.exchange->is_reached());
    CHECK(desk.reached == std::vector{true, false});
    // One that begins anew has to be told to report.
    CHECK(desk.take_sent() == "M" + all_questions);
    // What was last known stands.
    CHECK(desk.exchange->letter(5) == 'N');
    desk.hear("H05");
    CHECK(desk.reached == std::vector{true, false, true});
  }

  TEST_CASE("noise is no answer") {
    Desk desk;
    desk.wait(0ms);
    desk.hear("F00");
    for (int i = 0; i < 20; ++i) {
      desk.wait(1s);
      desk.hear("Line monitor ON ");
    }
    CHECK_FALSE(desk.exchange->is_reached());
  }

  TEST_CASE("noise that looks like a report of a letter that is none is no answer") {
    Desk desk;
    desk.wait(0ms);
    desk.hear("x00");
    CHECK_FALSE(desk.exchange->is_reached());
    desk.hear("F00");
    for (int i = 0; i < 20; ++i) {
      desk.wait(1s);
      desk.hear(
          "x00\xFE"
          "05");
    }
    CHECK_FALSE(desk.exchange->is_reached());
    desk.hear("x00R01");
    CHECK(desk.exchange->is_reached());
  }

  TEST_CASE("a box that sends nothing but noise doesn't fill the memory, and is heard behind it") {
    Desk desk;
    desk.wait(0ms);
    for (int i = 0; i < 10'000; ++i) desk.hear("????????????????");
    desk.hear("R06");
    CHECK(desk.take_told() == Changes{{6, 'R'}});
  }

  TEST_CASE("a port that can't be opened is tried again every two seconds") {
    Desk desk;
    desk.cable.can_be_opened = false;
    desk.wait(5s);
    CHECK(desk.cable.opened == 0);
    desk.exchange->obey("N01");
    desk.cable.can_be_opened = true;
    desk.wait(1s);
    CHECK(desk.cable.opened == 1);
    CHECK(desk.take_sent() == "M" + all_questions);
  }

  TEST_CASE("a port that fails is let go and opened again") {
    Desk desk;
    desk.wait(0ms);
    desk.hear("N05H0");
    desk.cable.port->on_end(platform::ConnectionEnd::Gone);
    CHECK(desk.cable.port == nullptr);
    CHECK(desk.reached == std::vector{true, false});
    CHECK(desk.exchange->letter(5) == 'N');
    desk.exchange->obey("N01");
    desk.take_sent();
    desk.wait(2s);
    CHECK(desk.cable.opened == 2);
    CHECK(desk.take_sent() == "M" + all_questions);
    // Half a report from before isn't the beginning of what comes now.
    desk.take_told();
    desk.hear("5N06");
    CHECK(desk.take_told() == Changes{{6, 'N'}});
  }

  TEST_CASE("words that the slow line can't carry in time are passed over") {
    Desk desk;
    desk.wait(1s);
    desk.take_sent();
    CHECK(desk.exchange->backlog() == 0ms);
    for (int i = 0; i < 1000; ++i) desk.exchange->obey("N01");
    CHECK(desk.exchange->backlog() == 3025ms);
    // Three seconds of 120 characters each, and the word that goes beyond them.
    CHECK(desk.take_sent().size() == 3 * 121);
    desk.wait(100ms);
    for (int i = 0; i < 1000; ++i) desk.exchange->obey("H01");
    CHECK(desk.take_sent().size() == 3 * 4);
    desk.wait(3200ms);
    desk.exchange->obey("N02");
    CHECK(desk.take_sent().substr(0, 3) == "N02");
  }

  TEST_CASE("an exchange that ends leaves nothing on the loop") {
    Desk desk;
    desk.wait(1s);
    desk.exchange.reset();
    CHECK(desk.cable.port == nullptr);
    CHECK(desk.loop.scheduled() == 0);
  }
}

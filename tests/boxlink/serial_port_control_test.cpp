#include "boxlink/serial_port_control.h"

#include <doctest/doctest.h>

#include <chrono>

#include "support/scripted_console.h"

// What happens to the port while the probe waits: its limit is 3 seconds, and that of a box that
// has begun to answer is 5.
namespace lineweir::test {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;

const Words asked_for_all = {"M",   "Q00", "Q01", "Q02", "Q03", "Q04",
                             "Q05", "Q06", "Q07", "Q08", "Q09"};
const std::string silent_box =
    "Error communicating with Brenvox Interface Box!  Check cables and settings!";

struct SerialControlDesk : ScriptedConsole {
  void at(platform::Milliseconds time, std::function<void()> action) {
    platform.loop.schedule(time, std::move(action));
  }
  void click_at(platform::Milliseconds time, const MenuItem& item) {
    at(time, [&item] { item.on_click(); });
  }
  void box_sends_at(platform::Milliseconds time, const std::string& characters) {
    at(time, [this, characters] { platform.comm1.arrive(characters); });
  }
  void box_answers() { platform.comm1.reply("M", "Line monitor ON"); }

  // Clicks, and gives the time that passes until the click is through.
  platform::Milliseconds click(const MenuItem& item) {
    const auto start = platform.loop.now();
    item.on_click();
    return platform.loop.now() - start;
  }

  bool open() const { return platform.comm1.is_open(); }
  MainForm& form() { return console.Lineweir; }
};

void expect_off(SerialControlDesk& desk) {
  CHECK_FALSE(desk.open());
  CHECK(desk.form().Off.checked);
  CHECK_FALSE(desk.form().PortOn.checked);
  CHECK(desk.form().mouse_pointer == pointer_default);
}

TEST_SUITE("boxlink/serial port: clicks while the probe waits") {
  TEST_CASE("Off ends the probe, and the port stays off") {
    for (const bool begun : {false, true}) {
      CAPTURE(begun);
      SerialControlDesk desk;
      if (begun) desk.box_sends_at(500ms, "Line mon");
      desk.click_at(1000ms, desk.form().Off);
      CHECK(desk.click(desk.form().PortOn) < 1200ms);
      expect_off(desk);
      desk.platform.loop.advance(20s);
      expect_off(desk);
      CHECK(desk.take_messages().empty());
      CHECK(desk.platform.comm1.take_writes() == Words{"M"});
    }
  }

  TEST_CASE("Off in the moment in which the box has answered keeps the port off") {
    SerialControlDesk desk;
    desk.box_answers();
    // The answer comes after 20 ms. The clicks come behind it, each one pass of the loop later.
    std::function<void(int)> off_after = [&](int passes) {
      if (passes == 0) return desk.form().Off.on_click();
      desk.at(0ms, [&, passes] { off_after(passes - 1); });
    };
    for (int passes = 0; passes < 6; ++passes) {
      CAPTURE(passes);
      desk.at(20ms, [&, passes] { off_after(passes); });
      desk.click(desk.form().PortOn);
      expect_off(desk);
      desk.platform.loop.advance(20s);
      expect_off(desk);
      CHECK(desk.take_messages().empty());
    }
  }

  TEST_CASE("another port is probed at once, and a box that answers there is not told to be dead") {
    for (const bool begun : {false, true}) {
      CAPTURE(begun);
      SerialControlDesk desk;
      if (begun) desk.box_sends_at(500ms, "noise");
      desk.at(1000ms, [&] {
        desk.box_answers();
        desk.platform.comm1.take_writes();
        desk.form().Com2.on_click();
      });
      CHECK(desk.click(desk.form().PortOn) < 1200ms);
      CHECK(desk.platform.comm1.take_writes() == asked_for_all);
      desk.platform.loop.advance(20s);
      CHECK(desk.take_messages().empty());
      CHECK(desk.open());
      CHECK(desk.platform.comm1.comm_port() == 2);
      CHECK(desk.form().Com2.checked);
      CHECK(desk.form().PortOn.checked);
      CHECK(desk.form().mouse_pointer == pointer_default);
      CHECK(desk.platform.comm1.take_writes().empty());
    }
  }

  TEST_CASE("Off and On again: the second probe is heard") {
    SerialControlDesk desk;
    desk.box_sends_at(100ms, "Line mon");
    desk.click_at(500ms, desk.form().Off);
    desk.at(600ms, [&] {
      desk.box_answers();
      desk.form().PortOn.on_click();
    });
    desk.click(desk.form().PortOn);
    desk.platform.loop.advance(20s);
    CHECK(desk.form().PortOn.checked);
    CHECK(desk.open());
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("the program's end ends the probe, and the port is not opened any more") {
    for (const bool begun : {false, true}) {
      CAPTURE(begun);
      SerialControlDesk desk;
      if (begun) desk.box_sends_at(500ms, "noise");
      desk.click_at(1000ms, desk.form().ExitMenu);
      CHECK(desk.click(desk.form().PortOn) < 1200ms);
      CHECK_FALSE(desk.open());
      CHECK_FALSE(desk.form().visible);
      desk.platform.loop.advance(20s);
      CHECK_FALSE(desk.open());
      CHECK(desk.take_messages().empty());
      CHECK(desk.platform.comm1.take_writes() == Words{"M"});
    }
  }

  TEST_CASE("a line that is unplugged ends the probe with its own message only") {
    for (const bool begun : {false, true}) {
      CAPTURE(begun);
      SerialControlDesk desk;
      if (begun) desk.box_sends_at(500ms, "Line");
      desk.at(1000ms, [&] { desk.platform.comm1.vanish(); });
      CHECK(desk.click(desk.form().PortOn) < 1200ms);
      expect_off(desk);
      desk.platform.loop.advance(20s);
      CHECK(desk.take_messages() == Words{"This Com Port is not available at this time!"});
    }
  }

  TEST_CASE("another way to the equipment ends the probe") {
    SerialControlDesk desk;
    desk.click_at(1000ms, desk.form().NetworkConnectionOption);
    CHECK(desk.click(desk.form().PortOn) < 1200ms);
    expect_off(desk);
    CHECK(desk.take_messages() == Words{"Cannot find server"});
    CHECK(desk.form().Com1.checked);
    CHECK_FALSE(desk.form().NetworkConnectionOption.checked);
  }
}

TEST_SUITE("boxlink/serial port: the answer") {
  TEST_CASE("a box that begins to answer in time has 5 seconds") {
    SerialControlDesk desk;
    desk.box_sends_at(2900ms, "Line mon");
    desk.box_sends_at(4500ms, "itor ON");
    desk.click(desk.form().PortOn);
    CHECK(desk.form().PortOn.checked);
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("an answer behind the limit completes the probe of the start") {
    SerialControlDesk desk;
    desk.console.port.open_at_start();
    CHECK(desk.take_messages() == Words{silent_box});
    CHECK(desk.form().Off.checked);
    desk.platform.comm1.take_writes();
    desk.box_sends_at(5s, "Line monitor ON");
    desk.platform.loop.advance(6s);
    CHECK(desk.form().PortOn.checked);
    CHECK_FALSE(desk.form().Off.checked);
    CHECK(desk.platform.comm1.take_writes() ==
          Words(asked_for_all.begin() + 1, asked_for_all.end()));
    CHECK(desk.form().no_link.get().empty());
    desk.box_sends("R04");
    CHECK(desk.console.lines.StatusLetter(4) == 'R');
  }

  TEST_CASE(
      "an answer behind the start's limit whose port can't be opened again is told as any "
      "failure") {
    SerialControlDesk desk;
    desk.console.port.open_at_start();
    desk.take_messages();
    desk.take_trace();
    desk.platform.comm1.fail_openings(8010, 1);
    desk.platform.comm1.arrive("Line monitor ON");
    desk.platform.loop.advance(1s);
    CHECK(desk.take_messages() == Words{"Could Not Open Port"});
    CHECK(desk.take_trace() == Words{"PortOn_Click Error - Serial port 1 can't be opened"});
    expect_off(desk);
  }

  TEST_CASE(
      "a box that reports lines instead of its answer completes the start's probe, noise doesn't") {
    SerialControlDesk desk;
    desk.console.port.open_at_start();
    desk.platform.comm1.take_writes();
    // The wait for the rest of an answer that has begun ends too.
    desk.box_sends("%&#!");
    desk.platform.loop.advance(6s);
    desk.box_sends("%&#!");
    desk.platform.loop.advance(6s);
    CHECK(desk.form().Off.checked);
    CHECK(desk.platform.comm1.take_writes().empty());
    desk.box_sends("R04");
    CHECK(desk.form().PortOn.checked);
    CHECK(desk.platform.comm1.take_writes() ==
          Words(asked_for_all.begin() + 1, asked_for_all.end()));
  }

  TEST_CASE("behind the limit of a click the menu stays as it was, and the lines are heard") {
    for (const char* heard : {"Line monitor ON", "R03"}) {
      CAPTURE(std::string(heard));
      SerialControlDesk desk;
      desk.click(desk.form().PortOn);
      desk.platform.comm1.take_writes();
      desk.box_sends(heard);
      desk.platform.loop.advance(6s);
      CHECK_FALSE(desk.console.decoder.LineMonitorWait);
      CHECK(desk.form().Off.checked);
      CHECK_FALSE(desk.form().PortOn.checked);
      CHECK(desk.form().no_link.get().empty());
      desk.box_sends("R04");
      CHECK(desk.console.lines.StatusLetter(4) == 'R');
      CHECK(desk.platform.comm1.take_writes().empty());
    }
  }

  TEST_CASE("a port that fails in a way that nobody knows is reported, and then told") {
    SerialControlDesk desk;
    desk.platform.comm1.fail_openings(99, 1);
    desk.click(desk.form().PortOn);
    CHECK(desk.take_messages() == Words{"Could Not Open Port"});
    CHECK(desk.take_trace() == Words{"PortOn_Click Error - Serial port 1 can't be opened",
                                     "PortOn_Click Error - The port is not open"});
    expect_off(desk);
  }

  TEST_CASE("an answer that comes twice is one answer") {
    SerialControlDesk desk;
    desk.platform.comm1.reply("M", "Line monitor ONLine monitor ON");
    desk.click(desk.form().PortOn);
    desk.box_sends("Line monitor ON");
    desk.platform.loop.advance(20s);
    CHECK(desk.form().PortOn.checked);
    CHECK(desk.platform.comm1.take_writes() == asked_for_all);
    desk.box_sends("R04");
    CHECK(desk.console.lines.StatusLetter(4) == 'R');
  }

  TEST_CASE("noise is no box: the port is on, but there is no link") {
    SerialControlDesk desk;
    desk.box_sends_at(100ms, "%&#!");
    desk.click(desk.form().PortOn);
    CHECK(desk.form().PortOn.checked);
    CHECK_FALSE(desk.form().no_link.get().empty());
    desk.box_sends("H02");
    CHECK(desk.form().no_link.get().empty());
  }
}

TEST_SUITE("boxlink/serial port: failures") {
  TEST_CASE("after any failure the pointer is normal and the switch shows what is") {
    for (const int number : {68, 8002, 8005, 8006, 8010, 8012, 8013, 57}) {
      CAPTURE(number);
      SerialControlDesk desk;
      desk.box_answers();
      desk.platform.comm1.fail_openings(number, 1);
      desk.click(desk.form().PortOn);
      expect_off(desk);

      desk.click(desk.form().PortOn);
      REQUIRE(desk.form().PortOn.checked);
      desk.platform.comm1.fail_openings(number, 1);
      desk.click(desk.form().Com3);
      expect_off(desk);
      CHECK(desk.form().Com3.checked);
    }
  }

  TEST_CASE("a click on a port whose box is silent shows the switch as soon as it answers") {
    SerialControlDesk desk;
    desk.click(desk.form().PortOn);
    CHECK(desk.form().Off.checked);
    desk.box_answers();
    desk.click(desk.form().Com1);
    CHECK(desk.form().PortOn.checked);
    CHECK_FALSE(desk.form().Off.checked);
  }

  TEST_CASE("while another port is tried the pointer is an hourglass") {
    SerialControlDesk desk;
    desk.box_answers();
    desk.click(desk.form().PortOn);
    desk.platform.comm1.reply("M", "");
    desk.at(1s, [&] { CHECK(desk.form().mouse_pointer == pointer_hourglass); });
    desk.click(desk.form().Com2);
    CHECK(desk.form().mouse_pointer == pointer_default);
  }

  TEST_CASE("the link is gone as soon as the port is off") {
    SerialControlDesk desk;
    desk.box_answers();
    desk.click(desk.form().PortOn);
    desk.box_sends("R04");
    REQUIRE(desk.form().no_link.get().empty());
    desk.form().Off.on_click();
    CHECK_FALSE(desk.form().no_link.get().empty());
  }

  TEST_CASE("a port that vanishes leaves its reason in the trace") {
    SerialControlDesk desk;
    desk.box_answers();
    desk.click(desk.form().PortOn);
    desk.take_trace();
    desk.platform.comm1.vanish();
    CHECK(desk.take_trace().size() == 1);
  }

  TEST_CASE("choosing a closed port is no wish to have it open") {
    SerialControlDesk desk;
    desk.click(desk.form().Com3);
    CHECK(desk.console.port.choice().number == 3);
    CHECK_FALSE(desk.console.port.choice().on);
  }

  TEST_CASE("where the menu shows no port the one in use counts") {
    SerialControlDesk desk;
    desk.click(desk.form().Com3);
    desk.form().Com3.checked = false;
    CHECK(desk.console.port.choice().number == 3);
  }

  TEST_CASE("who chooses a port, or switches it on, wants no other way any more") {
    constexpr int other_way = 6;
    for (const bool switched_on : {false, true}) {
      CAPTURE(switched_on);
      SerialControlDesk desk;
      desk.console.port.want_other_way(other_way);
      CHECK(desk.console.port.choice().number == other_way);
      CHECK_FALSE(desk.console.port.choice().on);
      desk.click(switched_on ? desk.form().PortOn : desk.form().Com1);
      CHECK(desk.console.port.choice().number == 1);
    }
  }

  TEST_CASE("a port that was on is still wanted when the other way has come to nothing") {
    for (const bool was_on : {false, true}) {
      CAPTURE(was_on);
      SerialControlDesk desk;
      desk.form().PortOn.checked = was_on;
      desk.console.port.show_as_way();
      CHECK(desk.form().Off.checked);
      CHECK_FALSE(desk.form().PortOn.checked);
      CHECK(desk.console.port.choice().on == was_on);
    }
  }

  TEST_CASE("what the settings keep is the user's choice") {
    SerialControlDesk desk;
    const auto choice = [&] { return desk.console.port.choice(); };
    CHECK_FALSE(choice().on);
    desk.platform.comm1.fail_openings(8010, 1);
    desk.click(desk.form().Com2);
    desk.click(desk.form().PortOn);
    CHECK(desk.form().Off.checked);
    CHECK(choice().on);
    CHECK(choice().number == 2);
    desk.click(desk.form().Com4);
    CHECK(choice().on);
    CHECK(choice().number == 4);
    desk.click(desk.form().PortOn);
    CHECK(desk.form().Off.checked);
    CHECK(choice().on);
    desk.click(desk.form().Off);
    CHECK_FALSE(choice().on);

    desk.box_answers();
    desk.click(desk.form().PortOn);
    desk.platform.comm1.vanish();
    CHECK(desk.form().Off.checked);
    CHECK(choice().on);
    CHECK(choice().number == 4);
  }
}

}  // namespace
}  // namespace lineweir::test

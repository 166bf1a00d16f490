#include "link/link_watch.h"

#include <doctest/doctest.h>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

constexpr const char* port_closed =
    "There is no link: the port is off, switch it on in the menu Port.";
constexpr const char* box_silent =
    "There is no link: the interface box hasn't answered. What you press is sent, and nobody knows "
    "what comes of it; check cables and settings and choose its port again.";
constexpr const char* not_connected = "There is no link: the server isn't connected.";
constexpr const char* no_objects =
    "There is no link: the server's objects are gone, choose Network in the menu Port.";

struct LinkDesk : ScriptedConsole {
  std::vector<std::string> told;

  LinkDesk() {
    console.link.on_nothing_comes = [this](const std::string& why) { told.push_back(why); };
  }

  MainForm& form() { return console.Lineweir; }
  const std::string& no_link() { return form().no_link; }
};

TEST_SUITE("link/link watch") {
  TEST_CASE("without a way, and with the objects gone, there is no link") {
    LinkDesk desk;
    for (int number = 1; number <= 4; ++number) desk.form().Com(number).checked = false;
    CHECK(desk.no_link() == "There is no link: choose one in the menu Port.");
    desk.form().NetworkConnectionOption.checked = true;
    CHECK(desk.no_link() == no_objects);
    // What the other ways have is nothing to it.
    desk.platform.comm1.open();
    desk.form().NetworkConnectionOption.checked = false;
    CHECK(desk.no_link() == box_silent);
    desk.box_sends("F00");
    CHECK(desk.no_link().empty());
    desk.form().WinsockMenu.checked = true;
    CHECK(desk.no_link() == not_connected);
  }

  TEST_CASE("the main form says why there is no link, from the start on and through each change") {
    LinkDesk desk;
    CHECK(desk.no_link() == port_closed);
    desk.form().PortOn.on_click();
    CHECK(desk.no_link() == box_silent);
    desk.form().Off.on_click();
    CHECK(desk.no_link() == port_closed);
    desk.platform.comm1.reply("M", "Line monitor ON");
    desk.form().PortOn.on_click();
    CHECK(desk.no_link().empty());
    // A new port has a box of its own.
    desk.platform.comm1.reply("M", "");
    desk.form().Com2.on_click();
    CHECK(desk.no_link() == box_silent);
    desk.platform.comm1.arrive("F00");
    desk.platform.loop.advance(std::chrono::seconds(6));
    desk.platform.comm1.arrive("F00");
    desk.platform.loop.advance(std::chrono::seconds(1));
    CHECK(desk.no_link().empty());
    desk.platform.comm1.vanish();
    CHECK(desk.no_link() == port_closed);
  }

  TEST_CASE("the remote objects are a link while they are held") {
    LinkDesk desk;
    desk.form().NetworkConnectionOption.on_click();
    CHECK(desk.no_link() == port_closed);
    desk.platform.remote_objects.set_present(true);
    desk.platform.remote_objects.set_result("AddObjectReference", true);
    desk.platform.remote_objects.set_result("DropObjectReference", true);
    desk.form().NetworkConnectionOption.on_click();
    CHECK(desk.no_link().empty());
    desk.form().Com1.on_click();
    CHECK(desk.no_link() == port_closed);
  }

  TEST_CASE("the socket is a link while it is connected; a tick finds out what no event tells") {
    LinkDesk desk;
    desk.platform.winsock1.accept_connections(true);
    desk.platform.winsock1.connect("server", 2001);
    desk.platform.loop.advance(std::chrono::milliseconds(200));
    REQUIRE(desk.form().WinsockMenu.checked);
    CHECK(desk.no_link().empty());
    desk.platform.winsock1.close();
    desk.platform.loop.advance(std::chrono::milliseconds(100));
    CHECK(desk.no_link() == not_connected);
  }

  TEST_CASE("a press without a link is told once, and not at all while there is one") {
    LinkDesk desk;
    for (const int line : {1, 2, 3}) desk.console.lines.StatusLetter(line) = 'N';
    desk.form().Drop1.on_click();
    CHECK(desk.told == std::vector{std::string(port_closed)});
    desk.platform.loop.run_pending();
    desk.form().OnHybrid1(4).on_click();
    CHECK(desk.told.size() == 2);
    desk.platform.loop.run_pending();
    desk.platform.comm1.reply("M", "Line monitor ON");
    desk.form().PortOn.on_click();
    desk.form().OnHybrid1(4).on_click();
    CHECK(desk.told.size() == 2);
  }

  TEST_CASE("what nobody has pressed is not told") {
    LinkDesk desk;
    desk.form().RemoteNext.on_click();
    desk.platform.loop.advance(std::chrono::minutes(2));
    CHECK(desk.told.empty());
  }
}

}  // namespace
}  // namespace lineweir::test

#include "core/link_state.h"

#include <doctest/doctest.h>

#include <set>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_SUITE("core/link state") {
  TEST_CASE("the port is a link when it is open and its box was heard") {
    for (const bool open : {false, true}) {
      for (const bool heard : {false, true}) {
        // What the other ways have is nothing to it.
        const LinkFacts facts{LinkWay::SerialPort, open, heard, platform::socket_connected, true};
        const LinkState expected = !open    ? LinkState::PortClosed
                                   : !heard ? LinkState::BoxSilent
                                            : LinkState::Stands;
        CHECK(link_state(facts) == expected);
      }
    }
  }

  TEST_CASE("the socket is one when it is connected, the remote objects when they are held") {
    LinkFacts socket{LinkWay::Socket, true, true, platform::socket_closed, true};
    CHECK(link_state(socket) == LinkState::NotConnected);
    socket.socket_state = platform::socket_connecting;
    CHECK(link_state(socket) == LinkState::NotConnected);
    socket.socket_state = platform::socket_connected;
    CHECK(link_state(socket) == LinkState::Stands);

    LinkFacts objects{LinkWay::RemoteObjects, true, true, platform::socket_connected, false};
    CHECK(link_state(objects) == LinkState::NoObjects);
    objects.objects_held = true;
    CHECK(link_state(objects) == LinkState::Stands);
  }

  TEST_CASE("without a way there is no link") {
    CHECK(link_state({LinkWay::None, true, true, platform::socket_connected, true}) ==
          LinkState::NoWayChosen);
  }

  TEST_CASE("each trouble has a sentence of its own, and a link that stands has none") {
    CHECK(trouble_of(LinkState::Stands).empty());
    std::set<std::string_view> sentences;
    for (const LinkState state :
         {LinkState::NoWayChosen, LinkState::PortClosed, LinkState::BoxSilent,
          LinkState::NotConnected, LinkState::NoObjects}) {
      CHECK(trouble_of(state).starts_with("There is no link: "));
      sentences.insert(trouble_of(state));
    }
    CHECK(sentences.size() == 5);
  }
}

struct LinkDesk : ScriptedConsole {
  std::vector<std::string> told;

  LinkDesk() {
    console.link.on_nothing_comes = [this](const std::string& why) { told.push_back(why); };
  }

  MainForm& form() { return console.Lineweir; }
  const std::string& no_link() { return form().no_link; }
};

TEST_SUITE("core/link watch") {
  TEST_CASE("the main form says why there is no link, from the start on and through each change") {
    LinkDesk desk;
    CHECK(desk.no_link() == trouble_of(LinkState::PortClosed));
    desk.form().PortOn.on_click();
    CHECK(desk.no_link() == trouble_of(LinkState::BoxSilent));
    desk.form().Off.on_click();
    CHECK(desk.no_link() == trouble_of(LinkState::PortClosed));
    desk.platform.comm1.reply("M", "Line monitor ON");
    desk.form().PortOn.on_click();
    CHECK(desk.no_link().empty());
    // A new port has a box of its own.
    desk.platform.comm1.reply("M", "");
    desk.form().Com2.on_click();
    CHECK(desk.no_link() == trouble_of(LinkState::BoxSilent));
    desk.platform.comm1.arrive("F00");
    desk.platform.loop.advance(std::chrono::seconds(6));
    desk.platform.comm1.arrive("F00");
    desk.platform.loop.advance(std::chrono::seconds(1));
    CHECK(desk.no_link().empty());
    desk.platform.comm1.vanish();
    CHECK(desk.no_link() == trouble_of(LinkState::PortClosed));
  }

  TEST_CASE("the remote objects are a link while they are held") {
    LinkDesk desk;
    desk.form().NetworkConnectionOption.on_click();
    CHECK(desk.no_link() == trouble_of(LinkState::PortClosed));
    desk.platform.remote_objects.set_present(true);
    desk.platform.remote_objects.set_result("AddObjectReference", true);
    desk.platform.remote_objects.set_result("DropObjectReference", true);
    desk.form().NetworkConnectionOption.on_click();
    CHECK(desk.no_link().empty());
    desk.form().Com1.on_click();
    CHECK(desk.no_link() == trouble_of(LinkState::PortClosed));
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
    CHECK(desk.no_link() == trouble_of(LinkState::NotConnected));
  }

  TEST_CASE("a press without a link is told once, and not at all while there is one") {
    LinkDesk desk;
    for (const int line : {1, 2, 3}) desk.console.lines.StatusLetter(line) = 'N';
    desk.form().Drop1.on_click();
    CHECK(desk.told == std::vector{std::string(trouble_of(LinkState::PortClosed))});
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

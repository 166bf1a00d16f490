// A connection of which the platform knows why it was refused.

#include <doctest/doctest.h>

#include "serverlink/server_connection.h"
#include "support/scripted_console.h"

namespace lineweir {
namespace {

using platform::Milliseconds;

constexpr const char* why = "The certificate of studio.example expired on 2025-12-31.";

struct RefusedDesk : test::ScriptedConsole {
  RefusedDesk() : ScriptedConsole("") {
    platform.winsock1.refuse_connections(why);
    console.Lineweir.WinsockMenu.on_click();
    console.WinsockOptions.Text1.text = "tls:studio.example";
    console.WinsockOptions.Text2.text = "2001";
    take_messages();
  }
};

TEST_SUITE("a refused connection") {
  TEST_CASE("the user is told at once why, in place of that there is no server") {
    RefusedDesk desk;
    const Milliseconds before = desk.platform.loop.now();
    desk.console.WinsockOptions.SockConnect.on_click();
    CHECK(desk.take_messages() == std::vector<std::string>{why});
    CHECK(desk.platform.loop.now() - before < Milliseconds{1000});
    CHECK(desk.console.Lineweir.mouse_pointer == pointer_default);
    CHECK(desk.platform.winsock1.host() == "tls:studio.example");
    CHECK(desk.console.WinsockOptions.visible);
  }

  TEST_CASE("one that is tried again is told again") {
    RefusedDesk desk;
    std::vector<std::string> told;
    desk.platform.dialogs.on_message = [&](const std::string& text) { told.push_back(text); };
    desk.console.MyMsgbox.ReconnectButton.on_click();
    CHECK(told == std::vector<std::string>{why});
  }

  TEST_CASE("one that the user is asked about has no message besides") {
    RefusedDesk desk;
    std::vector<std::string> told;
    desk.platform.dialogs.on_message = [&](const std::string& text) { told.push_back(text); };
    desk.platform.winsock1.refuse_connections(why, true);
    desk.console.WinsockOptions.SockConnect.on_click();
    desk.console.MyMsgbox.ReconnectButton.on_click();
    CHECK(desk.take_messages().empty());
    CHECK(told.empty());
    CHECK(desk.console.Lineweir.mouse_pointer == pointer_default);
  }

  TEST_CASE("what was refused before says nothing of the next one") {
    RefusedDesk desk;
    desk.console.WinsockOptions.SockConnect.on_click();
    desk.take_messages();
    desk.platform.winsock1.refuse_connections({});
    desk.console.WinsockOptions.SockConnect.on_click();
    CHECK(desk.take_messages() == std::vector<std::string>{std::string(no_server_message)});
  }
}

}  // namespace
}  // namespace lineweir

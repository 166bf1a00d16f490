// A console that works with a studio over the bus, in mid-show: the studio's server is killed,
// stopped and started again.

#include <doctest/doctest.h>

#include <optional>

#include "core/console.h"
#include "dbus/private_bus.h"
#include "dbus/studio_process.h"
#include "letters/code_page_letters.h"
#include "letters/code_pages.h"
#include "platform/qt/dbus_remote_objects.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "platform/waiting.h"

using namespace lineweir;
using lineweir::test::PrivateBus;
using lineweir::test::StudioProcess;

namespace {

struct RemoteDesk {
  RemoteDesk() {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("");
    studio.emplace();
    console.Lineweir.NetworkConnectionOption.on_click();
  }

  bool wait(const std::function<bool()>& condition) { return wait_until(loop, condition); }
  bool shows(int line, char letter) {
    return wait([this, line, letter] { return console.lines.StatusLetter(line) == letter; });
  }
  bool lost() const { return console.Lineweir.ServerSilence.visible; }

  PrivateBus bus;
  platform::QtEventLoop loop;
  CodePageLetters letters{default_code_page()};
  platform::DBusRemoteObjects remote_objects{loop, letters};
  platform::ScriptedPlatform workstation;
  std::vector<std::string> messages;
  Console console{platform::services_with(workstation.services(),
                                          {.loop = &loop, .remote_objects = &remote_objects})};
  std::optional<StudioProcess> studio;
};

}  // namespace

TEST_SUITE("a console on a bus") {
  TEST_CASE_FIXTURE(RemoteDesk, "it shows what the studio pushes, and its commands arrive") {
    CHECK(messages.empty());
    CHECK(console.Lineweir.NetworkConnectionOption.checked);
    CHECK(console.Lineweir.no_link.get().empty());
    CHECK(console.Lineweir.StudioGr(0).caption == "Morning");
    studio->tell("status F00R01F02F03F04F05F06F07F08F09");
    CHECK(shows(1, 'R'));
    console.phone.PhoneCommand("P01", bank_main);
    console.phone.PhoneCommand("S01", bank_main);
    CHECK(wait([this] { return studio->has_said_something(); }));
    CHECK(studio->next_line() == "P01");
    CHECK(studio->next_line() == "S01");
  }

  TEST_CASE_FIXTURE(RemoteDesk,
                    "a studio that is killed is missed, and taken over anew when it is back") {
    studio->tell("status F00R01F02F03F04F05F06F07F08F09");
    CHECK(shows(1, 'R'));
    studio->kill();
    CHECK(wait([this] { return lost(); }));
    CHECK_FALSE(console.Lineweir.no_link.get().empty());
    CHECK(console.Lineweir.Shape1.fill_color == color_red);
    CHECK(console.MyMsgbox.ReconnectButton.visible);
    CHECK(console.Lineweir.NetworkConnectionOption.checked);
    studio.emplace();
    CHECK(wait([this] { return !lost(); }));
    CHECK(console.Lineweir.no_link.get().empty());
    CHECK(console.Lineweir.Shape1.fill_color == color_green);
    CHECK_FALSE(console.MyMsgbox.visible);
    CHECK(shows(1, ' '));
    studio->tell("push F00F01R02F03F04F05F06F07F08F09");
    CHECK(shows(2, 'R'));
  }

  TEST_CASE_FIXTURE(RemoteDesk,
                    "a studio that stands still is missed, no key acts, and it goes on with it") {
    studio->stop();
    CHECK(wait([this] { return lost(); }));
    messages.clear();
    console.phone.PhoneCommand("P01", bank_main);
    studio->go_on();
    CHECK(wait([this] { return !lost(); }));
    console.phone.PhoneCommand("S02", bank_main);
    CHECK(wait([this] { return studio->has_said_something(); }));
    CHECK(studio->next_line() == "S02");
  }

  TEST_CASE_FIXTURE(RemoteDesk, "another way may be chosen while the studio is lost") {
    studio->kill();
    CHECK(wait([this] { return lost(); }));
    console.Lineweir.Com1.on_click();
    CHECK_FALSE(lost());
    CHECK_FALSE(console.Lineweir.NetworkConnectionOption.checked);
    studio.emplace();
    run_for(loop, platform::Milliseconds{300});
    CHECK_FALSE(console.Lineweir.NetworkConnectionOption.checked);
  }

  TEST_CASE_FIXTURE(
      RemoteDesk, "a studio that dies in the middle of the connect leaves no link and no banner") {
    console.Lineweir.Com1.on_click();
    studio->tell("die GetDimType");
    messages.clear();
    console.Lineweir.NetworkConnectionOption.on_click();
    run_for(loop, platform::Milliseconds{200});
    CHECK(messages == std::vector<std::string>{"Connect Failed"});
    CHECK_FALSE(console.Lineweir.NetworkConnectionOption.checked);
    CHECK_FALSE(lost());
    CHECK(console.Lineweir.mouse_pointer == pointer_default);
    studio.emplace();
    console.Lineweir.NetworkConnectionOption.on_click();
    CHECK(console.Lineweir.no_link.get().empty());
  }

  TEST_CASE_FIXTURE(RemoteDesk,
                    "a bus that goes and comes again at its address is taken up by itself") {
    bus.kill();
    CHECK(wait([this] { return lost(); }));
    bus.start_again();
    studio.emplace();
    CHECK(wait([this] { return !lost(); }));
    CHECK(console.Lineweir.no_link.get().empty());
    studio->tell("push F00R01F02F03F04F05F06F07F08F09");
    CHECK(shows(1, 'R'));
  }

  TEST_CASE_FIXTURE(RemoteDesk,
                    "a console that has left the studio doesn't act on what it pushes") {
    SUBCASE("for a serial port") { console.Lineweir.Com1.on_click(); }
    SUBCASE("for a socket") { console.Lineweir.WinsockMenu.on_click(); }
    studio->tell("push F00R01F02F03F04F05F06F07F08F09");
    run_for(loop, platform::Milliseconds{300});
    CHECK(console.lines.StatusLetter(1) == ' ');
  }

  TEST_CASE_FIXTURE(RemoteDesk, "a lost studio is left at once") {
    studio->stop();
    CHECK(wait([this] { return lost(); }));
    messages.clear();
    const auto before = loop.now();
    console.Lineweir.Com1.on_click();
    CHECK(loop.now() - before < platform::DBusRemoteObjects::answer_limit);
    CHECK(messages.empty());
    CHECK(console.Lineweir.Com1.checked);
  }

  TEST_CASE_FIXTURE(RemoteDesk, "the way may be left while the connect waits") {
    console.Lineweir.Com1.on_click();
    studio->stop();
    messages.clear();
    loop.schedule(platform::Milliseconds{50}, [this] {
      console.Lineweir.Com1.on_click();
      studio->go_on();
    });
    console.Lineweir.NetworkConnectionOption.on_click();
    CHECK_FALSE(console.Lineweir.NetworkConnectionOption.checked);
    CHECK(console.Lineweir.mouse_pointer == pointer_default);
    CHECK(console.Lineweir.Com1.checked);
  }
}

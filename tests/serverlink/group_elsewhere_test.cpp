// A studio that another server has than the one that was asked.

#include <doctest/doctest.h>

#include "several_servers_desk.h"
#include "wire/group_elsewhere.h"

namespace lineweir::test {
namespace {

using Server = SeveralServersDesk::Server;
using Texts = SeveralServersDesk::Texts;
using platform::Milliseconds;

struct ElsewhereDesk : SeveralServersDesk {
  explicit ElsewhereDesk(const std::string& address = "one") : SeveralServersDesk(address) {
    stand();
  }
  void send_to(const std::string& address, std::uint8_t group = 1,
               std::uint8_t mark = group_elsewhere_mark) {
    ServerPacket packet = server_packet(ServerCommand::SrvGroupElsewhere, address);
    packet.GroupNo = group;
    packet.Bank = mark;
    platform.winsock1.arrive(frame_of(std::move(packet)));
  }
  // The former server's conversation with the person.
  void say(const std::string& text) {
    platform.winsock1.arrive(frame(ServerCommand::SrvMessage, text, no_value));
  }
};

TEST_SUITE("a studio of another server") {
  TEST_CASE("the console is there by itself, and the typed address stays") {
    ElsewhereDesk desk;
    desk.send_to("two:2002");
    CHECK(desk.until_in_at("two") < Milliseconds(500));
    CHECK(desk.take_connects() == Texts{"two:2002"});
    CHECK(desk.form().linked_to.get().starts_with("two, port 2002, since "));
    CHECK(desk.console.login.ServerHost == "one");
    CHECK_FALSE(desk.form().ServerSilence.visible);
    CHECK(desk.told.empty());
  }

  TEST_CASE("a server that means something else by that code leads nobody away") {
    ElsewhereDesk desk;
    desk.send_to("two:2002", 1, no_value);
    desk.platform.loop.advance(Milliseconds(2000));
    CHECK(desk.take_connects().empty());
    CHECK(desk.told.empty());
  }

  TEST_CASE("while it connects it says where the studio is") {
    ElsewhereDesk desk;
    desk.set("two", Server::Silent);
    std::string said;
    desk.platform.loop.schedule(Milliseconds(300), [&] {
      if (desk.form().ServerSilence.visible) said = desk.form().ServerSilence.caption;
    });
    desk.send_to("two:2002");
    desk.pass(Milliseconds(10'000));
    CHECK(said.ends_with("is served at two, port 2002, connecting there"));
    CHECK_FALSE(desk.form().ServerSilence.visible);
  }

  TEST_CASE("a server that isn't there leaves the user in the studio before, and is told once") {
    for (const Server two : {Server::Refuses, Server::Silent, Server::HangsUp}) {
      ElsewhereDesk desk;
      desk.set("two", two);
      desk.console.login.GroupLeft = 1;
      desk.console.program.GroupNumber = 2;
      desk.send_to("two:2002", 2);
      desk.pass(Milliseconds(20'000));
      CHECK(desk.take_connects() == Texts{"two:2002", "one:2001"});
      CHECK(desk.console.program.GroupNumber == 1);
      CHECK(desk.is_in());
      CHECK_FALSE(desk.form().ServerSilence.visible);
      CHECK(desk.form().Shape1.fill_color == color_green);
      CHECK(desk.console.MyMsgbox.Label1.caption.get() ==
            "Group 2 is served at two, port 2002, which isn't there now. The console is "
            "back in Group 1.");
    }
  }

  TEST_CASE("who was sent by a server away goes back to it, also where the known address is dead") {
    ElsewhereDesk desk;
    desk.send_to("two:2002");
    REQUIRE(desk.until_in_at("two") < Milliseconds(500));
    desk.pass(Milliseconds(5000));
    desk.take_connects();
    desk.set("one", Server::Refuses);
    desk.console.login.GroupLeft = 2;
    desk.console.program.GroupNumber = 1;
    // The other server sends to the first one, which isn't there.
    desk.send_to("one:2001");
    desk.pass(Milliseconds(20'000));
    CHECK(desk.take_connects() == Texts{"one:2001", "two:2002"});
    CHECK(desk.console.program.GroupNumber == 2);
    CHECK(desk.is_in());
    CHECK(desk.console.MyMsgbox.Label1.caption.get().ends_with(
        "which isn't there now. The console is back in Group 2."));
  }

  TEST_CASE("where no server is there at all the console goes on looking by itself") {
    ElsewhereDesk desk;
    desk.set("two", Server::Refuses);
    desk.set("one", Server::Refuses);
    desk.console.login.GroupLeft = 1;
    desk.send_to("two:2002");
    desk.pass(Milliseconds(10'000));
    CHECK_FALSE(desk.is_in());
    CHECK(desk.form().ServerSilence.visible);
    desk.set("one", Server::Accepts);
    CHECK(desk.until_in_at("one") < Milliseconds(3000));
  }

  TEST_CASE("where no server is there, the one that has sent the console away is looked for too") {
    ElsewhereDesk desk;
    desk.send_to("two:2002");
    REQUIRE(desk.until_in_at("two") < Milliseconds(500));
    desk.set("one", Server::Refuses);
    desk.set("two", Server::Refuses);
    desk.console.login.GroupLeft = 2;
    desk.send_to("one:2001");
    desk.pass(Milliseconds(10'000));
    CHECK_FALSE(desk.is_in());
    CHECK(desk.form().ServerSilence.visible);
    desk.set("two", Server::Accepts);
    CHECK(desk.until_in_at("two") < Milliseconds(3000));
  }

  TEST_CASE("a server that dies before its heartbeat is known is missed all the same") {
    ElsewhereDesk desk;
    desk.send_to("two:2002");
    REQUIRE(desk.until_in_at("two") < Milliseconds(500));
    desk.pass(Milliseconds(300));
    SUBCASE("its connection ends") { desk.kill("two"); }
    SUBCASE("it falls silent") {
      desk.beats = false;
      desk.set("two", Server::Silent);
      desk.pass(Milliseconds(2000));
    }
    desk.pass(Milliseconds(2000));
    CHECK(desk.form().ServerSilence.visible);
    desk.beats = true;
    desk.set("two", Server::Accepts);
    CHECK(desk.until_in_at("two") < Milliseconds(6000));
  }

  TEST_CASE("a server that dies again as soon as the console is back is missed at once") {
    SeveralServersDesk desk;
    desk.stand();
    desk.kill("one");
    REQUIRE(desk.until_in_at("two") < Milliseconds(3000));
    desk.set("one", Server::Accepts);
    desk.kill("two");
    CHECK(desk.until_in_at("one") < Milliseconds(3000));
  }

  TEST_CASE("of servers that stand in for each other the other one is asked at once") {
    ElsewhereDesk desk("one, two");
    desk.send_to("two:2001");
    REQUIRE(desk.until_in_at("two") < Milliseconds(500));
    desk.pass(Milliseconds(5000));
    desk.set("two", Server::Silent);
    desk.platform.winsock1.drop();
    CHECK(desk.until_in_at("one") < Milliseconds(4000));
  }

  TEST_CASE("who comes back by itself keeps the studio, whatever profile was saved before") {
    ElsewhereDesk desk;
    const auto profile_comes = [&]() -> bool { return desk.form().UserProfileTimer.enabled; };
    const int group = desk.console.program.GroupNumber;
    // It was saved in another group.
    desk.console.program.GroupNumber = group + 1;
    const std::string profile = desk.console.user_profile.PrepareUserData("Ann");
    desk.console.program.GroupNumber = group;
    desk.reply(ClientCommand::CmdPasswordLogin, ServerCommand::SrvPasswordResult,
               std::string(all_rights) + profile, 'T');
    SUBCASE("to the server that it had") {
      desk.kill("one");
      desk.pass(Milliseconds(4000));
      desk.set("one", Server::Accepts);
      REQUIRE(desk.until_in_at("one") < Milliseconds(5000));
    }
    SUBCASE("to a studio that was chosen") {
      desk.console.login.GroupLeft = 2;
      desk.send_to("two:2002");
      REQUIRE(desk.until_in_at("two") < Milliseconds(500));
    }
    CHECK_FALSE(profile_comes());
    desk.pass(Milliseconds(2000));
    CHECK(desk.console.program.GroupNumber == group);
  }

  TEST_CASE("who was in no studio before is brought to one that is open") {
    ElsewhereDesk desk;
    desk.set("two", Server::Refuses);
    desk.platform.winsock1.take_writes();
    desk.send_to("two:2002");
    desk.pass(Milliseconds(5'000));
    bool asked = false;
    for (const std::string& frame : desk.platform.winsock1.take_writes()) {
      const auto code =
          static_cast<ClientCommand>(packet_of(frame.substr(2, frame.size() - 4)).CMD);
      asked = asked || code == ClientCommand::CmdRequestFirstUnblocked;
    }
    CHECK(asked);
  }

  TEST_CASE("what is of another group, no address, or without TLS behind it, sends nobody away") {
    ElsewhereDesk desk("tls:one");
    desk.send_to("tls:two:2002", 2);
    desk.send_to("");
    desk.send_to("two:2002");
    desk.pass(Milliseconds(1000));
    CHECK(desk.take_connects().empty());
    CHECK(desk.platform.winsock1.host() == "tls:one");
    desk.send_to("tls:two:2002");
    CHECK(desk.until_in_at("tls:two") < Milliseconds(500));
  }

  TEST_CASE("one that is lost is looked for alone for a while, and then where it is known") {
    ElsewhereDesk desk;
    desk.send_to("two:2002");
    REQUIRE(desk.until_in_at("two") < Milliseconds(500));
    desk.pass(Milliseconds(5000));
    desk.kill("two");
    desk.pass(Milliseconds(3'500));
    const Texts early = desk.take_connects();
    CHECK(std::ranges::count(early, "one:2001") == 0);
    CHECK(std::ranges::count(early, "two:2002") > 2);
    SUBCASE("it comes back") {
      desk.set("two", Server::Accepts);
      CHECK(desk.until_in_at("two") < Milliseconds(2500));
    }
    SUBCASE("the studio is at the first one now") {
      CHECK(desk.until_in_at("one") < Milliseconds(3'000));
    }
    SUBCASE("the first one doesn't know better, and is asked more and more rarely") {
      for (int second = 0; second < 60; ++second) {
        desk.pass(Milliseconds(1000));
        if (desk.platform.winsock1.host() == "one" && desk.is_in()) desk.send_to("two:2002");
      }
      const auto asked = std::ranges::count(desk.take_connects(), "one:2001");
      CHECK(asked >= 2);
      CHECK(asked <= 6);
    }
  }
}

}  // namespace
}  // namespace lineweir::test

// Connecting by hand where the address names several servers.

#include <doctest/doctest.h>

#include "serverlink/server_connection.h"
#include "several_servers_desk.h"
#include "state/settings_record.h"

namespace lineweir::test {
namespace {

using ServersDesk = SeveralServersDesk;
using Server = ServersDesk::Server;
using Texts = ServersDesk::Texts;
using platform::Milliseconds;

TEST_SUITE("several servers, by hand") {
  TEST_CASE("the first that answers is taken") {
    ServersDesk desk("one, two:2002, three");
    SUBCASE("the first") {
      desk.connect();
      CHECK(desk.take_connects() == Texts{"one:2001"});
    }
    SUBCASE("the second, where the first takes no connection") {
      desk.set("one", Server::Refuses);
      desk.connect();
      CHECK(desk.take_connects() == Texts{"one:2001", "two:2002"});
    }
    SUBCASE("the third, where the first is silent and the second hangs up") {
      desk.set("one", Server::Silent);
      desk.set("two", Server::HangsUp);
      desk.connect();
      CHECK(desk.take_connects() == Texts{"one:2001", "two:2002", "three:2001"});
    }
    SUBCASE("the third, where the first says nothing and the second has a doubtful name") {
      desk.set("one", Server::Mute);
      desk.platform.winsock1.refuse_at("two", "The certificate of two has expired.");
      desk.connect();
      CHECK(desk.take_connects() == Texts{"one:2001", "two:2002", "three:2001"});
    }
    CHECK(desk.console.login.SessionBegun);
    CHECK(desk.take_messages().empty());
    desk.pass(Milliseconds(1000));
    CHECK(desk.is_in());
    CHECK(desk.form().mouse_pointer == pointer_default);
    CHECK_FALSE(desk.form().ServerSilence.visible);
  }

  TEST_CASE(
      "nobody waits longer than for one server, and the foot of the window says what goes on") {
    for (const int servers : {2, 3, 5}) {
      CAPTURE(servers);
      std::string address;
      for (int i = 1; i <= servers; ++i) address += "s" + std::to_string(i) + ",";
      ServersDesk desk(address);
      for (int i = 1; i <= servers; ++i) desk.set("s" + std::to_string(i), Server::Silent);
      Texts seen;
      desk.platform.loop.schedule(Milliseconds(100), [&] {
        CHECK(desk.form().ServerSilence.visible);
        seen.push_back(desk.form().ServerSilence.caption);
      });
      desk.platform.loop.schedule(Milliseconds(4900),
                                  [&] { seen.push_back(desk.form().ServerSilence.caption); });
      const Milliseconds before = desk.platform.loop.now();
      desk.connect();
      CHECK(desk.platform.loop.now() - before < Milliseconds(5600));
      const std::string count = std::to_string(servers);
      CHECK(seen == Texts{"Trying s1, port 2001 (1 of " + count + ")",
                          "Trying s" + count + ", port 2001 (" + count + " of " + count + ")"});
      CHECK_FALSE(desk.form().ServerSilence.visible);
    }
  }

  TEST_CASE("what failed is told of each server") {
    ServersDesk desk("one, two:2002, tls:three, four");
    desk.set("one", Server::Refuses);
    desk.set("two", Server::Silent);
    desk.platform.winsock1.refuse_at("tls:three", "The certificate of three has expired.");
    desk.set("four", Server::HangsUp);
    desk.connect();
    CHECK(desk.take_messages() ==
          Texts{"Error communicating remote socket! No Server Available!\n"
                "one, port 2001: It can't be reached.\n"
                "two, port 2002: No answer.\n"
                "tls:three, port 2001: The certificate of three has expired.\n"
                "four, port 2001: It has ended the connection."});
    CHECK(desk.console.WinsockOptions.visible);
    CHECK(desk.form().mouse_pointer == pointer_default);
    // Tried again by the box's button, it is told in the same words.
    desk.console.MyMsgbox.ReconnectButton.on_click();
    REQUIRE(desk.told.size() == 1);
    CHECK(desk.told[0].find("\nfour, port 2001: ") != std::string::npos);
  }

  TEST_CASE("one server fails in the words and the time of ever, whatever stands around it") {
    for (const char* address : {"one", " one ,", "one, ONE,one:2001", ",,one,,"}) {
      CAPTURE(address);
      ServersDesk desk(address);
      desk.set("one", Server::Refuses);
      const Milliseconds before = desk.platform.loop.now();
      desk.connect();
      CHECK(desk.take_messages() == Texts{std::string(no_server_message)});
      CHECK(desk.platform.loop.now() - before >= Milliseconds(5000));
      CHECK(desk.take_connects() == Texts{"one:2001"});
      CHECK_FALSE(desk.form().ServerSilence.visible);
    }
  }

  TEST_CASE("an address that can't be is told, and nothing is connected to") {
    ServersDesk desk("one, two:http");
    desk.connect();
    CHECK(desk.take_messages() ==
          Texts{"The port in the address \"two:http\" isn't a number from 1 to 65535."});
    CHECK(desk.take_connects().empty());
    CHECK(desk.console.WinsockOptions.visible);
    CHECK(desk.console.login.ServerHost == "127.0.0.1");
    CHECK(desk.form().mouse_pointer == pointer_default);
  }

  TEST_CASE("a refused login asks no other server") {
    ServersDesk desk;
    desk.reply(ClientCommand::CmdLoginCheck, ServerCommand::SrvLoginCheckResult, "", 'T');
    desk.connect();
    CHECK(desk.take_connects() == Texts{"one:2001"});
    CHECK(desk.console.LoginForm.visible);
    CHECK_FALSE(desk.console.login.ServerAlive);
  }

  TEST_CASE("the last server has the time of ever for its answer") {
    ServersDesk desk;
    desk.set("one", Server::Refuses);
    desk.set("two", Server::Mute);
    const Milliseconds before = desk.platform.loop.now();
    desk.connect();
    CHECK(desk.platform.loop.now() - before > Milliseconds(20'000));
    CHECK(desk.take_messages().back() == "Password Response Not Received!");
  }

  TEST_CASE("a server that lives has the time of ever for a login") {
    ServersDesk desk;
    desk.platform.winsock1.reply(static_cast<int>(ClientCommand::CmdLoginCheck), "");
    desk.platform.loop.schedule(Milliseconds(15'000), [&] {
      desk.platform.winsock1.arrive(
          ServersDesk::frame(ServerCommand::SrvLoginCheckResult, std::string(all_rights), 'F'));
    });
    desk.connect();
    CHECK(desk.take_connects() == Texts{"one:2001"});
    CHECK(desk.console.login.SessionBegun);
  }

  TEST_CASE("the user is asked about a certificate before the next server is tried") {
    ServersDesk desk("tls:one, two");
    desk.platform.winsock1.refuse_at("tls:one", "Nobody vouches for one.", true);
    desk.connect();
    CHECK(desk.take_connects() == Texts{"tls:one:2001"});
    CHECK(desk.take_messages().empty());
    CHECK(desk.console.server_connection.failure_is_asked());
    // He says no.
    REQUIRE(desk.console.server_connection.pass_over_asked());
    desk.connect();
    CHECK(desk.take_connects() == Texts{"two:2001"});
    CHECK_FALSE(desk.console.server_connection.pass_over_asked());
    // The next time he is asked again.
    desk.connect();
    CHECK(desk.take_connects() == Texts{"tls:one:2001"});
  }

  TEST_CASE("another connect while one is made takes its place") {
    ServersDesk desk;
    desk.set("one", Server::Silent);
    desk.platform.loop.schedule(Milliseconds(500), [&] {
      desk.set("one", Server::Accepts);
      desk.connect();
    });
    desk.connect();
    CHECK(desk.take_connects() == Texts{"one:2001", "one:2001"});
    CHECK(desk.console.login.SessionBegun);
    CHECK_FALSE(desk.form().ServerSilence.visible);
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("the lamp's words tell which server it is, and since when") {
    ServersDesk desk("one, tls:two:2002");
    desk.set("one", Server::Refuses);
    desk.connect();
    desk.pass(Milliseconds(1000));
    CHECK(desk.form().linked_to.get() == "tls:two, port 2002, since 10:00:00");
    desk.platform.winsock1.close();
    desk.pass(Milliseconds(100));
    CHECK(desk.form().linked_to.get().empty());
    ServersDesk alone("one");
    alone.connect();
    alone.pass(Milliseconds(1000));
    CHECK(alone.is_in());
    CHECK(alone.form().linked_to.get().empty());
  }

  TEST_CASE("at the start of the program the servers are gone through too") {
    SettingsRecord record;
    record.CommPort = 100;
    record.ServerHost = "one";
    record.ServerPort = 2001;
    platform::ScriptedPlatform platform;
    platform.files.replace(std::string(settings_file_name), encode_settings(record));
    platform.files.replace(std::string(further_settings_file),
                           "ServerAddress=one,two\nServerPort=2001\n");
    platform.winsock1.set_server("one", Server::HangsUp);
    Texts told;
    Console console(platform.services());
    console.messages.on_shown = [&](const std::string& text) { told.push_back(text); };
    SUBCASE("and one lets the console in") {
      platform.winsock1.set_server("two", Server::Accepts);
      platform.winsock1.reply(
          21, ServersDesk::frame(ServerCommand::SrvLoginCheckResult, std::string(all_rights), 'F'));
      console.startup.Main("");
      CHECK(console.login.SessionBegun);
      CHECK(told.empty());
    }
    SUBCASE("and none is there") {
      console.startup.Main("");
      REQUIRE(told.size() == 1);
      CHECK(told[0].ends_with("\ntwo, port 2001: It can't be reached."));
      CHECK(console.Lineweir.Shape1.fill_color == color_red);
    }
    CHECK(platform.winsock1.take_connects() == Texts{"one:2001", "two:2001"});
  }
}

}  // namespace
}  // namespace lineweir::test

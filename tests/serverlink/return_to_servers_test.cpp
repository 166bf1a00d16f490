// Coming back by itself where the address names several servers.

#include <doctest/doctest.h>

#include "serverlink/server_watch.h"
#include "several_servers_desk.h"

namespace lineweir::test {
namespace {

using ReturnDesk = SeveralServersDesk;
using Server = ReturnDesk::Server;
using Texts = ReturnDesk::Texts;
using platform::Milliseconds;

TEST_SUITE("several servers, by itself") {
  TEST_CASE("a console whose server dies is at the other within a second") {
    ReturnDesk desk;
    desk.stand();
    desk.kill("one");
    CHECK(desk.until_in_at("two") < Milliseconds(1000));
    CHECK(desk.take_connects() == Texts{"one:2001", "two:2001"});
    CHECK(desk.form().linked_to.get().starts_with("two, port 2001, since "));
    CHECK_FALSE(desk.console.MyMsgbox.visible);
    // And it watches that one too.
    desk.set("one", Server::Accepts);
    desk.pass(Milliseconds(5000));
    desk.kill("two");
    CHECK(desk.until_in_at("one") < Milliseconds(1000));
    CHECK(desk.take_connects() == Texts{"two:2001", "one:2001"});
  }

  TEST_CASE("the server that it had is tried first") {
    ReturnDesk desk("one, two, three");
    desk.set("one", Server::Refuses);
    desk.stand();
    REQUIRE(desk.platform.winsock1.host() == "two");
    SUBCASE("and taken, where it is there again") {
      desk.set("one", Server::Accepts);
      desk.platform.winsock1.drop();
      desk.until_in_at("two");
      CHECK(desk.take_connects() == Texts{"two:2001"});
    }
    SUBCASE("and those behind it next, and those in front of it last") {
      desk.set("three", Server::Refuses);
      desk.kill("two");
      desk.pass(Milliseconds(500));
      CHECK(desk.take_connects() == Texts{"two:2001", "three:2001", "one:2001"});
    }
  }

  TEST_CASE("whatever becomes of the first, the console is back soon after another takes over") {
    for (const Server first : {Server::Refuses, Server::Silent, Server::Mute, Server::HangsUp}) {
      for (const Server standby : {Server::Refuses, Server::HangsUp}) {
        for (int takeover = 0; takeover < 6000; takeover += 370) {
          CAPTURE(static_cast<int>(first));
          CAPTURE(takeover);
          ReturnDesk desk;
          desk.set("two", standby);
          desk.stand();
          desk.set("one", first);
          desk.platform.winsock1.drop();
          desk.pass(Milliseconds(takeover));
          desk.set("two", Server::Accepts);
          CHECK(desk.until_in_at("two") < Milliseconds(4500));
        }
      }
    }
  }

  TEST_CASE("a server that hangs with its connection open is missed after three seconds") {
    ReturnDesk desk;
    desk.stand();
    desk.beats = false;
    desk.set("one", Server::Mute);
    Milliseconds waited{0};
    while (!desk.is_lost() && waited < Milliseconds(10'000)) {
      desk.pass(Milliseconds(50));
      waited += Milliseconds(50);
    }
    CHECK(waited <= ServerWatch::longest_silence + Milliseconds(100));
    desk.beats = true;
    CHECK(desk.until_in_at("two") < Milliseconds(2000));
  }

  TEST_CASE("the banner and the lamp say where the console looks, in the same words all the time") {
    ReturnDesk desk("one, tls:two:2002, three");
    desk.stand();
    for (const char* host : {"one", "tls:two", "three"}) desk.kill(host);
    desk.pass(Milliseconds(200));
    REQUIRE(desk.is_lost());
    const std::string banner = desk.form().ServerSilence.caption;
    const std::string why = desk.form().no_link;
    CHECK(banner.starts_with("No word from the server since 10:00:0"));
    CHECK(banner.ends_with(", trying one, tls:two and three"));
    CHECK(
        why.ends_with(". The console looks for one, port 2001; tls:two, port 2002 and three, "
                      "port 2001."));
    for (int i = 0; i < 50; ++i) {
      desk.pass(Milliseconds(100));
      CHECK(desk.form().ServerSilence.caption.get() == banner);
      CHECK(desk.form().no_link.get() == why);
    }
    // The user's own try says it no other way.
    desk.platform.loop.schedule(Milliseconds(0),
                                [&] { CHECK(desk.form().ServerSilence.caption.get() == banner); });
    desk.console.MyMsgbox.ReconnectButton.on_click();
    CHECK(desk.told.size() == 1);
    CHECK(desk.is_lost());
    // Asked for others, it says so.
    desk.open_dialog("four, five");
    for (const char* host : {"four", "five"}) desk.set(host, Server::Refuses);
    desk.connect();
    CHECK(desk.form().ServerSilence.caption.get().ends_with(", trying four and five"));
    desk.open_dialog("one, three");
    desk.connect();
    desk.set("three", Server::Accepts);
    CHECK(desk.until_in_at("three") < Milliseconds(2500));
  }

  TEST_CASE("a refused login ends the search") {
    ReturnDesk desk;
    desk.stand();
    desk.reply(ClientCommand::CmdPasswordLogin, ServerCommand::SrvPasswordResult, "", 'F');
    desk.kill("one");
    desk.pass(Milliseconds(10'000));
    CHECK(desk.take_connects() == Texts{"one:2001", "two:2001"});
    CHECK(desk.take_messages().back() == "Password Rejected!");
    CHECK(desk.form().Shape1.fill_color == color_red);
  }

  TEST_CASE("a server that lives has its time for a login, however many log in at once") {
    ReturnDesk desk;
    desk.stand();
    desk.platform.winsock1.reply(static_cast<int>(ClientCommand::CmdPasswordLogin), "");
    desk.platform.winsock1.drop();
    desk.pass(Milliseconds(15'000));
    CHECK(desk.take_connects() == Texts{"one:2001"});
    // The time that it tells meanwhile is no session.
    CHECK(desk.form().Shape1.fill_color == color_red);
    desk.platform.winsock1.arrive(
        ReturnDesk::frame(ServerCommand::SrvPasswordResult, std::string(all_rights), 'T'));
    CHECK(desk.until_in_at("one") < Milliseconds(1000));
  }

  TEST_CASE("a doubtful certificate keeps the console from no other server") {
    ReturnDesk desk("one, tls:two, three");
    desk.platform.winsock1.refuse_at("tls:two", "Nobody vouches for two.", true);
    desk.stand();
    desk.kill("one");
    CHECK(desk.until_in_at("three") < Milliseconds(1000));
    CHECK(desk.take_connects() == Texts{"one:2001", "tls:two:2001", "three:2001"});
  }

  TEST_CASE("a server that has told its end isn't gone back to before that has come") {
    ReturnDesk desk;
    desk.stand();
    desk.platform.winsock1.arrive(
        ReturnDesk::frame(ServerCommand::SrvShutdownNotice, "The server goes down", 10));
    desk.pass(Milliseconds(4000));
    desk.take_messages();
    SUBCASE("the other one is there") {
      desk.pass(Milliseconds(2000));
      CHECK(desk.is_in());
      CHECK(desk.take_connects() == Texts{"two:2001"});
    }
    SUBCASE("the other one takes over when this one is gone") {
      desk.set("two", Server::Refuses);
      desk.pass(Milliseconds(4000));
      for (const std::string& connect : desk.take_connects()) CHECK(connect == "two:2001");
      desk.set("two", Server::Accepts);
      CHECK(desk.until_in_at("two") < Milliseconds(1500));
    }
    SUBCASE("this one is there again, and the other isn't") {
      desk.set("two", Server::Refuses);
      desk.pass(Milliseconds(1500));
      CHECK(desk.until_in_at("one") < Milliseconds(8000));
    }
    CHECK(desk.take_messages() ==
          Texts{"Lineweir has disconnected from the server because the server is shutting down."});
  }

  TEST_CASE("a notice of a server that is gone ends no session with another") {
    ReturnDesk desk;
    desk.stand();
    desk.platform.winsock1.arrive(
        ReturnDesk::frame(ServerCommand::SrvShutdownNotice, "The server goes down", 3));
    desk.pass(Milliseconds(1000));
    desk.kill("one");
    CHECK(desk.until_in_at("two") < Milliseconds(1000));
    desk.pass(Milliseconds(60'000));
    CHECK(desk.is_in());
    CHECK(desk.platform.winsock1.host() == "two");
  }

  TEST_CASE("what is typed for a caller stays through the change of servers") {
    ReturnDesk desk;
    desk.stand();
    desk.platform.winsock1.arrive(ReturnDesk::frame(ServerCommand::SrvFullStatus,
                                                    "R00F01F02F03F04F05F06F07F08F09", no_value));
    desk.pass(Milliseconds(200));
    desk.reply(ClientCommand::CmdRequestStatus, ServerCommand::SrvFullStatus,
               "R00F01F02F03F04F05F06F07F08F09");
    desk.console.caller_data.show_for_line(0);
    REQUIRE(desk.console.Form4.visible);
    desk.console.Form4.TheText(1).text = "Bob Hill";
    desk.form().Text1.text = "Ann> a word";
    const int group = desk.console.program.GroupNumber;
    desk.kill("one");
    CHECK(desk.until_in_at("two") < Milliseconds(1000));
    CHECK(desk.console.Form4.visible);
    CHECK(desk.console.Form4.TheText(1).text.get() == "Bob Hill");
    CHECK(desk.console.program.GroupNumber == group);
  }

  TEST_CASE("a console that has left its server by itself looks for no other") {
    ReturnDesk desk;
    desk.stand();
    desk.form().Com1.on_click();
    desk.pass(Milliseconds(10'000));
    CHECK(desk.take_connects().empty());
    CHECK_FALSE(desk.is_lost());
  }
}

}  // namespace
}  // namespace lineweir::test

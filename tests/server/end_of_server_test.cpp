// How a server ends, and what its configuration takes from it while it serves.

#include <doctest/doctest.h>

#include <algorithm>

#include "server/admin_tool.h"
#include "server/server_room.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

}  // namespace

TEST_SUITE("server/end") {
  TEST_CASE("an end that was told may only come earlier") {
    ServerRoom room;
    auto host = room.seat("host");
    host->take();
    int done = 0;
    room.server->shut_down(10, "First.", [&] { ++done; });
    CHECK(host->take(SrvShutdownNotice).size() == 1);
    CHECK_FALSE(room.server->shut_down(20, "Later.", [&] { done += 10; }));
    CHECK_FALSE(room.server->shut_down(10, "The same.", [&] { done += 10; }));
    {
      AdminTool tool(room);
      admin::Request later{.command = admin::Command::Shutdown};
      later.values[admin::Field::Seconds] = std::int64_t{600};
      CHECK(tool.refusal(later) ==
            "The server ends in 10 seconds already: a told end can only be brought forward.");
    }
    CHECK(host->take(SrvShutdownNotice).empty());
    room.wait(1s);
    room.server->shut_down(3, "Sooner.", [&] { done += 100; });
    const ServerPacket notice = host->take_last(SrvShutdownNotice);
    CHECK(notice.AltInfo == 3);
    CHECK(notice.Buffer == "Sooner.");
    room.wait(2900ms);
    CHECK(host->is_open());
    room.wait(200ms);
    CHECK_FALSE(host->is_open());
    room.wait(30s);
    CHECK(done == 100);
    CHECK_FALSE(room.connect()->is_open());
    AdminTool tool(room);
    CHECK(tool.refusal({admin::Command::Seats}) == "The server is ending.");
  }

  TEST_CASE("an end that is far off is told at once, and consoles leave in the last minute only") {
    for (const platform::Epoch epoch : {0, 3}) {
      ServerRoom room;
      room.crash();
      room.epoch = epoch;
      room.start();
      // Nobody is to leave ahead of a server that follows.
      const auto last = epoch == 0 ? 60s : 54s;
      auto host = room.seat("host");
      const auto stays_for = [&](platform::Milliseconds span) {
        for (; span > 0s; span -= 1s) {
          host->send(host->packet(CmdTimeRequest));
          room.wait(999ms);
        }
      };
      host->take();
      room.server->shut_down(600, "Far.", [] {});
      auto told = host->take();
      CHECK(told.size() == 1);
      CHECK(told.at(0).CMD == static_cast<int>(SrvMessage));
      CHECK(told.at(0).Buffer == "Far.");
      stays_for(600s - last - 1s);
      told = host->take();
      CHECK(std::ranges::count(told, static_cast<int>(SrvShutdownNotice), &ServerPacket::CMD) == 0);
      stays_for(1s);
      told = host->take(SrvShutdownNotice);
      REQUIRE(told.size() == 1);
      CHECK(told[0].AltInfo == 60);
      CHECK(told[0].Buffer == "Far.");
      stays_for(last - 1s);
      CHECK(host->take(SrvShutdownNotice).empty());
      CHECK(host->is_open());
      room.wait(1s);
      CHECK_FALSE(host->is_open());
    }
  }

  TEST_CASE("an end that comes nearer is told by its own notice alone") {
    ServerRoom room;
    auto host = room.seat("host");
    room.server->shut_down(90, "Far.", [] {});
    room.server->shut_down(80, "Near.", [] {});
    host->take();
    for (int second = 0; second < 79; ++second) {
      host->send(host->packet(CmdTimeRequest));
      room.wait(999ms);
    }
    const auto told = host->take(SrvShutdownNotice);
    REQUIRE(told.size() == 1);
    CHECK(told[0].Buffer == "Near.");
  }

  TEST_CASE("who logs in when the end is told already is told what is left") {
    ServerRoom room;
    room.server->shut_down(100, "Soon.", [] {});
    const auto told_at_login = [&](const char* password = host_password) {
      auto console = room.connect();
      console->log_in("host", password);
      return console->take();
    };
    auto told = told_at_login();
    REQUIRE(told.size() == 2);
    CHECK(told[0].CMD == static_cast<int>(SrvPasswordResult));
    CHECK(told[1].CMD == static_cast<int>(SrvMessage));
    CHECK(told[1].Buffer == "Soon.");
    room.wait(60s);
    told = told_at_login();
    REQUIRE(told.size() == 2);
    CHECK(told[1].CMD == static_cast<int>(SrvShutdownNotice));
    CHECK(told[1].AltInfo >= 37);
    CHECK(told[1].AltInfo <= 38);
    CHECK(told[1].Buffer == "Soon.");
    CHECK(told_at_login("wrong").size() == 1);
  }

  TEST_CASE("an end in less than no time is at once, also where a far one was told") {
    ServerRoom room;
    auto host = room.seat("host");
    room.server->shut_down(1000, "Far.", [] {});
    bool done = false;
    room.server->shut_down(-5, "Now.", [&] { done = true; });
    CHECK(host->take_last(SrvShutdownNotice).AltInfo == 0);
    room.wait(1s);
    CHECK_FALSE(host->is_open());
    CHECK(done);
    CHECK(std::ranges::count_if(room.store.content().audit, [](const auto& entry) {
            return entry.event.action == "server ends";
          }) == 2);
  }

  TEST_CASE("whom another server follows is not told to leave ahead of its start") {
    ServerRoom room;
    room.crash();
    room.epoch = 3;
    room.start();
    auto host = room.seat("host");
    room.server->shut_down(10, "Another one follows.", [] {});
    CHECK(host->take_last(SrvShutdownNotice).AltInfo == 16);
  }

  TEST_CASE("an end is told to who was let in alone, and says nothing of a store that took all") {
    ServerRoom room;
    auto stranger = room.connect();
    auto host = room.seat("host");
    room.log.clear();
    bool done = false;
    room.server->shut_down(0, "Now.", [&] { done = true; });
    room.wait(1s);
    CHECK(done);
    CHECK(host->take(SrvShutdownNotice).size() == 1);
    CHECK(stranger->take().empty());
    CHECK_FALSE(stranger->is_open());
    CHECK(std::ranges::none_of(room.log, [](const std::string& line) {
      return line.find("could not be written") != std::string::npos;
    }));
  }

  TEST_CASE("a server that dies before the end that it has told ends nothing more") {
    ServerRoom room;
    auto host = room.seat("host");
    bool done = false;
    room.server->shut_down(10, "Soon.", [&] { done = true; });
    room.crash();
    room.wait(20s);
    CHECK_FALSE(done);
  }

  TEST_CASE("what the store can't take is waited for ten seconds, and then told as left") {
    ServerRoom room;
    auto host = room.seat("host");
    room.wait(1s);
    room.store.stall(true);
    room.exchange().arrive(1, {});
    room.wait(1s);
    int done = 0;
    room.log.clear();
    std::string left = " records wait in the journal";
    SUBCASE("in the journal") {}
    SUBCASE("nowhere, where the journal has no room either") {
      room.journal.fill();
      left = " records are lost, but for those that the journal holds";
    }
    room.server->shut_down(0, "Now.", [&] { ++done; });
    room.wait(9900ms);
    CHECK(done == 0);
    room.wait(200ms);
    CHECK(done == 1);
    CHECK(std::ranges::count_if(room.log, [&](const std::string& line) {
            return line.starts_with("the store could not be written: ") && line.ends_with(left);
          }) == 1);
    CHECK(room.server->has_kept_all() == left.ends_with("wait in the journal"));
    room.store.stall(false);
    room.wait(20s);
    CHECK(done == 1);
  }

  TEST_CASE("a server that is gone is told nothing by its store") {
    ServerRoom room;
    room.crash();
    CHECK_FALSE(room.store.on_trouble);
    CHECK_FALSE(room.store.on_news);
  }

  TEST_CASE("a group that the configuration takes away ends when its last seat has left") {
    ServerRoom room;
    auto host = room.seat("host");
    auto second = room.seat("host", 2);
    host->take();
    ServerOptions only_first = ServerRoom::two_studios();
    only_first.groups.pop_back();
    room.server->reconfigure(only_first);
    room.wait(1s);
    CHECK(room.figure("seats{group=\"2\"}") == 1);
    // Whoever puts it back with other lines is told that these wait.
    REQUIRE(room.server->running_group(2) != nullptr);
    CHECK(room.server->running_group(2)->lines == ServerRoom::two_studios().groups[1].lines);
    room.exchange(2).arrive(1, {});
    CHECK(second->take_last(SrvLineStatus).Buffer == "R");
    host->take();
    second->hang_up();
    room.wait(1s);
    CHECK(room.figure("seats{group=\"2\"}") == -1);
    CHECK(room.server->running_group(2) == nullptr);
    CHECK(room.figure("seats{group=\"1\"}") == 1);
    CHECK(host->is_open());
    CHECK(host->take_last(SrvAllowedGroups).Buffer == "Studio 1\3");
    // It is wanted again before it has ended.
    room.server->reconfigure(ServerRoom::two_studios());
    CHECK(host->take_last(SrvAllowedGroups).Buffer == "Studio 1\3Studio 2\3");
    second = room.seat("host", 2);
    room.server->reconfigure(only_first);
    room.server->reconfigure(ServerRoom::two_studios());
    second->hang_up();
    room.wait(1s);
    CHECK(room.figure("seats{group=\"2\"}") == 0);
    room.exchange(2).arrive(2, {});
    CHECK(room.seat("host", 2)->take_last(SrvFullStatus).Buffer.substr(6, 3) == "R02");
  }

  TEST_CASE("a group that was taken away while nobody was in it is told to nobody") {
    ServerRoom room;
    auto host = room.seat("host");
    host->take();
    ServerOptions only_first = ServerRoom::two_studios();
    only_first.groups.pop_back();
    room.server->reconfigure(only_first);
    const auto told = host->take(SrvAllowedGroups);
    REQUIRE(told.size() == 1);
    CHECK(told[0].Buffer == "Studio 1\3");
    room.wait(10s);
    CHECK(host->take(SrvAllowedGroups).empty());
  }

  TEST_CASE("a group that the seats have only left for another ends as well") {
    ServerRoom room;
    auto host = room.seat("host", 2);
    ServerOptions only_first = ServerRoom::two_studios();
    only_first.groups.pop_back();
    room.server->reconfigure(only_first);
    host->send(host->packet(CmdLeaveGroup));
    host->join(1);
    host->take();
    room.wait(1s);
    CHECK(room.figure("seats{group=\"2\"}") == -1);
    CHECK(host->take_last(SrvAllowedGroups).Buffer == "Studio 1\3");
  }

  TEST_CASE("with a group its calls end, and what was said in it is there when it is again") {
    ServerRoom room;
    ServerOptions only_first = ServerRoom::two_studios();
    only_first.groups.pop_back();
    {
      auto host = room.seat("host", 2);
      room.exchange(2).arrive(5, "5550100");
      room.exchange(2).obey("S05");
      host->send(host->packet(CmdSetNextCall, 5));
      host->send(host->packet(CmdFlashMessage, no_value, "1\0022\2Anna\3Hi"));
      room.wait(1s);
    }
    const auto ended = [&] { return room.store.content().ended_calls({}); };
    SUBCASE("while the server runs") {
      room.server->reconfigure(only_first);
      room.wait(2s);
      REQUIRE(ended().size() == 1);
      CHECK(ended()[0].steps.back().action == "hang up");
      CHECK(room.store.content().groups.at(2).next_call == -1);
    }
    SUBCASE("while the server was away") {
      room.crash();
      room.options = only_first;
      room.start();
      room.wait(1s);
      REQUIRE(ended().size() == 1);
      CHECK(ended()[0].steps.back().action == "ended while the server was away");
    }
    SUBCASE("while neither the server nor its equipment was there") {
      room.crash();
      room.exchanges_are_away = true;
      room.exchange(2).leave(5);
      room.start();
      room.server->reconfigure(only_first);
      room.wait(2s);
      REQUIRE(ended().size() == 1);
      room.exchanges_are_away = false;
    }
    room.exchange(2).leave(5);
    room.server->reconfigure(ServerRoom::two_studios());
    auto host = room.connect();
    host->log_in("host", host_password);
    host->join(2);
    const auto told = host->take();
    const auto last = [&](ServerCommand command) {
      ServerPacket found;
      for (const ServerPacket& packet : told) {
        if (packet.CMD == static_cast<std::uint8_t>(command)) found = packet;
      }
      return found;
    };
    CHECK(last(SrvFlashMessage).Buffer == "1\0022\2Anna\3Hi");
    CHECK(last(SrvNextCall).LineNo == no_value);
    CHECK(ended().size() == 1);
  }

  TEST_CASE("a configuration that is read again before the store waits for it") {
    ServerRoom room;
    room.exchange().arrive(3, "5550100");
    room.wait(1s);
    room.crash();
    room.store.fail(true);
    room.start();
    room.wait(5s);
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].name = "Big studio";
    room.server->reconfigure(options);
    room.store.fail(false);
    room.wait(5s);
    auto host = room.connect();
    host->log_in("host", host_password);
    host->join(1);
    CHECK(host->take_last(SrvAllowedGroups).Buffer == "Big studio\3Studio 2\3");
    REQUIRE(room.store.content().calls.size() == 1);
    CHECK(room.store.content().calls.begin()->second.ended == platform::Moment{0});
  }

  TEST_CASE("seats are told at once what the configuration makes of their studio") {
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].kind = 4;
    ServerRoom room(options);
    auto host = room.seat("host");
    host->take();
    options.groups[0].name = "Big studio";
    options.groups[0].line_names = {"Hotline"};
    options.groups[0].hybrids = {true, false};
    options.groups[0].positions = {false, true};
    options.groups[0].phone_names = {"Desk", "Booth"};
    room.server->reconfigure(options);
    room.wait(1s);
    const auto told = host->take();
    const auto buffer = [&](ServerCommand command) {
      std::string found = "nothing";
      for (const ServerPacket& packet : told) {
        if (packet.CMD == static_cast<std::uint8_t>(command)) found = packet.Buffer;
      }
      return found;
    };
    CHECK(buffer(SrvGroupNames) == "Big studio\3Studio 2\3");
    CHECK(buffer(SrvAllowedGroups) == "Big studio\3Studio 2\3");
    CHECK(buffer(SrvLineNumbers).starts_with("Hotline   2         "));
    CHECK(buffer(SrvStudioStatus).starts_with("True\3False\3False\3True\3"));
    CHECK(buffer(SrvPhoneNames) == "Desk\3Booth\3");
    CHECK(std::ranges::count_if(room.store.content().audit, [](const auto& entry) {
            return entry.event.action == "configuration read again";
          }) == 1);
  }

  TEST_CASE("how long callers are known is what the configuration says last") {
    ServerRoom room;
    {
      auto host = room.seat("host");
      room.exchange().arrive(1, "5550100");
      room.exchange().leave(1);
      room.wait(1s);
    }
    room.wait(72h);
    CHECK(room.store.content().caller_history("5550100").calls == 1);
    ServerOptions options = ServerRoom::two_studios();
    options.retention = {.days = 1};
    room.server->reconfigure(options);
    room.wait(24h);
    CHECK(room.store.content().caller_history("5550100").calls == 0);
  }

  TEST_CASE("a first user is told once, and none where a backup has brought users meanwhile") {
    ServerRoom room;
    room.crash();
    room.store.content() = {};
    room.start();
    room.wait(1s);
    CHECK_FALSE(room.first_password.empty());
    CHECK(room.store.content().accounts.size() == 1);
    CHECK(std::ranges::count_if(room.store.content().audit, [](const auto& entry) {
            return entry.event.action == "user added" && entry.event.detail == "engineer";
          }) == 1);
    room.crash();
    room.first_password.clear();
    room.start();
    room.wait(1s);
    CHECK(room.first_password.empty());
  }

  TEST_CASE("a server whose store can't be read tries until it can, and says so") {
    ServerRoom room;
    room.crash();
    room.store.fail(true);
    room.start();
    room.wait(10s);
    CHECK(std::ranges::count(room.log, "the store can't be read; it is tried again") >= 4);
    CHECK_FALSE(room.connect()->is_open());
    room.store.fail(false);
    room.wait(2500ms);
    CHECK(room.connect()->is_open());
  }
}

}  // namespace lineweir::server

#include <doctest/doctest.h>

#include <algorithm>
#include <map>

#include "server/admin_tool.h"
#include "server/server_room.h"
#include "wire/caller_known.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

const platform::StudioPlace elsewhere{.group = 12, .name = "Studio 12", .address = "b:2001"};

struct SharedRoom {
  SharedRoom() { tell({.studio_places = {elsewhere}}); }
  // As the store does when another server has written it.
  void tell(platform::StoreNews news) {
    for (const auto& place : news.studio_places) room.store.content().apply(place);
    for (const auto& caller : news.flagged_callers) room.store.content().apply(caller);
    room.store.on_news(news);
    room.wait(1s);
  }
  ServerRoom room;
};

TEST_CASE("a group of another server is named with this one's, and who asks for it is sent there") {
  SharedRoom shared;
  auto console = shared.room.connect();
  console->group = 12;
  console->log_in("host", host_password);
  const ServerPacket let_in = console->take_last(SrvPasswordResult);
  CHECK(let_in.AltInfo == 'T');
  CHECK(let_in.Buffer == rights_of(RightsTemplate::Host));
  console->join(12);
  shared.room.wait(1s);
  const auto told = console->take();
  const auto sent = std::ranges::find_if(told, [](const ServerPacket& packet) {
    return packet.CMD == static_cast<std::uint8_t>(SrvGroupElsewhere);
  });
  REQUIRE(sent != told.end());
  CHECK(sent->GroupNo == 12);
  CHECK(sent->Buffer == "b:2001");
  const auto names = std::ranges::find_if(told, [](const ServerPacket& packet) {
    return packet.CMD == static_cast<std::uint8_t>(SrvGroupNames);
  });
  REQUIRE(names != told.end());
  CHECK(names->Buffer == "Studio 1\3Studio 2\3-\3-\3-\3-\3-\3-\3-\3-\3-\3Studio 12\3");
  // A console that doesn't know the way tells it.
  CHECK(console->take(SrvMessage).empty());
  shared.room.wait(2s);
  CHECK(console->take_last(SrvMessage).Buffer == "Studio 12 is served at b:2001.");
}

TEST_CASE("who has come into a group here meanwhile is not told where the other one is") {
  SharedRoom shared;
  auto console = shared.room.connect();
  console->log_in("host", host_password);
  console->join(12);
  CHECK(console->take(SrvGroupElsewhere).size() == 1);
  console->join(1);
  shared.room.wait(3s);
  CHECK(console->take(SrvMessage).empty());
}

TEST_CASE("nobody is sent to a group in which the user has no rights, or that is nowhere") {
  SharedRoom shared;
  auto console = shared.room.connect();
  console->log_in("only2", host_password);
  console->take();
  for (const int group : {12, 13}) {
    console->join(group);
    shared.room.wait(1s);
    CHECK(console->take(SrvGroupElsewhere).empty());
  }
}

TEST_CASE("seats see a studio of another server come and go") {
  SharedRoom shared;
  auto host = shared.room.seat("host");
  host->take();
  shared.tell({.studio_places = {{.group = 12}}});
  CHECK(host->take_last(SrvAllowedGroups).Buffer == "Studio 1\3Studio 2\3");
  shared.tell({.studio_places = {{.group = 3, .name = "Studio C", .address = "c:1"}}});
  CHECK(host->take_last(SrvAllowedGroups).Buffer == "Studio 1\3Studio 2\3Studio C\3");
}

TEST_CASE("seats see which studios of other servers came and went while this one heard nothing") {
  SharedRoom shared;
  auto host = shared.room.seat("host");
  host->take();
  platform::StoreNews all{.all = true,
                          .studio_places = {{.group = 3, .name = "Studio C", .address = "c:1"}}};
  for (const auto& [name, account] : shared.room.store.content().accounts) {
    all.accounts.push_back(account);
  }
  shared.tell(all);
  CHECK(host->take_last(SrvAllowedGroups).Buffer == "Studio 1\3Studio 2\3Studio C\3");
}

TEST_CASE("a server with an address tells where its groups are, and takes back where they were") {
  ServerOptions options = ServerRoom::two_studios();
  options.address = "a:2001";
  ServerRoom room(options);
  const auto& places = room.store.content().studio_places;
  room.store.content().apply(elsewhere);
  room.wait(1s);
  CHECK(places.at(1).address == "a:2001");
  CHECK(places.at(2).name == "Studio 2");
  options.groups.pop_back();
  room.server->reconfigure(options);
  room.wait(1s);
  CHECK_FALSE(places.contains(2));
  // Also what it told in an earlier life.
  room.store.content().apply(platform::StudioPlace{.group = 7, .name = "x", .address = "a:2001"});
  room.crash();
  room.options = options;
  room.start();
  room.wait(2s);
  CHECK_FALSE(places.contains(7));
  CHECK(places.contains(1));
  CHECK(places.at(12) == elsewhere);
}

TEST_CASE("what two servers change of a user at the same time holds both") {
  SharedRoom shared;
  AdminTool tool(shared.room);
  platform::StoreContent& content = shared.room.store.content();
  const auto host = [&]() -> platform::Account& { return content.accounts.at("host"); };
  // Another server's changes are in the store before this one's, and are told behind them.
  shared.room.store.stall(true);
  tool.send_bytes(admin::line_of({admin::Command::UserRight,
                                  {{admin::Field::Name, std::string("host")},
                                   {admin::Field::Group, std::int64_t{1}},
                                   {admin::Field::Changes, std::vector<std::string>{"-Dial"}}}}) +
                  '\n');
  shared.room.wait(100ms);
  host().locked = true;
  host().password_hash = "another";
  host().rights[2] = std::string(12, '\1');
  shared.room.store.on_news({.accounts = {host()}});
  shared.room.store.stall(false);
  shared.room.wait(1s);
  CHECK(host().locked);
  CHECK(host().password_hash == "another");
  CHECK(host().rights.at(2) == std::string(12, '\1'));
  REQUIRE(host().rights.contains(1));
  CHECK(host().rights.at(1) != content.accounts.at("host").rights.at(0));
  // And this server knows it.
  CHECK(shared.room.server != nullptr);
  auto refused = shared.room.connect();
  refused->log_in("host", host_password);
  CHECK(refused->take_last(SrvPasswordResult).AltInfo == 'F');
}

TEST_CASE("a user who logs in while another server removes or locks him doesn't stay") {
  for (const bool is_removed : {false, true}) {
    SharedRoom shared;
    shared.room.store.stall(true);
    auto host = shared.room.seat("host");
    CHECK(host->is_open());
    // His login waits to be written.
    if (is_removed) {
      shared.room.store.on_news({.removed_accounts = {"host"}});
    } else {
      platform::Account locked = shared.room.store.content().accounts.at("host");
      locked.locked = true;
      shared.room.store.on_news({.accounts = {locked}});
    }
    shared.room.store.stall(false);
    shared.room.wait(1s);
    CHECK_FALSE(host->is_open());
    auto again = shared.room.connect();
    again->log_in("host", host_password);
    CHECK(again->take_last(SrvPasswordResult).AltInfo == 'F');
  }
}

TEST_CASE("a server whose address is taken away takes back where its groups were") {
  ServerOptions options = ServerRoom::two_studios();
  options.address = "a:2001";
  ServerRoom room(options);
  room.wait(1s);
  CHECK(room.store.content().studio_places.at(1).address == "a:2001");
  room.crash();
  room.options.address.clear();
  room.start();
  room.wait(1s);
  CHECK(room.store.content().studio_places.empty());
}

TEST_CASE("a user whom another server has locked, removed or given other rights is told here") {
  SharedRoom shared;
  auto host = shared.room.seat("host");
  auto screener = shared.room.seat("screener", 1, 1);
  platform::Account changed = shared.room.store.content().accounts.at("screener");
  changed.rights = {{0, std::string(12, '\1')}};
  screener->take();
  shared.tell({.accounts = {changed}});
  CHECK(screener->take_last(SrvRights).Buffer == std::string(12, '\1'));
  CHECK(host->take(SrvRights).empty());

  changed.locked = true;
  shared.tell({.accounts = {changed}});
  CHECK_FALSE(screener->is_open());
  shared.tell({.removed_accounts = {"host"}});
  CHECK_FALSE(host->is_open());
  auto again = shared.room.connect();
  again->log_in("host", host_password);
  CHECK(again->take_last(SrvPasswordResult).AltInfo == 'F');
}

TEST_CASE("a password that another server has changed counts here at once") {
  SharedRoom shared;
  platform::Account changed = shared.room.store.content().accounts.at("host");
  changed.password_hash = shared.room.store.content().accounts.at("only2").password_hash + "x";
  shared.tell({.accounts = {changed}});
  auto console = shared.room.connect();
  console->log_in("host", host_password);
  CHECK(console->take_last(SrvPasswordResult).AltInfo == 'F');
}

TEST_CASE("what waits here to be written comes behind what another server has written") {
  SharedRoom shared;
  auto host = shared.room.seat("host");
  shared.room.store.fail(true);
  host->send(host->packet(CmdUserProfile, no_value, "host\3mine"));
  shared.room.wait(1s);
  platform::Account theirs = shared.room.store.content().accounts.at("host");
  theirs.profile = "theirs";
  shared.tell({.all = true, .accounts = {theirs}, .studio_places = {elsewhere}});
  shared.room.store.fail(false);
  shared.room.wait(5s);
  CHECK(shared.room.store.content().accounts.at("host").profile == "mine");
  auto console = shared.room.connect();
  console->log_in("host", host_password);
  CHECK(console->take_last(SrvPasswordResult).Buffer.ends_with("mine"));
}

TEST_CASE("who has been removed, locked or added while this server heard nothing") {
  SharedRoom shared;
  auto host = shared.room.seat("host");
  auto screener = shared.room.seat("screener", 1, 1);
  auto only2 = shared.room.seat("only2", 2, 2);
  for (auto* seat : {host.get(), screener.get(), only2.get()}) seat->take();
  platform::StoreNews all{.all = true, .studio_places = {elsewhere}};
  for (const auto& [name, account] : shared.room.store.content().accounts) {
    if (name == "host") continue;
    all.accounts.push_back(account);
    all.accounts.back().locked = name == "only2";
  }
  platform::Account anna = ServerRoom::account("anna", RightsTemplate::Host);
  anna.password_hash = shared.room.store.content().accounts.at("host").password_hash;
  all.accounts.push_back(anna);
  shared.tell(all);
  CHECK_FALSE(host->is_open());
  CHECK(host->take_last(SrvMessage).Buffer == "An administrator has removed the user host.");
  CHECK_FALSE(only2->is_open());
  CHECK(only2->take_last(SrvMessage).Buffer == "An administrator has locked the user only2.");
  CHECK(screener->is_open());
  // The groups may have changed too; nobody knows.
  CHECK(screener->take(SrvGroupNames).size() == 1);
  CHECK(shared.room.seat("anna", 1, 3)->take(SrvFullStatus).size() == 1);
  // What is told of one user alone tells nothing of groups.
  screener->take();
  shared.tell({.accounts = {anna}});
  CHECK(screener->take(SrvGroupNames).empty());
}

TEST_CASE("what an administrator has changed here stays, whatever others wrote before") {
  SharedRoom shared;
  AdminTool tool(shared.room);
  const auto kept = shared.room.store.content().accounts;
  shared.room.store.stall(true);
  const auto send = [&](const admin::Request& request) {
    AdminTool one(shared.room);
    one.send_bytes(admin::line_of(request) + '\n');
    shared.room.wait(100ms);
  };
  using admin::Command;
  using admin::Field;
  const auto rights = [](const char* user, std::int64_t group, const char* change) {
    return admin::Request{Command::UserRight,
                          {{Field::Name, std::string(user)},
                           {Field::Group, group},
                           {Field::Changes, std::vector<std::string>{change}}}};
  };
  send({Command::UserPassword,
        {{Field::Name, std::string("host")}, {Field::Password, std::string("new")}}});
  send({Command::UserLock, {{Field::Name, std::string("screener")}}});
  send(rights("only2", 2, "-all"));
  send(rights("host", 1, "-all"));
  send({Command::UserRemove, {{Field::Name, std::string("only2")}}});
  platform::StoreNews news;
  for (const auto& [name, account] : kept) news.accounts.push_back(account);
  shared.room.store.on_news(news);
  shared.room.wait(100ms);
  const auto let_in = [&](const char* user, const char* password) {
    auto console = shared.room.connect();
    console->log_in(user, password);
    return console->take_last(SrvPasswordResult).AltInfo == 'T';
  };
  CHECK_FALSE(let_in("host", host_password));
  CHECK(let_in("host", "new"));
  CHECK_FALSE(let_in("screener", host_password));
  CHECK_FALSE(let_in("only2", host_password));
  const auto open = [&](const char* user, std::int64_t group) {
    return tool.ask({Command::UserRight, {{Field::Name, std::string(user)}, {Field::Group, group}}})
        .at("open")
        .get<bool>();
  };
  CHECK_FALSE(open("host", 1));
  CHECK(open("host", 2));
}

TEST_CASE("of the flags of others the new, the changed and the gone are told, and no more") {
  SharedRoom shared;
  const auto flagged = [](const std::string& number, CallerFlag flag) {
    return platform::FlaggedCaller{.key = number, .number = number, .flag = flag};
  };
  using enum CallerFlag;
  shared.tell({.flagged_callers = {flagged("5550100", Careful), flagged("5550101", Careful),
                                   flagged("5550102", Careful)}});
  auto host = shared.room.seat("host");
  for (int line = 0; line < 4; ++line) {
    shared.room.exchange().arrive(line, "555010" + std::to_string(line));
  }
  shared.room.wait(1s);
  host->take();
  platform::StoreNews all{
      .all = true,
      .flagged_callers = {flagged("5550101", Barred), flagged("5550102", Careful),
                          flagged("5550103", Regular)}};
  for (const auto& [name, account] : shared.room.store.content().accounts) {
    all.accounts.push_back(account);
  }
  shared.tell(all);
  std::map<int, int> told;
  for (const ServerPacket& packet : host->take(SrvCallerKnown)) {
    told[packet.LineNo] = packet.AltInfo;
  }
  CHECK(told == std::map<int, int>{{0, static_cast<int>(None)},
                                   {1, static_cast<int>(Barred)},
                                   {3, static_cast<int>(Regular)}});
}

TEST_CASE("a caller whom another server has flagged is seen on this one's lines") {
  SharedRoom shared;
  auto host = shared.room.seat("host");
  shared.room.exchange().arrive(0, "5550100");
  shared.room.wait(1s);
  host->take();
  shared.tell({.flagged_callers = {{.key = "5550100",
                                    .number = "5550100",
                                    .flag = CallerFlag::Barred,
                                    .reason = "abuse",
                                    .by = "anna"}}});
  const ServerPacket told = host->take_last(SrvCallerKnown);
  CHECK(told.AltInfo == static_cast<int>(CallerFlag::Barred));
  // The store was away, and nobody knows what was missed.
  platform::StoreNews all{.all = true, .studio_places = {elsewhere}};
  for (const auto& [name, account] : shared.room.store.content().accounts) {
    all.accounts.push_back(account);
  }
  shared.tell(all);
  CHECK(host->take_last(SrvCallerKnown).Buffer.empty());
}

}  // namespace
}  // namespace lineweir::server

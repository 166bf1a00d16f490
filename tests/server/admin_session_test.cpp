#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>

#include "adminlink/admin_columns.h"
#include "server/admin_steps.h"
#include "server/admin_tool.h"
#include "server/short_requests.h"
#include "wire/rights_layout.h"
#include "wire/server_packet_codec.h"

using namespace lineweir;
using namespace lineweir::server;
using namespace lineweir::test;
using admin::Command;
using admin::Field;
using admin::Request;
using nlohmann::json;
using namespace std::chrono_literals;

const std::string guest_at_ten = encode_text_message({.text = "host> Guest at ten"});

TEST_CASE("Every column of a list is in its rows, and nothing that is none") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  CHECK(tool.refusal(of_line(Command::Call, 1, 1)) == "");
  CHECK(tool.refusal(of_line(Command::Call, 1, 2)) == "");
  CHECK(tool.refusal(of_line(Command::HangUp, 1, 2)) == "");
  CHECK(tool.refusal(
            {Command::CallerFlag, {{Field::Number, "0555123"}, {Field::Flag, "barred"}}}) == "");
  for (const Request& request :
       {Request{Command::UserList}, Request{Command::Seats}, Request{Command::Calls},
        Request{Command::AuditList}, Request{Command::Lines, {{Field::Group, std::int64_t{1}}}},
        Request{Command::CallerList}, Request{Command::CallerShow, {{Field::Number, "0555123"}}}}) {
    const auto rows = tool.rows(request);
    REQUIRE(!rows.empty());
    for (const auto& column : admin::columns_of(request.command)) {
      CAPTURE(column.key);
      CHECK(rows.front().contains(column.key));
    }
    const std::size_t further = request.command == Command::Calls ? 1 : 0;
    CHECK(rows.front().size() == admin::columns_of(request.command).size() + further);
  }
}

TEST_CASE("A caller's number is told in the letters of who asks") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  Request call = of_line(Command::Call, 1, 1);
  call.values[Field::Number] = std::string("Z\u00FCrich 044");
  CHECK(tool.refusal(call) == "");
  const auto lines = tool.rows({Command::Lines, {{Field::Group, std::int64_t{1}}}});
  CHECK(lines.front().at("caller_number") == "Z\u00FCrich 044");
  CHECK(seat->take_last(ServerCommand::SrvCallerData).Buffer.find("Z\xFCrich 044") !=
        std::string::npos);
}

TEST_CASE("Seats are listed with who sits where") {
  ServerRoom room;
  AdminTool tool(room);
  const auto host = room.seat("host", 1, 3);
  const auto screener = room.seat("screener", 2, 0, "10.0.0.9");
  screener->send([&] {
    ServerPacket packet = screener->packet(ClientCommand::CmdSetMode);
    packet.AltInfo = 1;
    return packet;
  }());
  const auto seats = tool.rows({Command::Seats});
  REQUIRE(seats.size() == 2);
  CHECK(seats[0].at("user") == "host");
  CHECK(seats[0].at("group") == 1);
  CHECK(seats[0].at("console") == 3);
  CHECK(seats[0].at("mode") == "studio");
  CHECK(seats[0].at("address") == "10.0.0.1");
  CHECK(seats[1].at("user") == "screener");
  CHECK(seats[1].at("group") == 2);
  CHECK(seats[1].at("mode") == "screener");
  CHECK(seats[1].at("address") == "10.0.0.9");
  CHECK(seats[1].at("since") > seats[0].at("since"));
  CHECK(row_named(tool.rows({Command::UserList}), "host").at("seats") == 1);
}

TEST_CASE("A caller arrives and leaves by the tool, and the call is in the book at once") {
  ServerOptions options = ServerRoom::two_studios();
  options.groups[0].line_names = {"Hotline"};
  options.groups[0].missing_lines = {10};
  options.groups[1].exchange = "box:/dev/none";
  ServerRoom room(options);
  AdminTool tool(room);
  Request call = of_line(Command::Call, 1, 1);
  call.values[Field::Number] = std::string("+44 20");
  CHECK(tool.refusal(call) == "");
  CHECK(tool.refusal(call) == "Line 1 isn't free.");
  const auto lines = tool.rows({Command::Lines, {{Field::Group, std::int64_t{1}}}});
  REQUIRE(lines.size() == 9);
  CHECK(lines[0].at("number") == 1);
  CHECK(lines[0].at("name") == "Hotline");
  CHECK(lines[0].at("letter") == "R");
  CHECK(lines[0].at("caller_number") == "+44 20");
  CHECK(lines[1].at("name") == "2");
  CHECK(lines[1].at("letter") == "F");

  room.wait(3s);
  CHECK(tool.refusal(of_line(Command::HangUp, 1, 1)) == "");
  CHECK(tool.refusal(of_line(Command::HangUp, 1, 1)) == "Line 1 has no caller.");
  const auto calls = tool.rows({Command::Calls});
  REQUIRE(calls.size() == 1);
  CHECK(calls[0].at("line") == 1);
  CHECK(calls[0].at("number") == "+44 20");
  CHECK(calls[0].at("ended") > calls[0].at("began"));
  CHECK(calls[0].at("steps").size() >= 2);

  CHECK(tool.refusal(of_line(Command::Call, 1, 10)) == "Line 10 doesn't exist.");
  CHECK(tool.refusal(of_line(Command::Call, 1, 11)) == "Line 11 doesn't exist.");
  CHECK(tool.refusal(of_line(Command::Call, 3, 1)) == "There is no group 3 here.");
  CHECK(tool.refusal(of_line(Command::Call, 2, 1)) ==
        "The group's exchange isn't simulated: its callers come by themselves.");
  call.values[Field::Number] = std::string(41, '5');
  CHECK(tool.refusal(call) == "The number is too long: at most 40 characters.");
}

TEST_CASE("Calls are found by time and group, and come page by page") {
  ServerRoom room;
  AdminTool tool(room);
  constexpr int count = calls_of_many_pages;
  store_calls_of_many_pages(room);
  const auto ids = [&](const Request& request) {
    std::vector<int> found;
    for (const json& row : tool.rows(request)) found.push_back(row.at("id").get<int>());
    return found;
  };
  std::vector<int> all(count);
  std::iota(all.begin(), all.end(), 1);
  CHECK(ids({Command::Calls}) == all);
  CHECK(ids({Command::Calls, {{Field::Since, std::int64_t{1000 + count - 1}}}}) ==
        std::vector<int>{count - 1, count});
  CHECK(ids({Command::Calls,
             {{Field::Since, std::int64_t{1000 + count - 2}}, {Field::Group, std::int64_t{1}}}}) ==
        std::vector<int>{count - 2, count});
}

TEST_CASE("No answer is longer than a connection takes, however long a row is") {
  ServerRoom room;
  AdminTool tool(room);
  platform::CallRecord call;
  call.id = 1;
  call.ended = platform::Moment{5};
  call.told.fill(std::string(30'000, '\x01'));
  for (int i = 0; i < 5000; ++i) call.steps.push_back({platform::Moment{i}, "someone", "hold"});
  std::vector<platform::StoreChange> calls;
  for (call.id = 1; call.id <= 7; ++call.id) calls.emplace_back(call);
  room.store.write(calls, [](bool) {});
  json page = tool.ask({Command::Calls});
  std::size_t rows = 0;
  int pages = 1;
  for (; page.at("more") == true; ++pages) {
    CHECK(page.dump().size() < admin::longest_answer);
    rows += page.at("rows").size();
    page = tool.ask({Command::More});
  }
  CHECK(page.dump().size() < admin::longest_answer);
  CHECK(rows + page.at("rows").size() == 7);
  CHECK(pages > 2);
}

TEST_CASE("The show's texts are set one by one and told to the group's seats") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  const auto other = room.seat("host", 2);
  seat->take();
  other->take();
  CHECK(tool.refusal({Command::Event,
                      {{Field::Group, std::int64_t{1}},
                       {Field::Last, std::string("18:00")},
                       {Field::Text, std::string("Né")}}}) == "");
  CHECK(seat->take_last(ServerCommand::SrvShowTimes).Buffer == "18:00\3\3N\xE9\3");
  CHECK(tool.refusal({Command::Event,
                      {{Field::Group, std::int64_t{1}}, {Field::Next, std::string("18:30")}}}) ==
        "");
  CHECK(seat->take_last(ServerCommand::SrvShowTimes).Buffer == "18:00\00318:30\3N\xE9\3");
  CHECK(room.store.content().groups.at(1).show_times ==
        std::array<std::string, 3>{"18:00", "18:30", "N\u00E9"});
  CHECK(other->take(ServerCommand::SrvShowTimes).empty());
  CHECK(tool.refusal({Command::Event, {{Field::Group, std::int64_t{1}}}}) ==
        "There is no text to set.");
  CHECK(tool.refusal({Command::Event,
                      {{Field::Group, std::int64_t{1}}, {Field::Text, std::string("a\3")}}}) ==
        "The text holds a control character.");
  const auto of_length = [&](std::size_t length) {
    return tool.refusal(
        {Command::Event,
         {{Field::Group, std::int64_t{1}}, {Field::Text, std::string(length, 'x')}}});
  };
  CHECK(of_length(100) == "");
  CHECK(of_length(101) == "The text is too long: at most 100 characters.");
}

TEST_CASE("A message goes to all seats, or to those of a group") {
  ServerRoom room;
  AdminTool tool(room);
  const auto first = room.seat("host");
  const auto second = room.seat("screener", 2);
  first->take();
  second->take();
  CHECK(tool.refusal(text(Command::Message, Field::Text, "Break – in two")) == "");
  CHECK(first->take_last(ServerCommand::SrvMessage).Buffer == "Break \x96 in two");
  CHECK(second->take_last(ServerCommand::SrvMessage).Buffer == "Break \x96 in two");
  CHECK(tool.refusal({Command::Message,
                      {{Field::Text, std::string("Only you")}, {Field::Group, std::int64_t{2}}}}) ==
        "");
  CHECK(first->take(ServerCommand::SrvMessage).empty());
  CHECK(second->take_last(ServerCommand::SrvMessage).Buffer == "Only you");
  CHECK(tool.refusal(text(Command::Message, Field::Text, "")) == "The message is empty.");
  CHECK(tool.refusal(text(Command::Message, Field::Text, "a\005\005")) ==
        "The message holds a control character.");
  CHECK(tool.refusal(text(Command::Message, Field::Text, std::string(1001, 'x'))) ==
        "The message is too long: at most 1000 characters.");
}

TEST_CASE("The audit is listed, verified, and tells the first entry that was changed") {
  ServerRoom room;
  AdminTool tool(room);
  for (int i = 0; i < 300; ++i) {
    CHECK(tool.refusal(text(Command::Message, Field::Text, std::to_string(i))) == "");
  }
  const auto entries = tool.rows({Command::AuditList});
  REQUIRE(entries.size() > 300);
  for (std::size_t i = 0; i < entries.size(); ++i) CHECK(entries[i].at("number") == i + 1);
  const json right_one = tool.ask({Command::AuditVerify});
  CHECK(right_one.at("entries") == entries.size());
  CHECK(right_one.at("first_wrong") == 0);
  CHECK(right_one.at("last_hash") == entries.back().at("hash"));
  room.store.content().audit[41].event.detail = "nothing";
  CHECK(tool.ask({Command::AuditVerify}).at("first_wrong") == 42);
}

TEST_CASE("A shutdown is answered first, and told to all seats") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  seat->take();
  int asked = -1;
  std::string why;
  room.server->on_shutdown_asked = [&](int seconds, const std::string& reason) {
    asked = seconds;
    why = reason;
  };
  CHECK(tool.refusal({Command::Shutdown,
                      {{Field::Seconds, std::int64_t{0}}, {Field::Text, std::string("New")}}}) ==
        "");
  CHECK(asked == 0);
  CHECK(why == "New");
  CHECK(tool.heard_to_the_end());
  AdminTool second(room);
  second.send_bytes(admin::line_of({Command::Shutdown}) + "\n" + admin::line_of({Command::Seats}) +
                    "\n");
  // What is asked behind the end isn't answered.
  const auto answers = second.take();
  REQUIRE(answers.size() == 1);
  CHECK(answers[0] == json{{"ok", true}});
  CHECK(asked == 10);
  AdminTool gone(room);
  gone.hang_up();
  CHECK_FALSE(gone.is_open());
}

TEST_CASE("A backup is made, and taken over by a new server with its users") {
  ServerRoom room;
  {
    AdminTool tool(room);
    CHECK(tool.refusal(user_add("anna")) == "");
    CHECK(tool.refusal(text(Command::Backup, Field::File, "/b.db")) == "");
    CHECK(tool.refusal(text(Command::Backup, Field::File, "/b.db")) != "");
    CHECK(tool.refusal(text(Command::Restore, Field::File, "/b.db")) != "");
  }
  room.crash();
  room.store.files().at("/b.db").groups[1] = {
      .group = 1, .next_call = 4, .message = guest_at_ten, .show_times = {"20:00", "", ""}};
  room.store.files().at("/b.db").groups[7] = {
      .group = 7, .next_call = 4, .message = {}, .show_times = {}};
  room.store.content() = {};
  room.start();
  AdminTool tool(room);
  CHECK(tool.rows({Command::UserList}).size() == 1);
  CHECK(tool.refusal(text(Command::Restore, Field::File, "/none.db")) != "");
  CHECK(tool.refusal(text(Command::Restore, Field::File, "/b.db")) == "");
  CHECK(row_named(tool.rows({Command::UserList}), "anna").is_object());
  CHECK(tool.rows({Command::UserList}).size() == 4);
  CHECK(is_let_in(room, "anna", "pass word"));
  auto told = room.connect();
  told->log_in("anna", "pass word");
  told->join(1);
  const auto packets = told->take();
  const auto is_told = [&](ServerCommand command, const std::string& text) {
    return std::ranges::any_of(packets, [&](const ServerPacket& packet) {
      return packet.CMD == static_cast<std::uint8_t>(command) &&
             packet.Buffer.find(text) != std::string::npos;
    });
  };
  CHECK(is_told(ServerCommand::SrvFlashMessage, guest_at_ten));
  CHECK(is_told(ServerCommand::SrvShowTimes, "20:00"));
  CHECK(tool.ask({Command::AuditVerify}).at("first_wrong") == 0);
  CHECK(administrators_entries(tool).back() == "backup restored: /b.db");
  // All calls of the backup are over, and so is who was next.
  CHECK(room.store.content().groups.at(1).next_call == -1);
  CHECK(room.store.content().groups.at(7).next_call == -1);
}

TEST_CASE("Who was on a line when a backup was made is not there where it is restored") {
  ServerRoom room;
  room.exchange().arrive(3, "5550100");
  room.exchange().obey("H03");
  room.wait(1s);
  const platform::Moment last_heard = room.clock.now();
  {
    AdminTool tool(room);
    CHECK(tool.refusal(text(Command::Backup, Field::File, "/b.db")) == "");
  }
  room.crash();
  room.exchange().leave(3);
  room.store.content() = {};
  room.start();
  room.wait(1h);
  {
    AdminTool tool(room);
    CHECK(tool.refusal(text(Command::Restore, Field::File, "/b.db")) == "");
  }
  room.wait(1s);
  REQUIRE(room.store.content().calls.size() == 1);
  const platform::CallRecord call = room.store.content().calls.begin()->second;
  CHECK(call.ended != platform::Moment{0});
  CHECK(call.ended <= last_heard);
  room.crash();
  room.exchange().arrive(3, "5550199");
  room.start();
  room.wait(1s);
  CHECK(room.store.content().calls.size() == 2);
}

TEST_CASE("While the store is away what is asked is told to be held, and is kept later") {
  ServerRoom room;
  AdminTool tool(room);
  room.store.fail(true);
  CHECK(tool.refusal(user_add("anna")) ==
        "The store can't be written now: what was changed holds, and is kept once it can be.");
  CHECK(is_let_in(room, "anna", "pass word"));
  CHECK(tool.refusal({Command::Calls}) != "");
  CHECK(tool.refusal({Command::CallerShow, {{Field::Number, std::string("5550100")}}}) ==
        "The store can't be read; the server's log tells why.");
  room.store.fail(false);
  room.wait(5s);
  CHECK(room.store.content().accounts.contains("anna"));
  CHECK(tool.rows({Command::Calls}).empty());
}

TEST_CASE("A backup is also tried of a store that can't be written, and says what it lacks") {
  ServerRoom room;
  AdminTool tool(room);
  CHECK(tool.refusal(user_add("anna")) == "");
  // As a file that was deleted.
  room.store.refuse_writes(true);
  CHECK(tool.refusal(user_add("ben")) != "");
  CHECK(tool.refusal(text(Command::Backup, Field::File, "/b.db")) ==
        "The backup was made; what the store can't take now isn't in it.");
  CHECK(room.store.files().at("/b.db").accounts.contains("anna"));
  CHECK_FALSE(room.store.files().at("/b.db").accounts.contains("ben"));
}

TEST_CASE("What ails the store is in the log, and when it is well again") {
  ServerRoom room;
  room.store.fail(true);
  room.store.load([](const auto&) {});
  room.wait(1ms);
  CHECK(room.log.back() == "the store: The store can't be reached.");
  room.store.fail(false);
  room.store.load([](const auto&) {});
  room.wait(1ms);
  CHECK(room.log.back() == "the store is well again");
}

TEST_CASE("A list of which a further piece can't be read ends with the reason") {
  ServerRoom room;
  AdminTool tool(room);
  for (int i = 0; i < 700; ++i) {
    room.store.write(
        {platform::AuditEvent{"e" + std::to_string(i), {}, "u", "a", std::string(100, 'x')}},
        [](bool) {});
  }
  CHECK(tool.ask({Command::AuditList}).at("more") == true);
  room.store.fail(true);
  CHECK(tool.refusal({Command::More}) == "The store can't be read; the server's log tells why.");
}

TEST_CASE("A list of calls of which a further piece can't be read ends with the reason") {
  ServerRoom room;
  AdminTool tool(room);
  store_calls_of_many_pages(room);
  CHECK(tool.ask({Command::Calls}).at("more") == true);
  room.store.fail(true);
  std::size_t rows = 0;
  json answer = tool.ask({Command::More});
  for (; answer.contains("rows"); answer = tool.ask({Command::More})) {
    rows += answer.at("rows").size();
  }
  CHECK(answer.at("error") == "The store can't be read; the server's log tells why.");
  // No more was read ahead than a piece.
  CHECK(rows < 250);
}

TEST_CASE("What is asked in one go is answered one behind the other, in its order") {
  ServerRoom room;
  AdminTool tool(room);
  room.passwords.take(2s);
  tool.send_bytes(admin::line_of(user_add("anna")) + '\n' + admin::line_of({Command::UserList}) +
                  '\n' + admin::line_of(of_user(Command::ProfileShow, "anna")) + '\n');
  CHECK(tool.take().empty());
  room.wait(5s);
  const auto answers = tool.take();
  REQUIRE(answers.size() == 3);
  CHECK(answers[0] == json{{"ok", true}});
  CHECK(row_named(answers[1].at("rows"), "anna").is_object());
  CHECK(answers[2].at("profile") == "");
}

TEST_CASE("Who sits at a new server is told the message and the show of a backup at once") {
  ServerRoom room;
  {
    AdminTool tool(room);
    CHECK(tool.refusal(text(Command::Backup, Field::File, "/b.db")) == "");
  }
  room.crash();
  room.store.files().at("/b.db").groups[1] = {
      .group = 1, .next_call = -1, .message = guest_at_ten, .show_times = {"20:00", "", ""}};
  room.store.files().at("/b.db").groups[2] = {
      .group = 2, .next_call = -1, .message = "", .show_times = {"21:00", "", ""}};
  room.store.content() = {};
  room.start();
  room.wait(1s);
  const auto seat_of = [&](int group) {
    auto console = room.connect();
    console->log_in("engineer", room.first_password);
    console->join(group);
    console->take();
    return console;
  };
  const auto first = seat_of(1);
  const auto second = seat_of(2);
  AdminTool tool(room);
  // The store has seen the engineer work, so it isn't new any more.
  room.store.content().accounts.at("engineer").last_seen = {};
  CHECK(tool.refusal(text(Command::Restore, Field::File, "/b.db")) == "");
  const auto told = first->take();
  CHECK(std::ranges::count_if(told, [](const ServerPacket& packet) {
          return packet.CMD == static_cast<int>(ServerCommand::SrvFlashMessage) &&
                 packet.Buffer == guest_at_ten;
        }) == 1);
  const auto told_second = second->take();
  CHECK(std::ranges::count(told_second, static_cast<int>(ServerCommand::SrvFlashMessage),
                           &ServerPacket::CMD) == 0);
  CHECK(std::ranges::count_if(told_second, [](const ServerPacket& packet) {
          return packet.CMD == static_cast<int>(ServerCommand::SrvShowTimes) &&
                 packet.Buffer.starts_with("21:00");
        }) == 1);
}

TEST_CASE("A backup that is in the store, but can't be read, is told so") {
  ServerRoom room;
  {
    AdminTool tool(room);
    CHECK(tool.refusal(text(Command::Backup, Field::File, "/b.db")) == "");
  }
  room.crash();
  room.store.content() = {};
  room.start();
  room.wait(1s);
  AdminTool tool(room);
  room.store.take(1s);
  tool.send_bytes(admin::line_of(text(Command::Restore, Field::File, "/b.db")) + '\n');
  room.wait(1500ms);
  CHECK(room.store.content().accounts.contains("only2"));
  room.store.fail(true);
  room.wait(2s);
  CHECK(tool.take().at(0).at("error") ==
        "The backup is in the store, which can't be read now: start the server anew.");
}

TEST_CASE("A backup's flagged callers are known, and its restoring is told as done at last") {
  ServerRoom room;
  {
    AdminTool tool(room);
    CHECK(tool.refusal({Command::CallerFlag,
                        {{Field::Number, std::string("5550100")},
                         {Field::Flag, std::string("barred")}}}) == "");
    CHECK(tool.refusal(text(Command::Backup, Field::File, "/b.db")) == "");
  }
  room.crash();
  room.store.content() = {};
  room.start();
  room.wait(1s);
  AdminTool tool(room);
  CHECK(tool.rows({Command::CallerList}).empty());
  CHECK(tool.refusal(text(Command::Restore, Field::File, "/b.db")) == "");
  REQUIRE(tool.rows({Command::CallerList}).size() == 1);
  CHECK(tool.rows({Command::CallerList}).front().at("number") == "5550100");
}

TEST_CASE("What is no request is refused and the connection stays; a line without end is not") {
  ServerRoom room;
  AdminTool tool(room);
  tool.send_bytes("hello\n{\"command\": \"more\"}\n{\"comm");
  auto answers = tool.take();
  REQUIRE(answers.size() == 2);
  CHECK(answers[0].at("error") == "The request is no JSON.");
  CHECK(answers[1].at("error") == "There is nothing more.");
  tool.send_bytes("and\": \"seats\"}\n");
  CHECK(tool.take().at(0).at("ok") == true);
  // Many at once don't nest.
  std::string many;
  for (int i = 0; i < 20'000; ++i) many += i % 2 == 0 ? "{}\n" : "{\"command\": \"more\"}\n";
  tool.send_bytes(many);
  CHECK(tool.take().size() == 20'000);
  CHECK(tool.is_open());
  tool.send_bytes(std::string(admin::longest_request, ' '));
  CHECK(tool.take().empty());
  CHECK(tool.is_open());
  tool.send_bytes(" ");
  CHECK(tool.take().at(0).at("error") == "The request is too long.");
  CHECK(tool.heard_to_the_end());
}

TEST_CASE("A tool that leaves, or a server that ends, in the middle of a request harms nothing") {
  ServerRoom room;
  room.passwords.take(1s);
  {
    AdminTool leaving(room);
    leaving.send_bytes(admin::line_of(user_add("anna")) + '\n');
  }
  room.wait(5s);
  CHECK(is_let_in(room, "anna", "pass word"));

  for (const Request& request :
       {user_add("ben"), new_password("host", "x"), Request{Command::Calls},
        Request{Command::AuditVerify}, text(Command::Backup, Field::File, "/x"),
        text(Command::Restore, Field::File, "/x")}) {
    room.store.take(1s);
    AdminTool tool(room);
    tool.send_bytes(admin::line_of(request) + '\n');
    room.wait(1500ms);
    room.crash();
    room.wait(10s);
    room.store.take(0s);
    room.start();
    room.wait(1s);
  }
}

TEST_CASE("Before the store has been read nothing is done") {
  ServerRoom room;
  room.crash();
  room.store.stall(true);
  room.start();
  AdminTool tool(room);
  CHECK(tool.refusal({Command::UserList}) ==
        "The server waits for its store, which can't be read.");
  room.store.stall(false);
  room.wait(5s);
  CHECK(tool.rows({Command::UserList}).size() == 3);
}

TEST_CASE("Whatever tools ask, each line is answered once and the store stays right") {
  std::mt19937 random(20260106);
  for (int run = 0; run < 100; ++run) {
    std::vector<std::uint8_t> bytes(300);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    AdminSteps steps(bytes);
    CAPTURE(run);
    CHECK_MESSAGE(steps.play(), steps.fault());
  }
}

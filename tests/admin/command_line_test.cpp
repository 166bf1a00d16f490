#include "admin/command_line.h"

#include <doctest/doctest.h>

#include <filesystem>

#include "admin/trouble.h"

using namespace lineweir::admin;

namespace {

constexpr Moment now{1'769'882'730'250};

Order order_of(std::vector<std::string> words) {
  return std::get<Order>(read_command_line(std::move(words), now));
}

std::string trouble_of(std::vector<std::string> words) {
  try {
    read_command_line(std::move(words), now);
  } catch (const Trouble& trouble) {
    return trouble.what();
  }
  return "";
}

using Numbers = std::vector<std::int64_t>;
using Texts = std::vector<std::string>;

}  // namespace

TEST_CASE("Each command becomes its request") {
  struct Case {
    Texts words;
    Request request;
  };
  const auto number = [](std::int64_t value) { return value; };
  const auto text = [](const char* value) { return std::string(value); };
  const std::vector<Case> cases = {
      {{"user", "add", "anna", "--template", "screener"},
       {Command::UserAdd, {{Field::Name, text("anna")}, {Field::Template, text("screener")}}}},
      {{"user", "add", "--group", "1", "anna", "--group", "2", "--template", "host"},
       {Command::UserAdd,
        {{Field::Name, text("anna")},
         {Field::Template, text("host")},
         {Field::Groups, Numbers{1, 2}}}}},
      {{"user", "list"}, {Command::UserList}},
      {{"user", "password", "Zoë L"}, {Command::UserPassword, {{Field::Name, text("Zoë L")}}}},
      {{"user", "lock", "a"}, {Command::UserLock, {{Field::Name, text("a")}}}},
      {{"user", "unlock", "a"}, {Command::UserUnlock, {{Field::Name, text("a")}}}},
      {{"user", "remove", "a"}, {Command::UserRemove, {{Field::Name, text("a")}}}},
      {{"user", "right", "a", "7"},
       {Command::UserRight, {{Field::Name, text("a")}, {Field::Group, number(7)}}}},
      {{"user", "right", "a", "7", "+Dial", "-ExitMenu", "+CallerDataAllowed"},
       {Command::UserRight,
        {{Field::Name, text("a")},
         {Field::Group, number(7)},
         {Field::Changes, Texts{"+Dial", "-ExitMenu", "+CallerDataAllowed"}}}}},
      {{"profile", "show", "a"}, {Command::ProfileShow, {{Field::Name, text("a")}}}},
      {{"profile", "reset", "a"}, {Command::ProfileReset, {{Field::Name, text("a")}}}},
      {{"seats"}, {Command::Seats}},
      {{"lines", "3"}, {Command::Lines, {{Field::Group, number(3)}}}},
      {{"call", "1", "10"},
       {Command::Call, {{Field::Group, number(1)}, {Field::Line, number(10)}}}},
      {{"call", "1", "10", "--number", "+44 20"},
       {Command::Call,
        {{Field::Group, number(1)}, {Field::Line, number(10)}, {Field::Number, text("+44 20")}}}},
      {{"hangup", "1", "20"},
       {Command::HangUp, {{Field::Group, number(1)}, {Field::Line, number(20)}}}},
      {{"event", "1", "--last", "18:00", "--next", "", "The", "news"},
       {Command::Event,
        {{Field::Group, number(1)},
         {Field::Last, text("18:00")},
         {Field::Next, text("")},
         {Field::Text, text("The news")}}}},
      {{"calls"}, {Command::Calls}},
      {{"calls", "--since", "2h", "--group", "4"},
       {Command::Calls,
        {{Field::Since, number(now.count() - 2 * 3'600'000)}, {Field::Group, number(4)}}}},
      {{"audit", "list"}, {Command::AuditList}},
      {{"audit", "verify"}, {Command::AuditVerify}},
      {{"message", "Break in two", "--group", "1"},
       {Command::Message, {{Field::Text, text("Break in two")}, {Field::Group, number(1)}}}},
      {{"message", "--", "--help"}, {Command::Message, {{Field::Text, text("--help")}}}},
      {{"shutdown"}, {Command::Shutdown}},
      {{"shutdown", "--seconds", "0", "New", "version"},
       {Command::Shutdown, {{Field::Seconds, number(0)}, {Field::Text, text("New version")}}}},
      {{"backup", "/var/b/../a.db"}, {Command::Backup, {{Field::File, text("/var/a.db")}}}},
      {{"restore", "/a.db"}, {Command::Restore, {{Field::File, text("/a.db")}}}},
  };
  for (const Case& each : cases) {
    CAPTURE(each.words);
    CHECK(order_of(each.words).request == each.request);
  }
}

TEST_CASE("The options of all commands stand anywhere") {
  const Texts words = {"user", "right", "a", "1", "-Dial"};
  for (std::size_t at = 0; at <= words.size(); ++at) {
    Texts with = words;
    const Texts options = {"--json", "--socket", "/s"};
    // Not between the words of a command.
    if (at == 1) continue;
    with.insert(with.begin() + static_cast<std::ptrdiff_t>(at), options.begin(), options.end());
    CAPTURE(at);
    const Order order = order_of(with);
    CHECK(order.json);
    CHECK(order.socket == "/s");
    CHECK(order.request.texts(Field::Changes) == Texts{"-Dial"});
  }
  CHECK(order_of({"seats"}).socket == "/run/lineweir/admin.sock");
  CHECK_FALSE(order_of({"seats"}).json);
  CHECK(order_of({"calls", "--csv"}).csv);
}

TEST_CASE("A file that is backed up is named from the root") {
  CHECK(order_of({"backup", "b.db"}).request.text(Field::File) ==
        (std::filesystem::current_path() / "b.db").string());
}

TEST_CASE("Two commands need a password, which comes from where it is told to") {
  CHECK(order_of({"user", "add", "a", "--template", "host"}).needs_password());
  CHECK_FALSE(order_of({"user", "add", "a", "--template", "host"}).password_from_input);
  CHECK(order_of({"user", "password", "a", "--password-stdin"}).needs_password());
  CHECK(order_of({"user", "password", "a", "--password-stdin"}).password_from_input);
  CHECK_FALSE(order_of({"user", "lock", "a"}).needs_password());
}

TEST_CASE("What is no order is told in one line") {
  const std::vector<Texts> wrong = {
      {},
      {"dance"},
      {"user"},
      {"user", "dance"},
      {"user", "add", "a"},
      {"user", "add", "--template", "host"},
      {"user", "add", "a", "--template", "host", "--group", "0"},
      {"user", "add", "a", "--template", "host", "--group", "x"},
      {"user", "add", "a", "b", "--template", "host"},
      {"lines"},
      {"lines", "x"},
      {"lines", "251"},
      {"call", "1"},
      {"call", "1", "21"},
      {"call", "1", "0"},
      {"calls", "--since", "yesterday"},
      {"calls", "extra"},
      {"message"},
      {"shutdown", "--seconds", "-1"},
      {"shutdown", "--seconds", "86401"},
      {"backup"},
      {"backup", ""},
      {"lines", "1", "+Dial"},
      {"seats", "--csv"},
      {"user", "lock", "\xFF"},
  };
  for (const Texts& words : wrong) {
    CAPTURE(words);
    const std::string trouble = trouble_of(words);
    CHECK(trouble != "");
    CHECK(trouble.find('\n') == std::string::npos);
  }
  CHECK(trouble_of({"dance"}) == "\"dance\" is no command; --help tells what there is.");
  CHECK(trouble_of({"user", "dance"}) == "\"dance\" is no command; --help tells what there is.");
  CHECK(trouble_of({"restore", ""}) == "The name of the file is empty.");
}

TEST_CASE("Help is there for the program and for each command") {
  for (const Texts& words : {Texts{"--help"}, Texts{"user", "--help"}, Texts{"calls", "--help"}}) {
    CHECK(std::get<Help>(read_command_line(words, now)).text.find("Usage: lineweir-admin") !=
          std::string::npos);
  }
}

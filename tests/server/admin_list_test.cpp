// Lists that administrators' tools take page by page.

#include "server/admin_list.h"

#include <doctest/doctest.h>

#include "adminlink/admin_columns.h"
#include "server/short_requests.h"

using namespace lineweir;
using namespace lineweir::server;
using namespace lineweir::test;
using namespace std::chrono_literals;

namespace {

// Waits for no answer.
void send(AdminTool& tool, const std::vector<Request>& requests) {
  std::string lines;
  for (const Request& request : requests) lines += admin::line_of(request) + '\n';
  tool.send_bytes(lines);
}

// `on_page` is told how many rows have come so far.
Texts pages_of(AdminList& list, const std::function<void(std::size_t rows)>& on_page = {}) {
  Texts pages;
  std::size_t rows = 0;
  for (bool more = true; more;) {
    list.next_page([&](const std::optional<std::string>& page) { pages.push_back(page.value()); });
    const json answer = json::parse(pages.back());
    more = answer.at("more").get<bool>();
    rows += answer.at("rows").size();
    if (on_page) on_page(rows);
  }
  return pages;
}

}  // namespace

TEST_SUITE("server/admin list") {
  TEST_CASE("a list that is read piece by piece has the same pages as one that is there at once") {
    AdminList::Rows all;
    for (int i = 0; i < 100'000; ++i) all.push_back(i % 1000);
    AdminList whole(all);
    std::size_t read = 0;
    AdminList in_pieces([&](const AdminList::Told& told) {
      AdminList::Rows piece;
      while (piece.size() < 50 && read < all.size()) piece.push_back(all[read++]);
      told(piece);
    });
    // Of what isn't taken yet no more than a piece or two is held.
    const Texts pages = pages_of(in_pieces, [&](std::size_t rows) { CHECK(read - rows <= 100); });
    CHECK(pages.size() > 5);
    CHECK(pages == pages_of(whole));
    // They are as full as they may be, but for the last one.
    for (const std::string& page : pages) {
      CHECK(page.size() < admin::longest_answer);
      if (&page != &pages.back()) CHECK(page.size() > admin::longest_answer - 300);
    }
  }

  TEST_CASE("a row that is too long for a page has its texts cut, between two letters") {
    const std::string text = "a" + std::string(admin::longest_answer, 'x');
    AdminList list(AdminList::Rows{{{"name", text}, {"line", 4}, {"steps", {1, 2, 3}}}});
    const Texts pages = pages_of(list);
    REQUIRE(pages.size() == 1);
    const json row = json::parse(pages[0]).at("rows").at(0);
    CHECK(row == json{{"name", text.substr(0, 300)}, {"line", 4}});
  }

  TEST_CASE("a line at a numbered handset is listed with a letter that people can read") {
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].kind = 4;
    ServerRoom room(options);
    AdminTool tool(room);
    for (const int console : {0, 3}) {
      const auto seat = room.seat("host", 1, console);
      room.exchange().arrive(console, {});
      seat->word('P', console);
      const auto rows = tool.rows({Command::Lines, {{Field::Group, std::int64_t{1}}}});
      CHECK(rows.at(static_cast<std::size_t>(console)).at("letter") == "P");
    }
  }

  TEST_CASE("what is asked behind a list that the store reads is answered too") {
    ServerRoom room;
    AdminTool tool(room);
    room.store.take(100ms);
    send(tool, {{Command::Calls}, {Command::Seats}, {Command::More}});
    room.wait(1s);
    const auto answers = tool.take();
    REQUIRE(answers.size() == 3);
    CHECK(answers[0].at("rows").empty());
    CHECK(answers[1].at("more") == false);
    // The list of seats stands in place of that of calls, and is all told.
    CHECK(answers[2].at("ok") == true);
  }

  TEST_CASE("what is asked between two pages ends the list") {
    ServerRoom room;
    AdminTool tool(room);
    store_calls_of_many_pages(room);
    CHECK(tool.ask({Command::Calls}).at("more") == true);
    CHECK(tool.refusal({of_user(Command::UserUnlock, "host")}) == "");
    CHECK(tool.refusal({Command::More}) == "There is nothing more.");
  }
}

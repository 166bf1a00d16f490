#include "messages/message_history.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

HeardMessage heard(int hour, int minute, const char* sender, std::string text) {
  return {
      .at = {2026, 1, 5, hour, minute, 0}, .group = 1, .sender = sender, .text = std::move(text)};
}

TEST_SUITE("messages/history") {
  TEST_CASE("each message is a line with its time, behind a heading of the day and the group") {
    MessageHistory history;
    CHECK(history.text() == "");
    history.add(heard(10, 2, "Ann", "Hi"));
    history.add(heard(10, 3, "", "plain"));
    HeardMessage urgent = heard(10, 4, "Bea", "Stop");
    urgent.urgent = true;
    history.add(urgent);
    CHECK(history.text() ==
          "1/5/2026, group 1\r\n10:02:00  Ann: Hi\r\n10:03:00  plain\r\n"
          "10:04:00  URGENT  Bea: Stop");
  }

  TEST_CASE("another day or another group has a heading of its own") {
    MessageHistory history;
    history.add(heard(23, 59, "Ann", "late"));
    HeardMessage next_day = heard(0, 1, "Ann", "early");
    next_day.at.day = 6;
    history.add(next_day);
    HeardMessage elsewhere = next_day;
    elsewhere.group = 12;
    history.add(elsewhere);
    CHECK(
        history.text() ==
        "1/5/2026, group 1\r\n23:59:00  Ann: late\r\n1/6/2026, group 1\r\n00:01:00  Ann: early\r\n"
        "1/6/2026, group 12\r\n00:01:00  Ann: early");
  }

  TEST_CASE("a long show loses its oldest messages and keeps the newest") {
    MessageHistory history;
    for (int i = 0; i < 1000; ++i) {
      history.add(heard(10, 0, "Ann", std::string(500, 'x') + std::to_string(i)));
      CHECK(history.text().size() <= 200'000);
    }
    CHECK(history.text().starts_with("1/5/2026, group 1\r\n10:00:00  Ann: "));
    CHECK(history.text().ends_with("x999"));
    CHECK(history.text().size() > 100'000);
  }

  TEST_CASE("a single message of any length stays") {
    MessageHistory history;
    history.add(heard(10, 0, "Ann", std::string(300'000, 'x')));
    CHECK(history.text().size() > 300'000);
    history.add(heard(10, 1, "Ann", "Hi"));
    CHECK(history.text() == "1/5/2026, group 1\r\n10:01:00  Ann: Hi");
  }
}

}  // namespace
}  // namespace lineweir::test

#include "server/login_guard.h"

#include <doctest/doctest.h>

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using Moment = LoginGuard::Moment;

// So many wrong passwords for the user, each from an address of its own.
void guess(LoginGuard& guard, int count, Moment now, const std::string& user = "host") {
  for (int i = 0; i < count; ++i) guard.note_wrong(user, "address " + std::to_string(i), now);
}

TEST_CASE("the fifth wrong password within a minute locks the user") {
  LoginGuard guard;
  guess(guard, 4, 10s);
  CHECK_FALSE(guard.user_is_locked("host", 10s));
  CHECK(guard.user_locked_for("host", 10s) == 0s);
  guess(guard, 1, 10s);
  CHECK(guard.user_is_locked("host", 10s));
  CHECK(guard.user_locked_for("host", 20s) == 50s);
  CHECK(guard.user_is_locked("host", 70s - 1ms));
  CHECK_FALSE(guard.user_is_locked("host", 70s));
  CHECK_FALSE(guard.user_is_locked("screener", 10s));
}

TEST_CASE("wrong passwords that are a minute apart lock nobody") {
  LoginGuard guard;
  for (int i = 0; i < 100; ++i) guess(guard, 1, i * 16s);
  CHECK_FALSE(guard.user_is_locked("host", 1600s));
  LoginGuard close;
  for (int i = 0; i < 5; ++i) guess(close, 1, i * 15s);
  CHECK(close.user_is_locked("host", 60s));
}

TEST_CASE("each lock is twice as long as the one before, to an hour") {
  LoginGuard guard;
  Moment now = 1s;
  for (const auto minutes : {1min, 2min, 4min, 8min, 16min, 32min, 60min, 60min}) {
    guess(guard, 5, now);
    CHECK(guard.user_locked_for("host", now) == Moment(minutes));
    now += minutes;
  }
}

TEST_CASE("tries during a lock don't count") {
  LoginGuard guard;
  guess(guard, 5, 1s);
  guess(guard, 100, 30s);
  CHECK_FALSE(guard.user_is_locked("host", 61s));
  guess(guard, 4, 61s);
  CHECK_FALSE(guard.user_is_locked("host", 61s));
}

TEST_CASE("tries for a locked user count for their address, which is told of once a lock") {
  LoginGuard guard;
  const auto guess_there = [&](int count, Moment now) {
    for (int i = 0; i < count; ++i) guard.note_wrong("host", "there", now);
  };
  guess_there(49, 1s);
  CHECK_FALSE(guard.address_is_locked("there", 1s));
  CHECK_FALSE(guard.note_locked_try("nowhere"));
  guess_there(1, 1s);
  CHECK(guard.address_is_locked("there", 1s));
  CHECK(guard.user_locked_for("host", 1s) == 1min);
  CHECK(guard.note_locked_try("there"));
  CHECK_FALSE(guard.note_locked_try("there"));
  guess_there(50, 5min);
  CHECK(guard.note_locked_try("there"));
}

TEST_CASE("the right password, or a day, makes the next lock a minute again") {
  LoginGuard guard;
  guess(guard, 5, 1s);
  guess(guard, 5, 2min);
  CHECK(guard.user_locked_for("host", 2min) == 2min);
  guess(guard, 5, 25h);
  CHECK(guard.user_locked_for("host", 25h) == 1min);
  guard.note_right("host");
  CHECK_FALSE(guard.user_is_locked("host", 25h));
  guess(guard, 4, 26h);
  guard.note_right("host");
  guess(guard, 4, 26h);
  CHECK_FALSE(guard.user_is_locked("host", 26h));
}

TEST_CASE("fifty wrong passwords within ten minutes lock an address, whoever's they are") {
  LoginGuard guard;
  for (int i = 0; i < 49; ++i) {
    guard.note_wrong("user " + std::to_string(i), "10.0.0.9", i * 12s);
  }
  CHECK_FALSE(guard.address_is_locked("10.0.0.9", 588s));
  guard.note_wrong("host", "10.0.0.9", 599s);
  CHECK(guard.address_is_locked("10.0.0.9", 599s));
  CHECK_FALSE(guard.address_is_locked("10.0.0.8", 599s));
  CHECK_FALSE(guard.user_is_locked("host", 599s));
  CHECK_FALSE(guard.address_is_locked("10.0.0.9", 659s));

  LoginGuard slow;
  for (int i = 0; i < 500; ++i) slow.note_wrong("user " + std::to_string(i), "10.0.0.9", i * 13s);
  CHECK_FALSE(slow.address_is_locked("10.0.0.9", 500 * 13s));
}

TEST_CASE("a flood of names makes nobody's tries forgotten who is tried now") {
  LoginGuard guard;
  for (int i = 0; i < 9'999; ++i) guard.note_wrong("user " + std::to_string(i), "a", 1s);
  guess(guard, 4, 2s);
  for (int i = 0; i < 100; ++i) guard.note_wrong("other " + std::to_string(i), "a", 3s);
  guess(guard, 1, 4s);
  CHECK(guard.user_is_locked("host", 4s));
}

TEST_CASE("a flood of names ends no long lock, also a while behind it") {
  LoginGuard guard;
  guess(guard, 5, 1s);
  guess(guard, 5, 61s);
  for (int i = 0; i < 10'100; ++i) guard.note_wrong("user " + std::to_string(i), "a", 150s);
  CHECK(guard.user_is_locked("host", 160s));
}

TEST_CASE("names that were tried long ago make room for others") {
  LoginGuard guard;
  for (int i = 0; i < 10'000; ++i) guard.note_wrong("user " + std::to_string(i), "a", 1s);
  guess(guard, 4, 2min);
  for (int i = 0; i < 5'000; ++i) guard.note_wrong("other " + std::to_string(i), "a", 2min);
  guess(guard, 1, 2min);
  CHECK(guard.user_is_locked("host", 2min));
}

TEST_CASE("a flood of names makes no lock end") {
  LoginGuard guard;
  guess(guard, 5, 1s);
  for (int i = 0; i < 25'000; ++i) {
    guard.note_wrong("user " + std::to_string(i), "address " + std::to_string(i), 2s);
  }
  CHECK(guard.user_is_locked("host", 3s));
}

}  // namespace
}  // namespace lineweir::server

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>

#include <algorithm>
#include <chrono>
#include <set>

#include "platform/scripted/scripted_password_hash.h"
#include "platform/scripted/virtual_event_loop.h"
#include "platform/sodium/argon2id.h"
#include "platform/sodium/sodium_password_hash.h"
#include "platform/sodium/sodium_random_numbers.h"
#include "pumped_poster.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

template <int threads>
struct SodiumDesk {
  PumpedPoster poster;
  SodiumPasswordHash passwords{poster, threads};

  bool run_until(const std::function<bool()>& condition) { return poster.run_until(condition); }
};

struct ScriptedPasswordDesk {
  VirtualEventLoop loop;
  ScriptedPasswordHash passwords{loop};

  bool run_until(const std::function<bool()>& condition) {
    for (int i = 0; i < 1000 && !condition(); ++i) loop.advance(Milliseconds(10));
    return condition();
  }
};

template <class Desk>
std::string hash_of(Desk& desk, const std::string& password) {
  std::string hash;
  desk.passwords.hash(password, [&](std::string made) { hash = std::move(made); });
  REQUIRE(desk.run_until([&] { return !hash.empty(); }));
  return hash;
}

template <class Desk>
bool fits(Desk& desk, const std::string& hash, const std::string& password) {
  int told = -1;
  desk.passwords.verify(hash, password, [&](bool fit) { told = fit ? 1 : 0; });
  REQUIRE(desk.run_until([&] { return told >= 0; }));
  return told == 1;
}

}  // namespace

TEST_CASE_TEMPLATE("A hash fits its password and no other, and tells nothing of it", Desk,
                   SodiumDesk<1>, SodiumDesk<2>, ScriptedPasswordDesk) {
  Desk desk;
  const std::string password("caf\xE9 \0x", 7);
  const std::string hash = hash_of(desk, password);
  CHECK(fits(desk, hash, password));
  CHECK_FALSE(fits(desk, hash, password.substr(0, 5)));
  CHECK_FALSE(fits(desk, hash, password + "."));
  CHECK_FALSE(fits(desk, hash, ""));
  CHECK(hash.find("caf") == std::string::npos);
  CHECK(std::ranges::all_of(hash, [](char c) { return c > ' ' && c < '\x7F'; }));
  CHECK(hash != hash_of(desk, password));
  CHECK(fits(desk, hash_of(desk, ""), ""));
}

TEST_CASE_TEMPLATE("What is no hash fits nothing", Desk, SodiumDesk<1>, ScriptedPasswordDesk) {
  Desk desk;
  const std::string hash = hash_of(desk, "secret");
  for (const std::string& none :
       {std::string(), std::string("x"), std::string("$argon2id$"), std::string(1000, '$'),
        hash.substr(0, hash.size() / 2), std::string(1, '\0') + hash}) {
    CHECK_FALSE(fits(desk, none, "secret"));
    CHECK_FALSE(fits(desk, none, ""));
  }
}

TEST_CASE_TEMPLATE("What is done is told in the order of the calls, and not from within them", Desk,
                   SodiumDesk<1>, SodiumDesk<2>, ScriptedPasswordDesk) {
  Desk desk;
  const std::string hash = hash_of(desk, "secret");
  std::string order;
  for (int i = 0; i < 4; ++i) {
    const char digit = static_cast<char>('0' + i);
    desk.passwords.verify(hash, "secret", [&order, digit](bool) { order += digit; });
    desk.passwords.hash("x", [&order](const std::string&) { order += 'h'; });
  }
  CHECK(order.empty());
  CHECK(desk.passwords.waiting() == 8);
  REQUIRE(desk.run_until([&] { return order.size() == 8; }));
  CHECK(order == "0h1h2h3h");
  CHECK(desk.passwords.waiting() == 0);
}

TEST_CASE("A hash is Argon2id over 19 MiB, twice, with a salt") {
  begin_sodium();
  std::string password = "secret";
  CHECK(argon2id_hash(password).starts_with("$argon2id$v=19$m=19456,t=2,p=1$"));
  // It doesn't stay in the memory.
  CHECK(password == std::string(6, '\0'));
}

TEST_CASE("What is no hash takes the work of one") {
  // Counted in the memory that the work fills, which no other step here does.
  begin_sodium();
  std::string password = "secret";
  const std::string nobody = argon2id_hash(password);
  const auto time_of = [&](const std::string& hash) {
    auto least = std::chrono::nanoseconds::max();
    for (int i = 0; i < 5; ++i) {
      std::string tried = "wrong";
      timespec begin{};
      timespec end{};
      ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &begin);
      CHECK_FALSE(argon2id_fits(hash, tried, nobody));
      ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
      least = std::min(least, std::chrono::nanoseconds((end.tv_sec - begin.tv_sec) * 1'000'000'000 +
                                                       end.tv_nsec - begin.tv_nsec));
    }
    return least;
  };
  std::string other = "other";
  // Far apart: the one without work would be a thousand times shorter.
  CHECK(time_of("") * 3 > time_of(argon2id_hash(other)));
}

TEST_CASE("A password's hash that waits at the end is told to nobody") {
  PumpedPoster poster;
  int told = 0;
  {
    SodiumPasswordHash passwords(poster, 2);
    for (int i = 0; i < 5; ++i) passwords.hash("x", [&](const std::string&) { ++told; });
  }
  poster.run_posted();
  CHECK(told == 0);
}

TEST_CASE("Numbers of chance are spread over their range and differ") {
  SodiumRandomNumbers random;
  std::set<double> seen;
  int upper = 0;
  for (int i = 0; i < 1000; ++i) {
    const double number = random.next();
    REQUIRE(number >= 0);
    REQUIRE(number < 1);
    if (number >= 0.5) ++upper;
    seen.insert(number);
  }
  CHECK(seen.size() == 1000);
  CHECK(upper > 350);
  CHECK(upper < 650);
  CHECK(random_bytes(32) != random_bytes(32));
}

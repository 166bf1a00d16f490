#include "state/server_addresses.h"

#include <doctest/doctest.h>

#include "support/failure_number.h"

namespace lineweir {
namespace {

using test::failure_number_of;
using Servers = std::vector<StudioServer>;

constexpr int port = 2001;

Servers servers(std::string_view address) { return studio_servers(address, port); }

std::string why_not(const std::string& address) {
  try {
    servers(address);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return {};
}

TEST_SUITE("state/server addresses") {
  TEST_CASE("one address is one server, as it is typed") {
    CHECK(servers("studio.example") == Servers{{"studio.example", port}});
    CHECK(servers("  10.0.0.7 ") == Servers{{"10.0.0.7", port}});
    CHECK(servers("tls:studio.example") == Servers{{"tls:studio.example", port}});
    CHECK(servers("TLS: studio.example") == Servers{{"tls:studio.example", port}});
  }

  TEST_CASE("commas part servers, in their order, with blanks around them or none") {
    const Servers two = {{"one", port}, {"tls:two", port}};
    CHECK(servers("one,tls:two") == two);
    CHECK(servers("  one , tls: two ") == two);
  }

  TEST_CASE("a server may have a port of its own") {
    CHECK(servers("one:2002, two, tls:three:65535, four : 1") ==
          Servers{{"one", 2002}, {"two", port}, {"tls:three", 65535}, {"four", 1}});
  }

  TEST_CASE("an IPv6 address is one host, and has its port behind brackets") {
    CHECK(servers("::1") == Servers{{"::1", port}});
    CHECK(servers("fe80::1%eth0, tls:2001:db8::7") ==
          Servers{{"fe80::1%eth0", port}, {"tls:2001:db8::7", port}});
    CHECK(servers("[::1]:2002, tls:[::2], [ ::3 ] : 7") ==
          Servers{{"::1", 2002}, {"tls:::2", port}, {"::3", 7}});
  }

  TEST_CASE("empty places between commas are passed over") {
    const Servers two = {{"one", port}, {"two", port}};
    CHECK(servers(",one,,  ,two,") == two);
    for (const char* empty : {"", "   ", ",", " , ,, "}) {
      CAPTURE(empty);
      CHECK(servers(empty) == Servers{{"", port}});
    }
  }

  TEST_CASE("a server that is named again counts once, where it stood first") {
    CHECK(servers("one, two, ONE, one:2001, two:2002, tls:one") ==
          Servers{{"one", port}, {"two", port}, {"two", 2002}, {"tls:one", port}});
  }

  TEST_CASE("a port that can't be is told with its address") {
    for (const char* bad : {"one:0", "one:65536", "one:99999999999", "one:-1", "one:", "one:http",
                            "one:20 01", "[::1]:0", "[::1]:x"}) {
      CAPTURE(bad);
      CHECK(why_not(std::string("first, ") + bad) ==
            "The port in the address \"" + std::string(bad) + "\" isn't a number from 1 to 65535.");
      CHECK(failure_number_of([&] { servers(bad); }) == failure_number::invalid_argument);
    }
  }

  TEST_CASE("brackets that don't close, and what stands behind them, are told") {
    CHECK(why_not("[::1") == "The address \"[::1\" lacks a closing bracket.");
    CHECK(why_not("[::1]2001") ==
          "Behind the bracket of the address \"[::1]2001\" only a colon and a port can stand.");
  }

  TEST_CASE("an address without a host is told") {
    for (const char* bad : {"tls:", ":2001", "tls::2001", "[]", "[]:2001"}) {
      CAPTURE(bad);
      CHECK(why_not(bad) == "The address \"" + std::string(bad) + "\" names no server.");
    }
  }

  TEST_CASE("no more than ten servers are taken, and no host beyond 255 characters") {
    std::string address;
    for (int number = 1; number <= 200; ++number) {
      if (number == 11) CHECK(servers(address).size() == 10);
      address += "host" + std::to_string(number) + ",";
    }
    CHECK(why_not(address) == "A console can know at most 10 servers.");
    const std::string longest(255, 'h');
    CHECK(servers(longest + ":2002") == Servers{{longest, 2002}});
    CHECK(why_not(longest + "h") == "A server's name has at most 255 characters.");
    CHECK(why_not(std::string(1'000'000, ':')) == "A server's name has at most 255 characters.");
    CHECK(why_not("one:" + std::string(1'000'000, '9')).size() < 200);
  }

  TEST_CASE("an address that can't be, and was taken long ago, is a single host") {
    CHECK(known_studio_servers("one:http, two", port) == Servers{{"one:http, two", port}});
    CHECK(known_studio_servers("one, two", port) == servers("one, two"));
  }

  TEST_CASE("a server's name has its port") {
    CHECK(name_of({"tls:studio.example", 2001}) == "tls:studio.example, port 2001");
  }
}

}  // namespace
}  // namespace lineweir

#include "platform/asio/metrics_endpoint.h"

#include <doctest/doctest.h>

#include "platform/asio/loop_peer.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;
using lineweir::test::Peer;

namespace {

struct MetricsFixture {
  AsioLoop loop;
  int asked = 0;
  MetricsEndpoint endpoint{loop, "127.0.0.1", 0, [this] {
                             ++asked;
                             return "lineweir_seats " + std::to_string(asked) + "\n";
                           }};

  Peer connect() { return Peer::tcp("127.0.0.1", endpoint.port()); }
  std::string answer(Peer& peer) {
    std::string got;
    CHECK(wait_until(loop, [&] {
      got += peer.read();
      return peer.ended();
    }));
    return got;
  }
  std::string answer_to(const std::string& request) {
    Peer peer = connect();
    peer.write(request);
    return answer(peer);
  }
};

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

TEST_CASE_FIXTURE(MetricsFixture, "Figures are told by HTTP, anew each time") {
  for (const std::string number : {"1", "2"}) {
    const std::string got = answer_to("GET /metrics HTTP/1.1\r\nHost: here\r\n\r\n");
    CHECK(got.starts_with("HTTP/1.1 200 OK\r\n"));
    CHECK(has(got, "\r\nContent-Type: text/plain; version=0.0.4; charset=utf-8\r\n"));
    CHECK(has(got, "\r\nContent-Length: 17\r\n"));
    CHECK(has(got, "\r\nConnection: close\r\n"));
    CHECK(got.ends_with("\r\n\r\nlineweir_seats " + number + "\n"));
  }
  CHECK(answer_to("GET /metrics?name=x HTTP/1.0\r\n\r\n").starts_with("HTTP/1.0 200 OK\r\n"));
}

TEST_CASE_FIXTURE(MetricsFixture, "There is nothing else, and nothing to be written") {
  CHECK(answer_to("GET / HTTP/1.1\r\n\r\n").starts_with("HTTP/1.1 404 Not Found\r\n"));
  CHECK(answer_to("GET /metricsx HTTP/1.1\r\n\r\n").starts_with("HTTP/1.1 404 "));
  const std::string post = answer_to("POST /metrics HTTP/1.1\r\nContent-Length: 5\r\n\r\nhello");
  CHECK(post.starts_with("HTTP/1.1 405 Method Not Allowed\r\n"));
  CHECK(has(post, "\r\nAllow: GET\r\n"));
  const std::string head = answer_to("HEAD /metrics HTTP/1.1\r\n\r\n");
  CHECK(head.starts_with("HTTP/1.1 405 "));
  CHECK(head.ends_with("\r\n\r\n"));
  CHECK(asked == 0);
}

TEST_CASE_FIXTURE(MetricsFixture, "What is no request, or too long a one, is closed") {
  CHECK(answer_to("hello\r\n\r\n").empty());
  CHECK(answer_to("GET /metrics HTTP/1.1\r\nX: " + std::string(10'000, 'x') + "\r\n\r\n").empty());
  Peer gone = connect();
  gone.write("GET /met");
  gone.close();
  CHECK(answer_to("GET /metrics HTTP/1.1\r\n\r\n").starts_with("HTTP/1.1 200 "));
}

TEST_CASE_FIXTURE(MetricsFixture, "So many ask at once, and no more") {
  std::vector<Peer> silent;
  for (int i = 0; i < MetricsEndpoint::most_askers; ++i) silent.push_back(connect());
  run_for(loop, 50ms);
  CHECK(answer_to("GET /metrics HTTP/1.1\r\n\r\n").empty());
  silent.clear();
  run_for(loop, 50ms);
  CHECK(answer_to("GET /metrics HTTP/1.1\r\n\r\n").starts_with("HTTP/1.1 200 "));
}

TEST_CASE_FIXTURE(MetricsFixture, "Who asks for nothing is closed after a while") {
  Peer silent = connect();
  const auto begin = loop.now();
  CHECK(answer(silent).empty());
  CHECK(loop.now() - begin >= MetricsEndpoint::longest_request - 100ms);
}

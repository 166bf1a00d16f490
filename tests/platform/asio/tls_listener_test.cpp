#include <doctest/doctest.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <sys/stat.h>

#include <fstream>
#include <optional>

#include "platform/asio/loop_peer.h"
#include "platform/asio/tcp_listener.h"
#include "platform/asio/tls_certificate.h"
#include "platform/asio/tls_identity.h"
#include "platform/temporary_directory.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;
using lineweir::test::Peer;

namespace {

// A client of OpenSSL's that never waits.
class TlsPeer {
 public:
  // Trusts the certificate of the file alone, and only under that name.
  TlsPeer(Peer peer, const std::string& trusted, const std::string& name,
          int newest = TLS1_3_VERSION)
      : peer_(std::move(peer)), context_(SSL_CTX_new(TLS_client_method()), SSL_CTX_free) {
    SSL_CTX_load_verify_locations(context_.get(), trusted.c_str(), nullptr);
    SSL_CTX_set_verify(context_.get(), SSL_VERIFY_PEER, nullptr);
    SSL_CTX_set_min_proto_version(context_.get(), TLS1_VERSION);
    SSL_CTX_set_max_proto_version(context_.get(), newest);
    if (newest < TLS1_2_VERSION) SSL_CTX_set_security_level(context_.get(), 0);
    ssl_ = {SSL_new(context_.get()), SSL_free};
    X509_VERIFY_PARAM* const checked = SSL_get0_param(ssl_.get());
    if (X509_VERIFY_PARAM_set1_ip_asc(checked, name.c_str()) != 1) {
      X509_VERIFY_PARAM_set1_host(checked, name.c_str(), 0);
    }
    SSL_set_fd(ssl_.get(), peer_.socket());
  }

  // True once the handshake is over, well or not.
  bool shake_hands() {
    if (stands_ || failed_) return true;
    note(SSL_connect(ssl_.get()), stands_);
    return stands_ || failed_;
  }
  bool stands() const { return stands_; }
  bool failed() const { return failed_; }
  bool ended() const { return ended_; }
  long verdict() const { return SSL_get_verify_result(ssl_.get()); }
  int version() const { return SSL_version(ssl_.get()); }
  std::string serial() const {
    const ASN1_INTEGER* const number =
        X509_get0_serialNumber(SSL_get0_peer_certificate(ssl_.get()));
    return {reinterpret_cast<const char*>(ASN1_STRING_get0_data(number)),
            static_cast<std::size_t>(ASN1_STRING_length(number))};
  }

  std::size_t write(std::string_view bytes) {
    ERR_clear_error();
    const int count = SSL_write(ssl_.get(), bytes.data(), static_cast<int>(bytes.size()));
    return count > 0 ? static_cast<std::size_t>(count) : 0;
  }
  std::string read() {
    std::string all;
    std::array<char, 16384> piece;
    ERR_clear_error();
    int count = 0;
    while ((count = SSL_read(ssl_.get(), piece.data(), static_cast<int>(piece.size()))) > 0) {
      all.append(piece.data(), static_cast<std::size_t>(count));
    }
    bool unused = false;
    note(count, unused);
    return all;
  }

 private:
  void note(int result, bool& done) {
    if (result > 0) {
      done = true;
      return;
    }
    switch (SSL_get_error(ssl_.get(), result)) {
      case SSL_ERROR_WANT_READ:
      case SSL_ERROR_WANT_WRITE:
        return;
      case SSL_ERROR_ZERO_RETURN:
        ended_ = true;
        return;
      default:
        failed_ = true;
    }
  }

  Peer peer_;
  std::shared_ptr<SSL_CTX> context_;
  std::shared_ptr<SSL> ssl_;
  bool stands_ = false;
  bool failed_ = false;
  // In order, with a word of farewell.
  bool ended_ = false;
};

struct TlsFixture {
  TemporaryDirectory directory;
  std::string certificate = directory.path() / "server.crt";
  std::string key = directory.path() / "server.key";
  AsioLoop loop;
  std::optional<TlsIdentity> identity;
  std::optional<TcpListener> listener;
  std::vector<std::string> troubles;
  std::vector<std::unique_ptr<Connection>> connections;
  std::string received;

  TlsFixture() {
    make_certificate(certificate, key, names_of_this_machine());
    identity.emplace(certificate, key);
    listener.emplace(loop, TcpListener::Options{.address = "127.0.0.1",
                                                .tls = &*identity,
                                                .on_trouble = [this](const std::string& text) {
                                                  troubles.push_back(text);
                                                }});
    listener->on_connection = [this](std::unique_ptr<Connection> came) {
      came->on_bytes = [this](std::string_view bytes) { received += bytes; };
      came->on_end = [](ConnectionEnd) {};
      connections.push_back(std::move(came));
    };
    listener->accept();
  }
  Peer plain() { return Peer::tcp("127.0.0.1", listener->port()); }
  TlsPeer connect(const std::string& name, int newest = TLS1_3_VERSION) {
    TlsPeer peer(plain(), certificate, name, newest);
    wait([&] { return peer.shake_hands(); });
    return peer;
  }
  bool wait(const std::function<bool()>& condition) { return wait_until(loop, condition); }
};

}  // namespace

TEST_CASE_FIXTURE(TlsFixture, "A made certificate proves this machine by its names and addresses") {
  for (const std::string name : {"localhost", "127.0.0.1", "::1"}) {
    CAPTURE(name);
    TlsPeer peer = connect(name);
    CHECK(peer.stands());
    CHECK(peer.verdict() == X509_V_OK);
    CHECK(peer.version() == TLS1_3_VERSION);
  }
  const TlsPeer other = connect("studio.example");
  CHECK(other.failed());
  CHECK(other.verdict() == X509_V_ERR_HOSTNAME_MISMATCH);
}

TEST_CASE_FIXTURE(TlsFixture,
                  "A made key is its owner's alone, and the certificate holds for long") {
  struct stat found {};
  REQUIRE(::stat(key.c_str(), &found) == 0);
  CHECK((found.st_mode & 0777U) == 0600U);
  CHECK(directory.names() == std::vector<std::string>{"server.crt", "server.key"});

  const X509* const made = SSL_CTX_get0_certificate(identity->context());
  const time_t years_29 = time(nullptr) + 29L * 365 * 24 * 60 * 60;
  CHECK(ASN1_TIME_cmp_time_t(X509_get0_notAfter(made), years_29) > 0);
  CHECK(ASN1_TIME_cmp_time_t(X509_get0_notBefore(made), time(nullptr)) < 0);

  const std::string first = identity->fingerprint();
  CHECK(first.size() == 32 * 3 - 1);
  CHECK(first.find_first_not_of("0123456789ABCDEF:") == std::string::npos);
  make_certificate(certificate, key, names_of_this_machine());
  identity->reload(certificate, key);
  CHECK(identity->fingerprint() != first);
}

TEST_CASE_FIXTURE(TlsFixture, "Megabytes go both ways by TLS") {
  TlsPeer peer = connect("localhost");
  REQUIRE(wait([&] { return !connections.empty(); }));
  connections[0]->on_bytes = [this](std::string_view bytes) { connections[0]->send(bytes); };
  std::string all(2'000'000, '\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i * 31 + i / 253);
  std::string echo;
  std::size_t sent = 0;
  REQUIRE(wait([&] {
    if (sent < all.size() && sent - echo.size() < 30'000) {
      sent += peer.write(std::string_view(all).substr(sent, 7001));
    }
    echo += peer.read();
    return echo.size() == all.size() || peer.failed();
  }));
  CHECK(echo == all);
}

TEST_CASE_FIXTURE(TlsFixture, "TLS of 1.2 works, and nothing older") {
  CHECK(connect("localhost", TLS1_2_VERSION).version() == TLS1_2_VERSION);
  CHECK(connect("localhost", TLS1_1_VERSION).failed());
}

TEST_CASE_FIXTURE(TlsFixture,
                  "Another certificate is shown to new peers, and no old one is dropped") {
  TlsPeer before = connect("localhost");
  REQUIRE(wait([&] { return connections.size() == 1; }));
  make_certificate(certificate, key, names_of_this_machine());
  identity->reload(certificate, key);
  TlsPeer after = connect("localhost");
  CHECK(after.stands());
  CHECK(after.serial() != before.serial());
  before.write("still here");
  CHECK(wait([&] { return received == "still here"; }));
}

TEST_CASE_FIXTURE(TlsFixture, "Files that don't go together are refused, and what stands stays") {
  const TemporaryDirectory other;
  const std::string key_of_other = other.path() / "server.key";
  const std::string junk = other.path() / "junk";
  make_certificate(other.path() / "server.crt", key_of_other, names_of_this_machine());
  std::ofstream(junk) << "no certificate";
  const std::string before = identity->fingerprint();

  const auto part = [&](const std::string& certificate_file, const std::string& key_file) {
    try {
      identity->reload(certificate_file, key_file);
    } catch (const TlsProblem& problem) {
      CHECK(std::string(problem.what()).find('\n') == std::string::npos);
      return problem.part;
    }
    FAIL("taken");
    return TlsProblem::Part::Certificate;
  };
  CHECK(part(certificate, key_of_other) == TlsProblem::Part::Key);
  CHECK(part(certificate, junk) == TlsProblem::Part::Key);
  CHECK(part(certificate, "none") == TlsProblem::Part::Key);
  CHECK(part(junk, key) == TlsProblem::Part::Certificate);
  CHECK(part("none", key) == TlsProblem::Part::Certificate);
  CHECK(identity->fingerprint() == before);
  CHECK(connect("localhost").stands());
}

TEST_CASE_FIXTURE(TlsFixture, "A peer that doesn't speak TLS is closed, and told of seldom") {
  for (int i = 0; i < 3; ++i) {
    Peer peer = plain();
    peer.write("GET / HTTP/1.0\r\n\r\n");
    CHECK(wait([&] {
      peer.read();
      return peer.ended();
    }));
  }
  CHECK(connections.empty());
  REQUIRE(troubles.size() == 1);
  CHECK(troubles[0].starts_with("No TLS with 127.0.0.1: "));
}

TEST_CASE_FIXTURE(TlsFixture, "A peer that begins no handshake is closed after a while") {
  listener.emplace(loop, TcpListener::Options{
                             .address = "127.0.0.1", .tls = &*identity, .longest_handshake = 50ms});
  listener->accept();
  Peer silent = plain();
  CHECK(wait([&] {
    silent.read();
    return silent.ended();
  }));
}

TEST_CASE_FIXTURE(TlsFixture, "So many peers may be at their handshakes at once, and no more") {
  listener.emplace(
      loop, TcpListener::Options{.address = "127.0.0.1", .tls = &*identity, .most_handshakes = 2});
  listener->on_connection = [this](std::unique_ptr<Connection> came) {
    connections.push_back(std::move(came));
  };
  listener->accept();
  std::optional<Peer> first = plain();
  Peer second = plain();
  Peer third = plain();
  CHECK(wait([&] {
    third.read();
    return third.ended();
  }));
  second.read();
  CHECK_FALSE(second.ended());
  first.reset();
  // Its place is free once its end was noticed.
  CHECK(wait([&] {
    loop.run_pending();
    return connect("localhost").stands();
  }));
}

TEST_CASE_FIXTURE(TlsFixture, "What is queued goes out by TLS, with a farewell") {
  TlsPeer peer = connect("localhost");
  REQUIRE(wait([&] { return !connections.empty(); }));
  connections[0]->send(std::string(40'000, 'x'));
  connections[0]->close_when_sent();
  connections.clear();
  std::string got;
  REQUIRE(wait([&] {
    got += peer.read();
    return peer.ended() || peer.failed();
  }));
  CHECK(got == std::string(40'000, 'x'));
  CHECK_FALSE(peer.failed());
}

TEST_CASE_FIXTURE(TlsFixture, "A peer that doesn't read is cut off by TLS too") {
  TlsPeer peer = connect("localhost");
  REQUIRE(wait([&] { return !connections.empty(); }));
  std::optional<ConnectionEnd> end;
  connections[0]->on_end = [&](ConnectionEnd reason) { end = reason; };
  REQUIRE(wait([&] {
    connections[0]->send(std::string(10'000, 'x'));
    return end.has_value();
  }));
  CHECK(*end == ConnectionEnd::Overflow);
  REQUIRE(wait([&] {
    peer.read();
    return peer.failed();
  }));
}

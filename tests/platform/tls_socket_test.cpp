// The console's socket to a server whose address begins with "tls:", by loopback against servers of
// every kind.

#include <doctest/doctest.h>

#include <QHostAddress>
#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <memory>

#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/server_address.h"
#include "support/failure_number.h"
#include "support/listen.h"
#include "test_certificates.h"
#include "waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using lineweir::test::failure_number_of;
using lineweir::test::make_identity;
using lineweir::test::TestIdentity;

namespace {

constexpr const char* here = "DNS:localhost,IP:127.0.0.1";

// An authority that this process trusts.
struct Authority {
  Authority() {
    QSslConfiguration configuration = before;
    configuration.setCaCertificates({identity.certificate});
    QSslConfiguration::setDefaultConfiguration(configuration);
  }
  ~Authority() { QSslConfiguration::setDefaultConfiguration(before); }

  const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
  const TestIdentity identity =
      make_identity({.names = {}, .from = -10, .until = 10, .is_authority = true});
};

struct TlsFixture {
  TlsFixture() {
    socket.trusted_fingerprint = [this](const std::string& host, int port) {
      CHECK(host == "localhost");
      CHECK(port == server.serverPort());
      return trusted;
    };
    socket.on_doubt = [this](const auto& certificate) { doubts.push_back(certificate); };
    listen(socket.on_connect, [this] { ++connects; });
    listen(socket.on_data_arrival, [this] { received += socket.get_data(); });
  }

  void serve(const TestIdentity& identity, QSsl::SslProtocol protocol = QSsl::TlsV1_2OrLater) {
    QSslConfiguration configuration;
    configuration.setLocalCertificate(identity.certificate);
    configuration.setPrivateKey(identity.key);
    configuration.setProtocol(protocol);
    server.setSslConfiguration(configuration);
    REQUIRE(server.listen(QHostAddress::LocalHost));
  }
  TestIdentity serve_by_authority(const char* names, int from = -1, int until = 1) {
    TestIdentity identity =
        make_identity({.names = names, .from = from, .until = until}, &authority.identity);
    serve(identity);
    return identity;
  }

  void ask() { socket.connect("tls:localhost", server.serverPort()); }
  bool stands() {
    ask();
    const bool made = wait_until(loop, [&] { return connects == 1; });
    if (made && wait_until(loop, [&] { return server.hasPendingConnections(); })) {
      peer.reset(server.nextPendingConnection());
      peer->setParent(nullptr);
    }
    return made && socket.state() == socket_connected;
  }
  std::string refusal() {
    ask();
    CHECK(wait_until(loop, [&] { return !socket.refusal().empty(); }));
    run_for(loop, Milliseconds{20});
    CHECK(connects == 0);
    CHECK(socket.state() != socket_connected);
    CHECK(failure_number_of([&] { socket.send_data("x"); }) == 40006);
    return socket.refusal();
  }

  Authority authority;
  QtEventLoop loop;
  QSslServer server;
  std::unique_ptr<QTcpSocket> peer;
  QtClientSocket socket{loop};
  std::string trusted;
  std::vector<QtClientSocket::DoubtfulCertificate> doubts;
  std::string received;
  int connects = 0;
};

}  // namespace

TEST_SUITE("a socket by TLS") {
  TEST_CASE("an address says whether its server is reached by TLS") {
    CHECK_FALSE(server_address("studio.example").secured);
    CHECK(server_address("tls:studio.example").secured);
    CHECK(server_address("tls:studio.example").host == "studio.example");
    CHECK(server_address(" TLS: 192.168.1.5 ").host == "192.168.1.5");
    CHECK(server_address(" TLS: 192.168.1.5 ").secured);
    CHECK(server_address("tls:").host.empty());
    CHECK(server_address("tls").host == "tls");
    CHECK_FALSE(server_address("").secured);
  }

  TEST_CASE_FIXTURE(TlsFixture, "a certificate of an authority is good, and bytes go both ways") {
    serve_by_authority(here);
    REQUIRE(stands());
    CHECK(doubts.empty());
    CHECK(socket.refusal().empty());
    std::string all;
    for (int i = 0; i < 300'000; ++i) all += static_cast<char>(i * 7);
    for (std::size_t at = 0; at < all.size(); at += 1000) socket.send_data(all.substr(at, 1000));
    std::string taken;
    CHECK(wait_until(loop, [&] { return (taken += peer->readAll().toStdString()) == all; }));
    peer->write(all.data(), static_cast<qint64>(all.size()));
    CHECK(wait_until(loop, [&] { return received == all; }));
    peer->disconnectFromHost();
    CHECK(wait_until(loop, [&] { return socket.state() == socket_closed; }));
    CHECK(socket.refusal().empty());
  }

  TEST_CASE_FIXTURE(TlsFixture, "it counts as connecting until it is secured") {
    serve_by_authority(here);
    ask();
    CHECK(socket.state() == socket_connecting);
    bool secured_first = true;
    CHECK(wait_until(loop, [&] {
      if (socket.state() == socket_connected && !server.hasPendingConnections() && connects == 0) {
        secured_first = secured_first && socket.refusal().empty();
      }
      return connects == 1;
    }));
    CHECK(socket.state() == socket_connected);
    socket.close();
    CHECK(socket.state() == socket_closed);
  }

  TEST_CASE_FIXTURE(TlsFixture, "one that nobody vouches for is refused with its fingerprint") {
    const TestIdentity identity = make_identity({.names = here});
    serve(identity);
    const std::string fingerprint = fingerprint_of(identity.certificate);
    CHECK(fingerprint.size() == 95);
    QString digits = QString::fromStdString(fingerprint).remove(':');
    for (const int end : {48, 32, 16}) digits.insert(end, ' ');
    CHECK(refusal() == "The certificate of localhost isn't known. Its fingerprint is " +
                           digits.toStdString() + ".");
    CHECK(socket.refusal_is_asked());
    REQUIRE(doubts.size() == 1);
    CHECK(doubts[0].host == "localhost");
    CHECK(doubts[0].port == server.serverPort());
    CHECK(doubts[0].fingerprint == fingerprint);
    CHECK(doubts[0].trusted_fingerprint.empty());
    SUBCASE("and good once the user has trusted it") {
      socket.close();
      trusted = doubts[0].fingerprint;
      CHECK(stands());
      CHECK(doubts.size() == 1);
    }
  }

  TEST_CASE_FIXTURE(TlsFixture, "a trusted one needs no name") {
    const TestIdentity identity = make_identity({.names = "DNS:elsewhere.example"});
    serve(identity);
    trusted = fingerprint_of(identity.certificate);
    CHECK(stands());
  }

  TEST_CASE_FIXTURE(TlsFixture, "one that was changed is refused with both fingerprints") {
    const TestIdentity identity = make_identity({.names = here});
    serve(identity);
    trusted = fingerprint_of(make_identity({.names = here}).certificate);
    const std::string now = fingerprint_of(identity.certificate);
    CHECK(refusal() ==
          "The certificate of localhost isn't the one that was trusted before. Lineweir doesn't "
          "connect.");
    REQUIRE(doubts.size() == 1);
    CHECK(doubts[0].fingerprint == now);
    CHECK(doubts[0].trusted_fingerprint == trusted);
  }

  TEST_CASE_FIXTURE(TlsFixture, "one of an authority takes the place of a trusted one") {
    serve_by_authority(here);
    trusted = fingerprint_of(make_identity({.names = here}).certificate);
    CHECK(stands());
  }

  TEST_CASE_FIXTURE(TlsFixture, "one that has expired is refused, and nobody may trust it") {
    SUBCASE("of an authority") { serve_by_authority(here, -5, -2); }
    SUBCASE("trusted") {
      const TestIdentity identity = make_identity({.names = here, .from = -5, .until = -2});
      serve(identity);
      trusted = fingerprint_of(identity.certificate);
    }
    CHECK(refusal().starts_with("The certificate of localhost expired on 20"));
    CHECK_FALSE(socket.refusal_is_asked());
    CHECK(doubts.empty());
  }

  TEST_CASE_FIXTURE(TlsFixture, "one that isn't valid yet is refused") {
    serve_by_authority(here, 2, 5);
    CHECK(refusal().starts_with("The certificate of localhost isn't valid before 20"));
    CHECK(doubts.empty());
  }

  TEST_CASE_FIXTURE(TlsFixture, "one of an authority for another name is refused with its names") {
    serve_by_authority("DNS:studio.example,DNS:backup.example");
    CHECK(refusal() ==
          "The certificate that localhost has shown is for backup.example, studio.example and not "
          "for localhost.");
    CHECK(doubts.empty());
  }

  TEST_CASE_FIXTURE(TlsFixture, "a server in plain text that says nothing isn't waited for long") {
    QTcpServer plain;
    REQUIRE(plain.listen(QHostAddress::LocalHost));
    socket.trusted_fingerprint = nullptr;
    const Milliseconds before = loop.now();
    socket.connect("tls:localhost", plain.serverPort());
    CHECK(wait_until(loop, [&] { return !socket.refusal().empty(); }));
    CHECK(socket.refusal() == "localhost doesn't answer by TLS.");
    CHECK(loop.now() - before < Milliseconds{5000});
    CHECK(socket.state() == socket_closed);
    CHECK(connects == 0);
  }

  TEST_CASE_FIXTURE(TlsFixture, "a server that speaks first in plain text is refused at once") {
    QTcpServer plain;
    REQUIRE(plain.listen(QHostAddress::LocalHost));
    socket.trusted_fingerprint = nullptr;
    QObject::connect(&plain, &QTcpServer::newConnection, &plain,
                     [&] { plain.nextPendingConnection()->write(QByteArray(100, '\x04')); });
    socket.connect("tls:localhost", plain.serverPort());
    CHECK(wait_until(loop, [&] { return !socket.refusal().empty(); }));
    CHECK(socket.refusal() == "The connection to localhost could not be secured by TLS.");
    CHECK(connects == 0);
  }

  TEST_CASE_FIXTURE(TlsFixture, "a server that goes in the middle of it is told") {
    QTcpServer leaving;
    REQUIRE(leaving.listen(QHostAddress::LocalHost));
    socket.trusted_fingerprint = nullptr;
    QObject::connect(&leaving, &QTcpServer::newConnection, &leaving, [&] {
      QTcpSocket* const begun = leaving.nextPendingConnection();
      QObject::connect(begun, &QTcpSocket::readyRead, begun, [begun] {
        begun->readAll();
        begun->disconnectFromHost();
      });
    });
    socket.connect("tls:localhost", leaving.serverPort());
    CHECK(wait_until(loop, [&] { return !socket.refusal().empty(); }));
    CHECK(socket.refusal() == "localhost ended the connection before it was secured by TLS.");
    CHECK(socket.state() == socket_closed);
  }

  TEST_CASE_FIXTURE(TlsFixture, "a connection that nobody takes has no reason of its own") {
    socket.trusted_fingerprint = nullptr;
    QTcpServer gone;
    REQUIRE(gone.listen(QHostAddress::LocalHost));
    const int port = gone.serverPort();
    gone.close();
    socket.connect("tls:localhost", port);
    CHECK(wait_until(loop, [&] { return socket.state() == socket_closed; }));
    run_for(loop, Milliseconds{20});
    CHECK(socket.refusal().empty());
  }

  TEST_CASE_FIXTURE(TlsFixture, "a close in the middle of it tells nothing any more") {
    serve(make_identity({.names = here}));
    ask();
    socket.close();
    run_for(loop, Milliseconds{100});
    CHECK(socket.refusal().empty());
    CHECK(doubts.empty());
    CHECK(connects == 0);
  }

  TEST_CASE_FIXTURE(TlsFixture, "what was sent before a close still goes out") {
    serve_by_authority(here);
    REQUIRE(stands());
    // What the server sends behind the handshake is in front of this; bytes that lie unread in a
    // socket which is closed would have the system cut the connection.
    peer->write("x");
    REQUIRE(wait_until(loop, [&] { return received == "x"; }));
    const std::string much(500'000, 'a');
    socket.send_data(much);
    socket.close();
    std::string taken;
    CHECK(wait_until(loop, [&] { return (taken += peer->readAll().toStdString()) == much; }));
  }

  TEST_CASE_FIXTURE(TlsFixture, "a server that reads nothing is cut off at a bound") {
    serve_by_authority(here);
    REQUIRE(stands());
    peer->setReadBufferSize(1);
    const std::string piece(64 * 1024, 'a');
    int sent = 0;
    const auto send = [&] {
      for (; sent < 400; ++sent) {
        socket.send_data(piece);
        loop.yield();
      }
    };
    CHECK(failure_number_of(send) == 40006);
    CHECK(sent > 15);
    CHECK(socket.state() == socket_closed);
  }

  TEST_CASE_FIXTURE(TlsFixture, "the next connection may be in plain text, and by TLS again") {
    serve_by_authority(here);
    REQUIRE(stands());
    socket.close();
    QTcpServer plain;
    REQUIRE(plain.listen(QHostAddress::LocalHost));
    connects = 0;
    socket.connect("localhost", plain.serverPort());
    CHECK(wait_until(loop, [&] { return connects == 1 && plain.hasPendingConnections(); }));
    plain.nextPendingConnection()->write("plain");
    CHECK(wait_until(loop, [&] { return received == "plain"; }));
    socket.close();
    connects = 0;
    CHECK(stands());
  }
}

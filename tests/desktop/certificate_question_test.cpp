#include "desktop/certificate_question.h"

#include <doctest/doctest.h>

#include <QLabel>
#include <QPushButton>

#include "desktop/trusted_servers.h"
#include "shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

const std::string one_fingerprint =
    "00:01:02:03:04:05:06:07:08:09:0A:0B:0C:0D:0E:0F:"
    "10:11:12:13:14:15:16:17:18:19:1A:1B:1C:1D:1E:1F";
const std::string other_fingerprint =
    "F0:01:02:03:04:05:06:07:08:09:0A:0B:0C:0D:0E:0F:"
    "10:11:12:13:14:15:16:17:18:19:1A:1B:1C:1D:1E:1F";
constexpr const char* settings = "lineweir.ini";

struct DoubtfulDesk : test::ShownConsole {
  DoubtfulDesk() {
    question().trusted = &trusted;
    platform.winsock1.refuse_connections("The certificate of studio.example isn't known.", true);
    console.Lineweir.WinsockMenu.on_click();
    console.WinsockOptions.Text1.text = "tls:studio.example";
    console.WinsockOptions.Text2.text = "2001";
    connect();
  }

  CertificateQuestion& question() { return desktop.certificate_question(); }
  void connect() {
    console.WinsockOptions.SockConnect.on_click();
    settle();
    connects = 0;
    listen(platform.winsock1.on_connect, [this] { ++connects; });
  }
  // As behind a connection that the user has asked for.
  void ask(const std::string& trusted_before = {}) {
    connect();
    doubt(trusted_before);
  }
  void ask_by_itself() {
    console.server_connection.begin();
    doubt();
  }
  void doubt(const std::string& trusted_before = {}) {
    question().ask({.host = "studio.example",
                    .port = 2001,
                    .fingerprint = one_fingerprint,
                    .trusted_fingerprint = trusted_before});
    settle();
  }
  bool asked() { return question().window() != nullptr && question().window()->isVisible(); }
  template <class Widget>
  Widget& part(const char* name) {
    return *question().window()->findChild<Widget*>(QString::fromLatin1(name));
  }
  QString text(const char* name) { return part<QLabel>(name).text(); }
  void press(Qt::Key key) {
    QTest::keyClick(question().window()->focusWidget(), key);
    settle();
  }
  std::string kept() { return platform.files.read(settings).value_or(std::string()); }

  TrustedServers trusted{platform.files};
  int connects = 0;
};

TEST_SUITE("desktop/certificate question") {
  TEST_CASE("it tells the server and the fingerprint, whole, in its window") {
    DoubtfulDesk desk;
    desk.ask();
    REQUIRE(desk.asked());
    CHECK(desk.question().window()->windowTitle() == "Trust this certificate?");
    CHECK(desk.text("WhoLabel").contains("studio.example"));
    QString shown = desk.text("FingerprintLabel");
    CHECK(shown.startsWith("Its fingerprint (SHA-256):\n00:01:"));
    CHECK(shown.count('\n') == 2);
    for (const char* name : {"WhoLabel", "FingerprintLabel", "WhatLabel"}) {
      const auto& label = desk.part<QLabel>(name);
      CAPTURE(name);
      CHECK(label.width() >= label.minimumSizeHint().width());
      CHECK(label.height() >= label.heightForWidth(label.width()));
      CHECK(desk.question().window()->rect().contains(label.geometry()));
    }
  }

  TEST_CASE("no message stands in front of it") {
    DoubtfulDesk desk;
    desk.ask();
    CHECK_FALSE(desk.console.MyMsgbox.visible);
  }

  TEST_CASE("Enter, Esc, Space and the window's own close button trust nothing") {
    DoubtfulDesk desk;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Space}) {
      CAPTURE(key);
      desk.ask();
      REQUIRE(desk.asked());
      CHECK(desk.part<QPushButton>("RefuseButton").hasFocus());
      desk.press(key);
      CHECK(test::wait_for([&] { return !desk.asked(); }));
      CHECK(desk.kept().empty());
    }
    desk.ask();
    desk.question().window()->close();
    desk.settle();
    CHECK_FALSE(desk.asked());
    CHECK(desk.kept().empty());
    CHECK(desk.connects == 0);
  }

  TEST_CASE("trusted by Tab and Enter it is kept and connected to") {
    DoubtfulDesk desk;
    desk.platform.files.replace(settings, "UrgentSound=1\n");
    desk.ask();
    desk.platform.winsock1.accept_connections(true);
    desk.press(Qt::Key_Tab);
    CHECK(desk.part<QPushButton>("TrustButton").hasFocus());
    desk.press(Qt::Key_Return);
    CHECK(test::wait_for([&] { return desk.connects == 1; }));
    CHECK_FALSE(desk.asked());
    CHECK(desk.kept() ==
          "UrgentSound=1\nTrustedServer studio.example:2001=" + one_fingerprint + "\n");
    CHECK(desk.trusted.fingerprint("Studio.Example", 2001) == one_fingerprint);
    CHECK(desk.trusted.fingerprint("studio.example", 2002).empty());
    CHECK(TrustedServers(desk.platform.files).fingerprint("studio.example", 2001) ==
          one_fingerprint);
  }

  TEST_CASE("another certificate isn't connected to; the trusted one can only be forgotten") {
    DoubtfulDesk desk;
    desk.trusted.trust("studio.example", 2001, other_fingerprint);
    desk.ask(other_fingerprint);
    REQUIRE(desk.asked());
    CHECK(desk.question().window()->windowTitle() == "Another certificate");
    CHECK(desk.text("FingerprintLabel").contains("00:01:02"));
    CHECK(desk.text("FingerprintLabel").contains("F0:01:02"));
    desk.platform.winsock1.accept_connections(true);
    SUBCASE("kept") {
      desk.press(Qt::Key_Return);
      CHECK(desk.trusted.fingerprint("studio.example", 2001) == other_fingerprint);
    }
    SUBCASE("forgotten") {
      desk.press(Qt::Key_Tab);
      desk.press(Qt::Key_Return);
      CHECK(desk.trusted.fingerprint("studio.example", 2001).empty());
      CHECK(desk.kept().empty());
    }
    desk.come_to_rest();
    CHECK_FALSE(desk.asked());
    CHECK(desk.connects == 0);
  }

  TEST_CASE("a console that tries by itself asks once") {
    DoubtfulDesk desk;
    desk.ask();
    desk.press(Qt::Key_Escape);
    desk.ask_by_itself();
    CHECK_FALSE(desk.asked());
    desk.ask();
    CHECK(desk.asked());
  }

  TEST_CASE("one that comes by itself leaves the keyboard to who works in a window") {
    DoubtfulDesk desk;
    desk.console.caller_data.show_for_line(2);
    desk.settle();
    QWidget* const form = desk.desktop.dialog(desk.console.Form4)->window();
    form->activateWindow();
    REQUIRE(test::wait_for([&] { return QApplication::activeWindow() == form; }));
    desk.ask_by_itself();
    CHECK(desk.asked());
    CHECK(QApplication::activeWindow() == form);
    desk.ask();
    CHECK(test::wait_for([&] { return QApplication::activeWindow() == desk.question().window(); }));
  }

  TEST_CASE("of several servers it names the port, and a no leads on to the next one") {
    DoubtfulDesk desk;
    desk.console.WinsockOptions.Text1.text = "tls:studio.example, studio2.example";
    desk.platform.winsock1.refuse_at("tls:studio.example", "Nobody vouches for it.", true);
    desk.platform.winsock1.set_server("studio2.example",
                                      platform::ScriptedClientSocket::Server::Accepts);
    desk.platform.winsock1.take_connects();
    desk.ask();
    CHECK(desk.text("WhoLabel").contains("studio.example, port 2001"));
    CHECK(desk.platform.winsock1.take_connects() ==
          std::vector<std::string>{"tls:studio.example:2001"});
    desk.press(Qt::Key_Escape);
    CHECK(test::wait_for([&] { return desk.connects == 1; }));
    CHECK_FALSE(desk.asked());
    CHECK(desk.platform.winsock1.host() == "studio2.example");
    CHECK(desk.kept().empty());
  }

  TEST_CASE("a console that comes back to one of several servers asks nothing") {
    DoubtfulDesk desk;
    desk.console.WinsockOptions.Text1.text = "studio1.example, tls:studio.example";
    desk.platform.winsock1.set_server("studio1.example",
                                      platform::ScriptedClientSocket::Server::Refuses);
    desk.connect();
    desk.ask_by_itself();
    CHECK_FALSE(desk.asked());
  }

  TEST_CASE("a file that can't be read is left alone, and the trust holds until the end") {
    DoubtfulDesk desk;
    desk.platform.files.replace(settings, std::string(200'000, 'x'));
    desk.ask();
    desk.platform.winsock1.accept_connections(true);
    desk.take_messages();
    desk.press(Qt::Key_Tab);
    desk.press(Qt::Key_Return);
    CHECK(desk.kept().size() == 200'000);
    CHECK(desk.trusted.fingerprint("studio.example", 2001) == one_fingerprint);
    CHECK(desk.take_messages().front() == "Can't read lineweir.ini");
  }
}

}  // namespace
}  // namespace lineweir

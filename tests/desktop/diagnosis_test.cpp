#include "desktop/diagnosis.h"

#include <doctest/doctest.h>

#include <QClipboard>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTcpServer>
#include <algorithm>
#include <fstream>

#include "desktop/screens_seen.h"
#include "desktop/surroundings.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/temporary_directory.h"
#include "shown_console.h"
#include "state/settings_record.h"

namespace lineweir {
namespace {

using enum FindingState;

// A workstation where everything is as it should be.
Surroundings good_surroundings() {
  Surroundings seen;
  seen.program_version = "1.2";
  seen.qt_version = "6.4";
  seen.system = "Debian";
  seen.user = "amy";
  seen.character_set = "windows-1252";
  seen.screens = {"HDMI-1 (1920 by 1080 at 100 %)"};
  seen.folder = {"/home/amy", true, true};
  seen.settings = {"/home/amy/Writ.inf", true, true};
  seen.log = {"/home/amy/calls.mdb", true, true};
  seen.ports = {{"/dev/ttyUSB0", true, true}};
  seen.servers = {{"studio", 2001}};
  seen.session_bus = true;
  return seen;
}

Finding finding_of(const Surroundings& seen, const std::string& subject) {
  const auto findings = findings_of(seen);
  const auto found = std::find_if(findings.begin(), findings.end(),
                                  [&](const auto& each) { return each.subject == subject; });
  REQUIRE(found != findings.end());
  return *found;
}

struct Diagnosed : test::ShownConsole {
  QWidget& page_window() { return *desktop.diagnosis().window(); }
  std::string page() {
    return page_window().findChild<QPlainTextEdit*>("page")->toPlainText().toStdString();
  }
  void choose() {
    action(form().DiagnosisMenuItem).trigger();
    come_to_rest();
  }
  void press(const char* button) {
    page_window().findChild<QPushButton*>(QString::fromLatin1(button))->click();
    come_to_rest();
  }
};

TEST_SUITE("desktop/diagnosis") {
  TEST_CASE("where all is well nothing is advised") {
    for (const Finding& finding : findings_of(good_surroundings())) {
      CAPTURE(finding.subject);
      CHECK(finding.state == Good);
      CHECK(finding.advice.empty());
      CHECK(finding.seen.ends_with('.'));
    }
  }

  TEST_CASE("what is wrong is told with what to do") {
    struct Row {
      const char* subject;
      void (*spoil)(Surroundings&);
      FindingState state;
    };
    for (const Row& row : {
             Row{"Display", [](Surroundings& seen) { seen.screens.clear(); }, Trouble},
             Row{"Folder", [](Surroundings& seen) { seen.folder.may_be_written = false; }, Trouble},
             Row{"Settings", [](Surroundings& seen) { seen.settings.exists = false; }, Note},
             Row{"Settings", [](Surroundings& seen) { seen.settings.may_be_written = false; },
                 Trouble},
             Row{"Call log", [](Surroundings& seen) { seen.log = {}; }, Note},
             Row{"Call log", [](Surroundings& seen) { seen.log.exists = false; }, Trouble},
             Row{"Call log", [](Surroundings& seen) { seen.log.may_be_written = false; }, Trouble},
             Row{"Port /dev/ttyUSB0", [](Surroundings& seen) { seen.ports[0].exists = false; },
                 Note},
             Row{"Port /dev/ttyUSB0", [](Surroundings& seen) { seen.ports[0].may_be_used = false; },
                 Trouble},
             Row{"Server", [](Surroundings& seen) { seen.servers[0].failure = "refused."; }, Note},
             Row{"Remote objects", [](Surroundings& seen) { seen.session_bus = false; }, Note},
         }) {
      CAPTURE(row.subject);
      Surroundings seen = good_surroundings();
      row.spoil(seen);
      const Finding finding = finding_of(seen, row.subject);
      CHECK(finding.state == row.state);
      CHECK_FALSE(finding.advice.empty());
      CHECK(text_of(findings_of(seen)).find(finding.advice) != std::string::npos);
    }
  }

  TEST_CASE("each finding begins with how bad it is") {
    Surroundings seen = good_surroundings();
    seen.settings.exists = false;
    seen.screens.clear();
    const std::string text = text_of(findings_of(seen));
    CHECK(text.find("good     Folder: ") != std::string::npos);
    CHECK(text.find("note     Settings: ") != std::string::npos);
    CHECK(text.find("TROUBLE  Display: ") != std::string::npos);
  }

  TEST_CASE("who may not use a port is told by name how to be allowed to") {
    Surroundings seen = good_surroundings();
    seen.ports[0].may_be_used = false;
    CHECK(finding_of(seen, "Port /dev/ttyUSB0").advice.find("usermod -aG dialout amy") !=
          std::string::npos);
  }

  TEST_CASE("a port that isn't there is told by its own variable, with another device") {
    Surroundings seen = good_surroundings();
    seen.ports = {{"/dev/ttyUSB0", false, false, PortUse::Box, 3},
                  {"/dev/ttyS1", false, false, PortUse::SwitchConsole, 2}};
    CHECK(finding_of(seen, "Port /dev/ttyUSB0").advice.find("LINEWEIR_COM3=/dev/ttyUSB1") !=
          std::string::npos);
    const std::string desk = finding_of(seen, "Port /dev/ttyS1").advice;
    CHECK(desk.find("LINEWEIR_COM2=") != std::string::npos);
    CHECK(desk.find("switch console") != std::string::npos);
  }

  TEST_CASE("the ports that the settings choose are looked at") {
    const TemporaryDirectory folder;
    SettingsRecord settings;
    settings.CommPort = 3;
    settings.RemotePortNumber = 4;
    std::ofstream(folder.path() / settings_file_name, std::ios::binary)
        << encode_settings(settings);
    const Surroundings seen = look_around(folder.path(), default_code_page());
    REQUIRE(seen.ports.size() >= 2);
    CHECK(seen.ports[0].device == platform::device_of_comm_port(3));
    CHECK(seen.ports[1].device == platform::device_of_comm_port(4));
    CHECK(seen.ports[1].use == PortUse::SwitchConsole);
  }

  TEST_CASE("a folder without settings is told as it is") {
    const TemporaryDirectory folder;
    const Surroundings seen = look_around(folder.path(), default_code_page());
    CHECK(seen.folder.may_be_written);
    CHECK_FALSE(seen.settings.exists);
    CHECK(seen.servers.empty());
    CHECK(seen.ports.size() >= 2);
    CHECK(seen.screens == screens_in_words());
    CHECK_FALSE(seen.screens.empty());
  }

  TEST_CASE("the settings' servers are found, however many they are") {
    const TemporaryDirectory folder;
    SettingsRecord record;
    record.ServerHost = "one";
    record.ServerPort = 2001;
    std::ofstream(folder.path() / settings_file_name, std::ios::binary) << encode_settings(record);
    CHECK(look_around(folder.path(), default_code_page()).servers.size() == 1);
    std::ofstream(folder.path() / further_settings_file)
        << "ServerAddress=one, tls:two:2002\nServerPort=2001\n";
    const auto servers = look_around(folder.path(), default_code_page()).servers;
    REQUIRE(servers.size() == 2);
    CHECK(servers[0].host == "one");
    CHECK(servers[1].host == "tls:two");
    CHECK(servers[1].port == 2002);
  }

  TEST_CASE("of several servers each is asked, and what was seen of it told") {
    Diagnosed desk;
    QTcpServer there;
    REQUIRE(there.listen(QHostAddress::LocalHost));
    QTcpServer gone;
    REQUIRE(gone.listen(QHostAddress::LocalHost));
    const int gone_port = gone.serverPort();
    gone.close();
    Surroundings seen = good_surroundings();
    seen.servers = {{"127.0.0.1", gone_port}, {"tls:127.0.0.1", there.serverPort()}};
    desk.desktop.diagnosis().look_around = [&] { return seen; };
    desk.choose();
    const std::string first = "127.0.0.1, port " + std::to_string(gone_port);
    const std::string second = "tls:127.0.0.1, port " + std::to_string(there.serverPort());
    CHECK(test::wait_for([&] {
      const std::string page = desk.page();
      return page.find("note     Server: " + first + " can't be reached: ") != std::string::npos &&
             page.find("good     Server: " + second + ": somebody") != std::string::npos &&
             page.find("being asked") == std::string::npos;
    }));
  }

  TEST_CASE("the page tells of the server when that has answered, and can be copied") {
    Diagnosed desk;
    QTcpServer server;
    REQUIRE(server.listen(QHostAddress::LocalHost));
    Surroundings seen = good_surroundings();
    seen.servers = {{"127.0.0.1", server.serverPort()}};
    desk.desktop.diagnosis().look_around = [&] { return seen; };
    desk.choose();
    CHECK(test::wait_for([&] {
      return desk.page().find("somebody listens there") != std::string::npos &&
             desk.page().find("being asked") == std::string::npos;
    }));
    desk.press("copy");
    CHECK(QGuiApplication::clipboard()->text().toStdString() == desk.page());
    server.close();
    desk.press("lookAgain");
    CHECK(
        test::wait_for([&] { return desk.page().find("can't be reached") != std::string::npos; }));
    CHECK(QApplication::activeModalWidget() == nullptr);
    QTest::keyClick(desk.page_window().windowHandle(), Qt::Key_Escape);
    desk.come_to_rest();
    CHECK_FALSE(desk.page_window().isVisible());
  }
}

}  // namespace
}  // namespace lineweir

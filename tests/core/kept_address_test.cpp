#include "core/kept_address.h"

#include <doctest/doctest.h>

#include "state/login_state.h"
#include "state/settings_record.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

LoginState login_at(const std::string& address, int port) {
  LoginState login;
  login.ServerHost = address;
  login.ServerPort = port;
  return login;
}

// What the next start makes of an address: it goes through the record's bytes.
std::pair<std::string, int> found_again(const std::string& address, int port) {
  const LoginState login = login_at(address, port);
  SettingsRecord record;
  keep_first_server(login, record);
  SettingsRecord read = *decode_settings(encode_settings(record));
  take_whole_address(with_whole_address(login, "UrgentSound=1\n"), read);
  return {read.ServerHost, read.ServerPort};
}

const std::string settings_file(settings_file_name);
const std::string further_file(further_settings_file);

TEST_SUITE("core/kept address") {
  TEST_CASE("one server that fits is kept in the record alone") {
    const LoginState login = login_at("tls:studio.example", 2001);
    SettingsRecord record;
    keep_first_server(login, record);
    CHECK(record.ServerHost == "tls:studio.example");
    CHECK(record.ServerPort == 2001);
    CHECK(with_whole_address(login, "a=b\n") == "a=b\n");
    CHECK(with_whole_address(login, "ServerAddress=x,y\na=b\nServerPort=7\n") == "a=b\n");
  }

  TEST_CASE("of several the record has the first, and the whole stands beside it") {
    const LoginState login = login_at("one:2002, tls:two", 2001);
    SettingsRecord record;
    keep_first_server(login, record);
    CHECK(record.ServerHost == "one");
    CHECK(record.ServerPort == 2002);
    CHECK(with_whole_address(login, "a=b\n") ==
          "a=b\nServerAddress=one:2002, tls:two\nServerPort=2001\n");
  }

  TEST_CASE("an address comes back as it was typed") {
    for (const char* address : {"one", "one, two", "one:2002,two", "[::1]:2002, tls:two",
                                "tls:studio.example", "tls:a-long-name.of-a-studio.example",
                                "tls:a-long-name.of-a-studio.example, two", "", "first, a=b"}) {
      CAPTURE(address);
      CHECK(found_again(address, 2001) == std::pair<std::string, int>(address, 2001));
    }
    // It is the same server.
    CHECK(found_again("one:2002", 2001) == std::pair<std::string, int>("one", 2002));
  }

  TEST_CASE("a record that names another server wins") {
    const std::string further = with_whole_address(login_at("one, two", 2001), "");
    for (const auto& [host, port] :
         {std::pair<std::string, int>("other", 2001), {"one", 2002}, {"two", 2001}}) {
      CAPTURE(host);
      SettingsRecord record;
      record.ServerHost = host;
      record.ServerPort = port;
      take_whole_address(further, record);
      CHECK(record.ServerHost == host);
      CHECK(record.ServerPort == port);
    }
  }

  TEST_CASE("further settings that make no sense leave the record as it is") {
    for (const char* further :
         {"", "ServerAddress=one\n", "ServerAddress=one,two\n",
          "ServerAddress=one,two\nServerPort=0",
          "ServerAddress=one,two\nServerPort=99999999999999999999", "ServerPort=2001",
          "ServerAddress=one:x,two\nServerPort=2001", "ServerAddress=,\nServerPort=2001"}) {
      CAPTURE(further);
      SettingsRecord record;
      record.ServerHost = "one";
      record.ServerPort = 2001;
      take_whole_address(further, record);
      CHECK(record.ServerHost == "one");
      CHECK(record.ServerPort == 2001);
    }
  }

  TEST_CASE("an address of several lines isn't written among the others") {
    CHECK(with_whole_address(login_at("one, two\nUrgentSound=1", 2001), "a=b\n") == "a=b\n");
  }

  TEST_CASE("a console that is started anew has the whole address") {
    std::string record;
    std::string further;
    {
      ScriptedConsole desk;
      desk.console.login.ServerHost = "studio1.example, tls:studio2.example:2002";
      desk.console.Lineweir.SaveSettingsMenu.on_click();
      record = *desk.platform.files.read(settings_file);
      further = *desk.platform.files.read(further_file);
    }
    CHECK(decode_settings(record)->ServerHost.starts_with("studio1.example"));
    platform::ScriptedPlatform platform;
    platform.files.replace(settings_file, record);
    platform.files.replace(further_file, further);
    Console console(platform.services());
    console.startup.Main("");
    CHECK(console.login.ServerHost == "studio1.example, tls:studio2.example:2002");
    CHECK(console.login.ServerPort == 2001);
  }
}

}  // namespace
}  // namespace lineweir::test

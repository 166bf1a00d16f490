#include <doctest/doctest.h>

#include "driver_fixture.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

TEST_CASE_FIXTURE(LaunchedFixture, "A serial port is written, answered and read") {
  say("serial Comm1 reply \"M\" \"Line monitor ON\"");
  CHECK(say("click PortOn") == "ok");
  CHECK(say("serial Comm1 out").starts_with("= [\"M\",\"Q00\",\"Q01\""));
  CHECK(say("serial Comm1 out") == "= []");
  CHECK(say("serial comm1 in \"S05\"") == "ok");
  CHECK(say("get LineStatus(5).Caption") == "= \"Ready\"");
  CHECK(say("serial Comm2 out") == "= []");
  CHECK(say("serial Comm3 out") == "error no such port: Comm3");
  CHECK(say("serial Comm1 sideways").starts_with("error usage: serial P"));
}

TEST_CASE_FIXTURE(LaunchedFixture, "Openings of a port fail as arranged") {
  CHECK(say("serial Comm1 fail 8005 2") == "ok");
  say("click PortOn");
  say("click PortOn");
  CHECK(say("messages") == "= [\"Could Not Open Port\",\"Could Not Open Port\"]");
  CHECK(say("serial Comm1 fail 0").starts_with("error "));
  CHECK(say("serial Comm1 fail 8005 -1").starts_with("error "));
  CHECK(say("serial Comm1 fail \"x\"").starts_with("error "));
}

TEST_CASE_FIXTURE(LaunchedFixture, "A socket connects, receives and sends") {
  platform::ClientSocket& socket = session.console().services.winsock1;
  say("socket accept");
  socket.connect("server", 2001);
  say("advance 20");
  CHECK(say("get Winsock1.State") == "= 7");
  say("socket reply 21 \"\\u0004\\u0004x\"");
  socket.send_data("\x04\x04\x15\xFF");
  CHECK(say("socket out") == "= [\"\\u0004\\u0004\\u0015\\u00ff\"]");
  say("advance 20");
  CHECK(say("get RecString") == "= \"\\u0004\\u0004x\"");
  say("socket in \"yz\"");
  CHECK(say("get RecString") == "= \"\\u0004\\u0004xyz\"");
  say("socket drop");
  CHECK(say("get Winsock1.State") == "= 0");
  CHECK(say("socket refuse") == "ok");
  CHECK(say("socket reply 256 \"x\"").starts_with("error "));
  CHECK(say("socket").starts_with("error usage: socket "));
}

TEST_CASE_FIXTURE(LaunchedFixture, "A standing connection sends nothing") {
  CHECK(say("socket open") == "ok");
  CHECK(say("get Winsock1.State") == "= 7");
  CHECK(say("get WinsockMenu.Checked") == "= true");
  CHECK(say("get Com1.Checked") == "= false");
  CHECK(say("socket out") == "= []");
  CHECK(say("call PhoneCommand \"N05\" 0") == "ok");
  CHECK(say("socket out").starts_with("= [\"\\u0004\\u0004\\u0004\\u0005"));
}

TEST_CASE_FIXTURE(LaunchedFixture, "Remote objects return what is arranged and tell their calls") {
  CHECK(say("remote result GetDimType 3") == "ok");
  CHECK(say("remote result GetStudioNames \"A\\u0003\"") == "ok");
  CHECK(say("remote result X []").starts_with("error "));
  CHECK(say("remote open") == "ok");
  CHECK(say("get NetworkConnectionOption.Checked") == "= true");
  CHECK(say("remote calls") == "= []");
  say("call PhoneCommand \"N05\" 0");
  CHECK(say("remote calls").starts_with("= [[\"SerialInput\",\"InputSerialPort\",1,\"N"));
  CHECK(say("remote calls") == "= []");
  std::string called;
  listen(session.console().services.remote_objects.on_callback,
         [&](const std::string& method, const std::vector<platform::RemoteValue>& arguments) {
           called = method + std::to_string(arguments.size());
         });
  CHECK(say("remote callback ReturnNextCall 3 1") == "ok");
  CHECK(called == "ReturnNextCall2");
  CHECK(say("remote absent") == "ok");
}

TEST_CASE_FIXTURE(DriverFixture, "Dialogs are answered beforehand and told afterwards") {
  platform::ScriptedDialogs& dialogs = session.platform().dialogs;
  CHECK(say("answer file \"a.txt\"") == "ok");
  CHECK(say("answer file cancel") == "ok");
  CHECK(say("answer input \"text\"") == "ok");
  CHECK(say("answer question yes") == "ok");
  CHECK(say("answer question no") == "ok");
  CHECK(say("answer font {\"name\":\"Sans\",\"size\":10,\"bold\":true,\"italic\":false}") == "ok");
  CHECK(dialogs.ask_file({"Open", "All|*.*", "old.txt", false}) == "a.txt");
  CHECK_FALSE(dialogs.ask_file({}).has_value());
  CHECK(dialogs.ask_input({"Which?", "x"}) == "text");
  CHECK(dialogs.ask_yes_no("Sure?"));
  CHECK_FALSE(dialogs.ask_yes_no("Sure?"));
  CHECK(dialogs.ask_font({})->bold);
  const std::string told = say("dialogs");
  CHECK(
      told.starts_with("= [{\"kind\":\"file\",\"title\":\"Open\",\"filter\":\"All|*.*\","
                       "\"default\":\"old.txt\"},"));
  CHECK(told.find("{\"kind\":\"input\",\"prompt\":\"Which?\",\"default\":\"x\"}") !=
        std::string::npos);
  CHECK(told.find("{\"kind\":\"question\",\"text\":\"Sure?\"}") != std::string::npos);
  CHECK(say("dialogs") == "= []");
}

TEST_CASE_FIXTURE(DriverFixture, "An answer that its dialog can't have is refused") {
  CHECK(say("answer file 5").starts_with("error "));
  CHECK(say("answer input yes").starts_with("error "));
  CHECK(say("answer question maybe") == "error not yes, no or cancel: maybe");
  CHECK(say("answer font {\"name\":\"Sans\"}").starts_with("error "));
  CHECK(say("answer colour 5").starts_with("error usage: answer "));
}

TEST_CASE_FIXTURE(LaunchedFixture, "What the console sets the clock to is told") {
  session.console().services.clock.set({2026, 1, 5, 10, 2, 0});
  CHECK(say("system") == "= [\"2026-01-05 10:02:00\"]");
  CHECK(say("system") == "= []");
  CHECK(say("clock") == "= \"2026-01-05 10:02:00\"");
}

}  // namespace
}  // namespace lineweir::test

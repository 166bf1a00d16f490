#include "platform/scripted/scripted_remote_objects.h"

#include <doctest/doctest.h>

#include "platform/scripted/virtual_event_loop.h"
#include "support/failure_number.h"
#include "support/listen.h"

namespace lineweir::platform {
namespace {

using test::failure_number_of;
using Values = std::vector<RemoteValue>;

struct RemoteFixture {
  VirtualEventLoop loop;
  ScriptedRemoteObjects objects{loop};
};

TEST_CASE_FIXTURE(RemoteFixture, "At first there is no such class") {
  CHECK(failure_number_of([&] { objects.create("Quorlink.SerialInput"); }) ==
        failure_number::no_such_class);
}

TEST_CASE_FIXTURE(RemoteFixture, "Members return what was arranged, and nothing otherwise") {
  objects.set_present(true);
  objects.set_result("GetDimType", std::int64_t{3});
  const auto object = objects.create("Quorlink.SerialInput");
  CHECK(object->call("GetDimType", {std::int64_t{1}}) == RemoteValue{std::int64_t{3}});
  CHECK(object->call("gettimes", {}) == RemoteValue{});
}

TEST_CASE_FIXTURE(RemoteFixture, "Calls are kept with their object; a written value stands last") {
  objects.set_present(true);
  const auto object = objects.create("Quorlink.SerialInput");
  object->call("GetDimType", {std::int64_t{1}});
  object->tell("InputSerialPort", {std::int64_t{1}, "N05"}, {});
  const auto calls = objects.take_calls();
  REQUIRE(calls.size() == 2);
  CHECK(calls[0].object == "SerialInput");
  CHECK(calls[0].member == "GetDimType");
  CHECK(calls[0].arguments == Values{std::int64_t{1}});
  CHECK(calls[1].member == "InputSerialPort");
  CHECK(calls[1].arguments == Values{std::int64_t{1}, "N05"});
  CHECK(objects.take_calls().empty());
}

TEST_CASE_FIXTURE(RemoteFixture, "Objects fail when their program has gone") {
  objects.set_present(true);
  const auto object = objects.create("Quorlink.SerialInput");
  objects.set_present(false);
  CHECK(failure_number_of([&] { object->call("GetDimType", {}); }) ==
        failure_number::no_such_class);
  CHECK(objects.take_calls().empty());
}

TEST_CASE_FIXTURE(RemoteFixture, "A call-back comes from the loop") {
  std::string called;
  listen(objects.on_callback, [&](const std::string& method, const Values& arguments) {
    called = method + std::get<std::string>(arguments.at(0));
  });
  objects.call_back("ReturnCommand", {"U05"});
  CHECK(called.empty());
  loop.run_pending();
  CHECK(called == "ReturnCommandU05");
}

}  // namespace
}  // namespace lineweir::platform

#include "state/wire.h"

#include <doctest/doctest.h>

#include <optional>
#include <type_traits>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Handler = void (*)();
static_assert(!std::is_constructible_v<Event<void()>, Handler>);
static_assert(!std::is_assignable_v<Event<void()>&, Handler>);

const Failure mismatch(failure_number::type_mismatch, "x");

TEST_SUITE("state/wire") {
  TEST_CASE("an event without a handler does nothing") {
    const Event<void(int)> event;
    CHECK_FALSE(event);
    event(1);
  }

  TEST_CASE("a failure is reported under the handler's name and goes no further") {
    ScriptedConsole test;
    Event<void(int&)> event;
    wire(event, test.console.trace, "Form_Element_KeyPress", [](int& key) {
      key = 0;
      throw mismatch;
    });
    CHECK(event);
    int key = 'A';
    event(key);
    CHECK(key == 0);
    CHECK(test.take_trace() == std::vector<std::string>{"Form_Element_KeyPress Error - x"});
  }

  TEST_CASE("what is to be done about a failure is done after the report") {
    ScriptedConsole test;
    Event<void()> event;
    std::optional<std::size_t> reports_before;
    wire(
        event, test.console.trace, "Form_Element_Click", [] { throw mismatch; },
        [&](const Failure& failure) {
          CHECK(failure.number() == mismatch.number());
          reports_before = test.trace.size();
        });
    event();
    CHECK(reports_before == 1);
  }

  TEST_CASE("a handler may take its own event away") {
    ScriptedConsole test;
    std::optional<Event<void()>> event(std::in_place);
    std::string seen;
    wire(*event, test.console.trace, "Form_Element_Click",
         [&event, &seen, text = std::string(100, 'x')] {
           event.reset();
           seen = text;
         });
    (*event)();
    CHECK(seen == std::string(100, 'x'));
  }
}

}  // namespace
}  // namespace lineweir::test

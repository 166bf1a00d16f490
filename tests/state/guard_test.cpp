#include "state/guard.h"

#include <doctest/doctest.h>

#include <new>
#include <stdexcept>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_SUITE("state/guard") {
  TEST_CASE("a body that goes well is reported nowhere") {
    ScriptedConsole test;
    bool ran = false;
    CHECK(guard(test.console.trace, "Form_Procedure", [&] { ran = true; }));
    CHECK(ran);
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("a failure ends the body and is reported under the procedure's name") {
    ScriptedConsole test;
    bool went_on = false;
    CHECK_FALSE(guard(test.console.trace, "Form_Procedure", [&] {
      test.console.lines.StatusLetter(99) = 'N';
      went_on = true;
    }));
    CHECK_FALSE(went_on);
    CHECK(test.take_trace() ==
          std::vector<std::string>{"Form_Procedure Error - Subscript out of range"});
  }

  TEST_CASE("nothing is written while DebugMode is off") {
    ScriptedConsole test("");
    CHECK_FALSE(guard(test.console.trace, "Form_Procedure", [] { throw Failure(5, "x"); }));
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("whatever is thrown becomes a failure with a number") {
    const auto failure_of = [](auto thrown) {
      Failure caught(0, "");
      CHECK_FALSE(attempt([&] { throw thrown; }, [&](const Failure& f) { caught = f; }));
      return caught;
    };
    CHECK(failure_of(Failure(3024, "gone")).number() == 3024);
    CHECK(failure_of(std::bad_alloc()).number() == 7);
    CHECK(failure_of(std::out_of_range("map::at")).number() == 51);
    CHECK(std::string(failure_of(std::out_of_range("map::at")).what()) ==
          "Internal error: map::at");
    CHECK(failure_of(42).number() == 51);
  }

  TEST_CASE("guards may stand within one another: the inner one reports") {
    ScriptedConsole test;
    CHECK(guard(test.console.trace, "Outer", [&] {
      guard(test.console.trace, "Inner", [] { throw Failure(9, "Subscript out of range"); });
    }));
    CHECK(test.take_trace() == std::vector<std::string>{"Inner Error - Subscript out of range"});
  }
}

}  // namespace
}  // namespace lineweir::test

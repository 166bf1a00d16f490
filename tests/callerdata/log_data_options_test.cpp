#include "callerdata/log_data_options.h"

#include <doctest/doctest.h>

#include "forms/entry_fields.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_SUITE("callerdata/log data options") {
  TEST_CASE("the form shows which fields are in use, by the names of the columns") {
    ScriptedConsole test;
    test.console.caller_data.LogFieldOn = {true,  false, true,  false, true,
                                           false, true,  false, true,  false};
    test.console.Lineweir.CaptionLabel(user_column).caption = " Sponsor ";
    test.console.Lineweir.LogDataOptionsMenu.on_click();
    LogOptionsForm& form = test.console.LogDataForm;
    CHECK(form.visible);
    for (std::size_t field = 0; field < entry_fields.size(); ++field) {
      CAPTURE(field);
      CHECK(form.boxes[field].value == (field % 2 == 0 ? 1 : 0));
      CHECK(form.boxes[field].name() == entry_fields[field].box);
    }
    CHECK(form.box(CallerField::CallerName).caption == "Caller Name");
    CHECK(form.box(CallerField::Gender).caption == "Gender");
    CHECK(form.box(CallerField::UserField).caption == "Sponsor");
  }

  TEST_CASE("Exit stores the boxes and closes") {
    ScriptedConsole test;
    LogOptionsForm& form = test.console.LogDataForm;
    form.show();
    form.box(CallerField::City).value = 0;
    form.box(CallerField::UserField).value = 0;
    // Only the value 1 is true.
    form.box(CallerField::State).value = 2;
    form.ExitLayout.on_click();
    CHECK_FALSE(form.loaded());
    CHECK(test.console.caller_data.LogFieldOn ==
          LogFieldFlags{true, true, false, false, true, true, true, true, true, false});
    CHECK(test.console.settings.collect().LogFieldOn == test.console.caller_data.LogFieldOn);
  }

  TEST_CASE("Cancel and the window's own button close without storing") {
    ScriptedConsole test;
    LogOptionsForm& form = test.console.LogDataForm;
    const LogFieldFlags before = test.console.caller_data.LogFieldOn;
    form.show();
    form.box(CallerField::City).value = 0;
    form.CancelLayout.on_click();
    CHECK_FALSE(form.loaded());
    form.show();
    CHECK(form.box(CallerField::City).value == 1);
    form.box(CallerField::City).value = 0;
    form.close();
    CHECK(test.console.caller_data.LogFieldOn == before);
  }
}

}  // namespace
}  // namespace lineweir::test

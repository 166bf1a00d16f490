#include "serverlink/remote_session.h"

#include <doctest/doctest.h>

#include <string>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_SUITE("serverlink/remote session") {
  TEST_CASE("the user may choose another way while the server is asked anything") {
    for (const char* asked : {"AddObjectReference", "GetStudioStatus", "GetStudioNames", "gettimes",
                              "OutputSerialPort", "GetDimType", "GetLineNumbers"}) {
      CAPTURE(asked);
      ScriptedConsole desk;
      MainForm& form = desk.console.Lineweir;
      platform::ScriptedRemoteObjects& objects = desk.platform.remote_objects;
      objects.set_present(true);
      objects.set_result("AddObjectReference", true);
      bool was_asked = false;
      objects.on_use = [&](const std::string& member) {
        if (member != asked || was_asked) return;
        was_asked = true;
        form.Com2.on_click();
      };
      form.NetworkConnectionOption.on_click();
      CHECK(was_asked);
      CHECK(form.Com2.checked);
      CHECK_FALSE(form.NetworkConnectionOption.checked);
    }
  }
}

}  // namespace
}  // namespace lineweir::test

#include "screen/profile_window.h"

#include <doctest/doctest.h>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

struct ProfileDesk : ScriptedConsole {
  ProfileDesk() {
    ProfileWindow& profile = console.profile_window;
    profile.SetStateTo = window_normal;
    profile.SetStateToHeight = 9000;
    profile.SetStateToWidth = 12345;
    profile.SetStateMessGroup = 1;
    console.Lineweir.SetStateTimer.enabled = true;
  }
  void pass(int milliseconds) { platform.loop.advance(platform::Milliseconds(milliseconds)); }
};

TEST_SUITE("screen/profile_window") {
  TEST_CASE("a shown form gets the size of its group's profile, once") {
    ProfileDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.pass(100);
    CHECK(form.height == 9000);
    CHECK(form.width == 12345);
    CHECK_FALSE(form.SetStateTimer.enabled);
  }

  TEST_CASE("a form that isn't shown gets it as soon as it is") {
    ProfileDesk desk;
    MainForm& form = desk.console.Lineweir;
    form.hide();
    desk.pass(350);
    CHECK(form.SetStateTimer.enabled);
    CHECK(form.width != 12345);
    form.show();
    desk.pass(100);
    CHECK(form.width == 12345);
    CHECK_FALSE(form.SetStateTimer.enabled);
  }

  TEST_CASE("the profile of another group sets the state only") {
    ProfileDesk desk;
    MainForm& form = desk.console.Lineweir;
    form.window_state = window_maximised;
    desk.console.profile_window.SetStateMessGroup = 2;
    desk.pass(100);
    CHECK(form.window_state == int{window_normal});
    CHECK(form.width != 12345);
  }

  TEST_CASE("a window that nearly has the size keeps its own") {
    ProfileDesk desk;
    MainForm& form = desk.console.Lineweir;
    const int height = form.height;
    const int width = form.width;
    desk.console.profile_window.SetStateToHeight = height - 49;
    desk.console.profile_window.SetStateToWidth = width + 49;
    desk.pass(100);
    CHECK(form.height == height);
    CHECK(form.width == width);
    desk.console.profile_window.SetStateToHeight = height - 50;
    form.SetStateTimer.enabled = true;
    desk.pass(100);
    CHECK(form.height == height - 50);
    CHECK(form.width == width + 49);
  }

  TEST_CASE("a window that isn't normal keeps its size") {
    ProfileDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.console.profile_window.SetStateTo = window_maximised;
    desk.pass(100);
    CHECK(form.window_state == int{window_maximised});
    CHECK(form.width != 12345);
  }
}

}  // namespace
}  // namespace lineweir::test

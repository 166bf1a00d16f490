#include "callcontrol/save_and_ready.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/entry_form.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

// A producer at handset 1, with the caller on line 5 there and the caller's form open.
struct Screener : EntryForm {
  explicit Screener(bool first_handset = true) {
    console.Lineweir.Timer1.enabled = false;
    (first_handset ? console.Lineweir.MitelPhone1 : console.Lineweir.MitelPhone2).checked = true;
    console.Lineweir.ScreenerMode.on_click();
    box_sends(first_handset ? "P04" : "O04");
    open(4);
    type(1, "Ann");
    platform.comm1.take_writes();
    take_messages();
  }

  Button& button() { return form().SaveReady; }
  Texts words() { return platform.comm1.take_writes(); }
  int press_ctrl_enter() {
    int code = 13;
    form().on_key_down(code, 2);
    return code;
  }
  std::string notice() {
    return form().NoticeLabel.visible ? form().NoticeLabel.caption.get() : "";
  }
};

TEST_SUITE("callcontrol/save and ready") {
  TEST_CASE("Ctrl+Enter saves, closes the form and marks the caller ready, once") {
    for (const bool first_handset : {true, false}) {
      Screener desk(first_handset);
      CHECK(desk.button().visible);
      CHECK(desk.button().enabled);
      CHECK(desk.press_ctrl_enter() == 0);
      CHECK(desk.shown(4, 1).caption == "Ann");
      CHECK_FALSE(desk.form().loaded());
      CHECK(desk.words() == Texts{"S04"});
      CHECK(desk.press_ctrl_enter() == 0);
      CHECK(desk.words().empty());
    }
  }

  TEST_CASE("other keys are the fields' own") {
    Screener desk;
    for (const auto& [key, shift] : {std::pair(13, 0), {13, 1}, {13, 3}, {'S', 2}}) {
      int code = key;
      desk.form().on_key_down(code, shift);
      CHECK(code == key);
    }
    CHECK(desk.form().loaded());
    CHECK(desk.words().empty());
  }

  TEST_CASE("of two callers at the handset only the one in the form is marked ready") {
    Screener desk;
    desk.box_sends("P02");
    desk.platform.comm1.take_writes();
    desk.button().on_click();
    CHECK(desk.words() == Texts{"S04"});
  }

  TEST_CASE("a caller who isn't at this handset is not marked ready, and nothing is saved") {
    for (const char* report : {"R04", "H04", "O04", "S04", "N04", "C04"}) {
      CAPTURE(report);
      Screener desk;
      desk.box_sends(report);
      desk.platform.comm1.take_writes();
      CHECK(desk.button().visible);
      CHECK_FALSE(desk.button().enabled);
      const std::string why = desk.button().tool_tip;
      CHECK(desk.press_ctrl_enter() == 0);
      CHECK(desk.form().loaded());
      CHECK(desk.shown(4, 1).caption == "");
      CHECK(desk.words().empty());
      CHECK(desk.notice().ends_with(why));
    }
  }

  TEST_CASE("what was said goes when the caller is at the handset again") {
    Screener desk;
    desk.box_sends("H04");
    desk.press_ctrl_enter();
    CHECK(desk.notice() == "Line 5 isn't at this console's handset");
    desk.box_sends("P04");
    CHECK(desk.notice() == "");
    CHECK(desk.button().enabled);
  }

  TEST_CASE("of a caller who has hung up nobody is marked ready, whoever is on the line by then") {
    Screener desk;
    for (const char* report : {"F04", "R04", "P04"}) desk.box_sends(report);
    desk.platform.comm1.take_writes();
    CHECK_FALSE(desk.button().enabled);
    CHECK(desk.button().tool_tip == "The caller isn't on the line any more");
    desk.press_ctrl_enter();
    CHECK(desk.words().empty());
    CHECK(desk.form().loaded());
    CHECK(desk.text(1) == "Ann");
  }

  TEST_CASE("the button belongs to producer mode") {
    Screener desk;
    desk.console.Lineweir.StudioMode.on_click();
    CHECK_FALSE(desk.button().visible);
    desk.press_ctrl_enter();
    CHECK(desk.notice() == "Callers are marked ready in producer mode");
    CHECK(desk.form().loaded());
    desk.console.Lineweir.ScreenerMode.on_click();
    CHECK(desk.button().visible);
    CHECK(desk.button().enabled);
    desk.console.Lineweir.PassiveMode.on_click();
    CHECK_FALSE(desk.button().visible);
    desk.press_ctrl_enter();
    CHECK(desk.words().empty());
  }

  TEST_CASE("without a handset, without the right or with a server that chooses it says why") {
    Screener desk;
    const auto refused = [&](std::string_view why) {
      CHECK_FALSE(desk.button().enabled);
      CHECK(desk.button().tool_tip.get() == why);
      desk.press_ctrl_enter();
      CHECK(desk.notice() == why);
      CHECK(desk.form().loaded());
      CHECK(desk.words().empty());
    };
    SUBCASE("handset") {
      desk.console.Lineweir.MitelPhone1.checked = false;
      refused("Line 5 isn't at this console's handset");
    }
    SUBCASE("right") {
      desk.console.Lineweir.NextButton.withheld = true;
      refused("READY isn't allowed for this user");
    }
    SUBCASE("server") {
      desk.console.lines.ThePhoneFlag = 4;
      desk.console.caller_data.lines_changed();
      refused("The server chooses whom READY takes: save, then press READY");
    }
    SUBCASE("link") {
      desk.platform.comm1.close();
      desk.console.link.review();
      refused(desk.console.Lineweir.no_link.get());
    }
  }

  TEST_CASE("the right to enter data taken away keeps the form open and marks nobody ready") {
    Screener desk;
    desk.console.program.CallerDataAllowed = false;
    desk.button().on_click();
    CHECK(desk.form().loaded());
    CHECK(desk.words().empty());
    CHECK(desk.take_messages() == Texts{"Caller Data Entry not allowed in this user profile"});
  }
}

TEST_SUITE("callcontrol/save and ready over a server") {
  struct OnSocket : Screener {
    OnSocket() {
      connect_socket();
      console.Lineweir.no_link = std::string();
      platform.winsock1.take_writes();
    }
  };

  TEST_CASE("data that can't be sent leave the caller as he is") {
    OnSocket desk;
    desk.platform.winsock1.close();
    desk.console.Lineweir.no_link = std::string();
    desk.button().on_click();
    CHECK(desk.form().loaded());
    CHECK(desk.platform.winsock1.take_writes().empty());
    // One command failed, and no other was tried.
    CHECK(desk.take_messages().size() == 1);
  }
}

}  // namespace
}  // namespace lineweir::test

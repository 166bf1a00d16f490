#include "serverlink/profile_flags.h"

#include <string>

#include "state/wire.h"
#include "support/profile_blocks.h"
#include "support/rows_of.h"

namespace lineweir::test {
namespace {

// The item counts its clicks instead of acting on them.
struct ClickCount {
  ClickCount(Console& console, MenuItem& item) {
    wire(item.on_click, console.trace, "click", [this] { ++clicks; });
  }
  int clicks = 0;
};

// Does something on a console of its own for each flag of that use, and tells how many there are.
template <class Body>
int for_each_of(FlagUse use, Body body) {
  int count = 0;
  for (std::size_t i = 0; i < profile_flags.size(); ++i) {
    if (profile_flags[i].use != use) continue;
    CAPTURE(i + 1);
    ++count;
    ScriptedConsole desk;
    body(desk.console, i + 1);
  }
  return count;
}

MenuItem& item_of(Console& console, std::size_t place) {
  return console.Lineweir.*profile_flags[place - 1].item;
}

// How often the item is clicked when a profile has that flag while the item shows this mark.
int clicks_by(Console& console, std::size_t place, bool checked, bool flag) {
  MenuItem& item = item_of(console, place);
  const EditedProfile profile = EditedProfile(console).flag(place, flag);
  const ClickCount count(console, item);
  item.checked = checked;
  profile.apply();
  return count.clicks;
}

TEST_SUITE("serverlink/profile flags") {
  TEST_CASE("connection and handset are the seat's, whatever a profile says") {
    const int count = for_each_of(FlagUse::OfSeat, [](Console& console, std::size_t place) {
      for (const bool checked : {true, false}) {
        CHECK(clicks_by(console, place, checked, !checked) == 0);
        CHECK(item_of(console, place).checked == checked);
      }
    });
    CHECK(count == 10);
  }

  TEST_CASE("the switch console's port is clicked by a flag that is set, whatever is checked") {
    const int count = for_each_of(FlagUse::ClickIfSet, [](Console& console, std::size_t place) {
      for (const bool checked : {true, false}) {
        CHECK(clicks_by(console, place, checked, true) == 1);
        CHECK(clicks_by(console, place, checked, false) == 0);
      }
    });
    CHECK(count == 6);
  }

  TEST_CASE("what has effects is clicked where the flag differs") {
    int count = 0;
    for (const FlagUse use :
         {FlagUse::ClickIfOther, FlagUse::ClickIfOtherAndLock, FlagUse::ClickWithRoom}) {
      count += for_each_of(use, [use](Console& console, std::size_t place) {
        for (const bool checked : {true, false}) {
          CHECK(clicks_by(console, place, checked, !checked) >= 1);
          // Digits give way to the dials for a moment.
          if (use != FlagUse::ClickWithRoom)
            CHECK(clicks_by(console, place, checked, checked) == 0);
        }
      });
    }
    CHECK(count == 10);
  }

  TEST_CASE("the other items get their mark without a click") {
    int count = 0;
    for (const FlagUse use : {FlagUse::CheckOnly, FlagUse::CheckAndLineCount}) {
      count += for_each_of(use, [](Console& console, std::size_t place) {
        for (const bool flag : {true, false}) {
          CHECK(clicks_by(console, place, !flag, flag) == 0);
          CHECK(item_of(console, place).checked == flag);
        }
      });
    }
    CHECK(count == 5);
  }

  TEST_CASE("the fields of the log follow their flags") {
    const int count = for_each_of(FlagUse::LogField, [](Console& console, std::size_t place) {
      LogFieldFlags& in_use = console.caller_data.LogFieldOn;
      for (const bool flag : {true, false}) {
        in_use.fill(!flag);
        EditedProfile(console).flag(place, flag).apply();
        LogFieldFlags wanted;
        wanted.fill(!flag);
        wanted[place - 15] = flag;
        CHECK(in_use == wanted);
      }
    });
    CHECK(count == 10);
  }

  TEST_CASE("a flag is set by a 1 and by nothing else") {
    ScriptedConsole desk;
    desk.console.Lineweir.SyncTimeMenu.checked = true;
    EditedProfile profile(desk.console);
    profile.flags[35] = 'T';
    profile.apply();
    CHECK_FALSE(desk.console.Lineweir.SyncTimeMenu.checked);
  }

  TEST_CASE("passive mode and its lock come with the profile, and go with it") {
    ScriptedConsole desk;
    const MainForm& form = desk.console.Lineweir;
    desk.console.Lineweir.ScreenerMode.on_click();
    const EditedProfile producer(desk.console);
    EditedProfile(desk.console).flag(25, true).flag(26, true).flag(27, false).apply();
    CHECK(form.PassiveMode.checked);
    CHECK(form.StudioMode.checked);
    CHECK_FALSE(form.ScreenerMode.enabled);
    CHECK_FALSE(form.Dial.enabled);
    producer.apply();
    CHECK_FALSE(form.PassiveMode.checked);
    CHECK(form.ScreenerMode.checked);
    CHECK(form.ScreenerMode.enabled);
    CHECK(form.Dial.enabled);
  }

  TEST_CASE("digits come with a profile only beside ten rows at most") {
    for (const int rows : {10, 11}) {
      ScriptedConsole desk;
      show_rows(desk.console, rows);
      desk.console.Lineweir.Line20Mode.checked = true;
      EditedProfile(desk.console).flag(37, true).apply();
      CHECK(desk.console.Lineweir.DigiClock.checked == (rows == 10));
    }
  }

  TEST_CASE("the dials behind the digits are chosen by a profile too, and stay behind them") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.DigiClock.on_click();
    for (const bool shown : {true, false}) {
      EditedProfile(desk.console).flag(29, shown).flag(30, shown).apply();
      CHECK(form.DigiClock.checked);
      CHECK(form.EventClockMenu.checked == shown);
      CHECK(form.TimeClockMenuItem.checked == shown);
      CHECK_FALSE(form.picShowTimeClock.visible);
      CHECK_FALSE(form.picRealTimeClock.visible);
      CHECK(form.RealTime2.visible);
    }
    // A block that ends before the flag leaves the digits.
    desk.console.received_profile.SetUserProfile(flags_of(desk.console).substr(0, 36));
    CHECK(form.DigiClock.checked);
    CHECK(form.RealTime2.visible);
  }

  TEST_CASE("flags without fields are applied as far as they go") {
    for (std::size_t length = 0; length <= count_of_flags; ++length) {
      CAPTURE(length);
      ScriptedConsole desk;
      MainForm& form = desk.console.Lineweir;
      const std::string flags =
          EditedProfile(desk.console).flag(36, true).flag(41, true).flags.substr(0, length);
      desk.console.received_profile.SetUserProfile(flags);
      CHECK(form.SyncTimeMenu.checked == (length >= 36));
      CHECK(form.NextBarDisable.checked == (length >= 41));
      CHECK(desk.take_trace().empty());
      CHECK(desk.take_messages().empty());
    }
  }
}

}  // namespace
}  // namespace lineweir::test

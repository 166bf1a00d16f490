#include <doctest/doctest.h>

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "pixels.h"
#include "shown_console.h"

namespace lineweir {
namespace {

using test::part;

CallerKnown barred() {
  return {CallerFlag::Barred, "555 0100", 7, 3, "2026-11-12 20:15", "Anna Lee", "Troy", "abuse",
          "2026-12-31",       "bob"};
}

struct FlagDesk : test::ShownConsole {
  void know(int line, CallerFlag flag) {
    CallerKnown known = barred();
    known.flag = flag;
    console.known_callers.tell(line, known);
    settle();
  }

  void ring(int line, const char* name) {
    console.lines.StatusLetter(line) = 'S';
    console.rows.set_row_color(line, RowColor::White);
    form().LineName(line).caption = name;
    settle();
  }

  QImage picture(const Control& control) { return test::shown_pixels(widget(control)); }
  QImage row_picture(int line) {
    ElementWidget& strip = widget(form().DataRow(line));
    return window().grab(QRect(strip.mapTo(&window(), QPoint(0, 0)), strip.size())).toImage();
  }

  QString description(int line) {
    QAccessibleInterface* strip =
        QAccessible::queryAccessibleInterface(&widget(form().DataRow(line)));
    return strip->text(QAccessible::Description);
  }
};

// Whether the pictures have the same shapes, whatever their colours.
QImage grey(const QImage& picture) { return picture.convertToFormat(QImage::Format_Grayscale8); }

TEST_SUITE("caller flags") {
  TEST_CASE("each flag has a sign of its own in the row, that is told apart without its colour") {
    FlagDesk desk;
    desk.ring(3, "Anna Lee");
    std::vector<QImage> seen = {grey(desk.row_picture(3))};
    for (const CallerFlag flag : {CallerFlag::Regular, CallerFlag::Careful, CallerFlag::Barred}) {
      desk.know(3, flag);
      seen.push_back(grey(desk.row_picture(3)));
    }
    for (std::size_t i = 0; i < seen.size(); ++i) {
      for (std::size_t j = i + 1; j < seen.size(); ++j) CHECK(seen[i] != seen[j]);
    }
    desk.console.known_callers.forget(3);
    desk.settle();
    CHECK(grey(desk.row_picture(3)) == seen[0]);
  }

  TEST_CASE("a line of whom much is known but no flag looks as before") {
    FlagDesk desk;
    desk.ring(3, "Anna Lee");
    const QImage before = desk.row_picture(3);
    desk.know(3, CallerFlag::None);
    CHECK(desk.row_picture(3) == before);
    const QString known = QStringLiteral("On air 3 times, last 11/12/2026\nAnna Lee, Troy");
    CHECK(desk.widget(desk.form().LineCity(3)).tool_tip() == known);
    CHECK(desk.description(3) == QStringLiteral("On air 3 times, last 11/12/2026. Anna Lee, Troy"));
  }

  TEST_CASE("a line on which nobody is shows no flag until somebody is") {
    FlagDesk desk;
    const QImage before = desk.row_picture(3);
    desk.know(3, CallerFlag::Barred);
    CHECK(desk.row_picture(3) == before);
    CHECK(desk.description(3).isEmpty());
    desk.ring(3, "");
    CHECK(desk.description(3).startsWith(QStringLiteral("Barred")));
    desk.console.lines.StatusLetter(3) = ' ';
    desk.settle();
    CHECK(desk.row_picture(3) == before);
  }

  TEST_CASE("the sign hides no text: a name that is too long for what is left is told whole") {
    FlagDesk desk;
    desk.ring(3, "Anna Margaret Lee");
    ElementWidget& name = desk.widget(desk.form().LineName(3));
    desk.know(3, CallerFlag::Careful);
    const QString flag = QStringLiteral(
        "Careful until 12/31/2026: abuse (bob)\nOn air 3 times, last 11/12/2026\n"
        "Anna Lee, Troy");
    if (name.caption_fits()) {
      CHECK(name.tool_tip() == flag);
    } else {
      CHECK(name.tool_tip() == QStringLiteral("Anna Margaret Lee\n") + flag);
    }
    CHECK(desk.widget(desk.form().LineCity(3)).tool_tip() == flag);
    desk.form().LineName(3).caption = std::string(60, 'x');
    desk.settle();
    CHECK(name.tool_tip().startsWith(QStringLiteral("xxx")));
    CHECK(name.tool_tip().endsWith(flag));
  }

  TEST_CASE("a screen reader is told of the flag of the number that is typed") {
    FlagDesk desk;
    desk.platform.winsock1.stand_connected();
    desk.form().WinsockMenu.checked = true;
    desk.console.known_callers.begin();
    desk.console.caller_data.show_for_line(4);
    desk.console.Form4.TheText(6).text = "5550100";
    desk.settle();
    desk.console.known_callers.answer(barred());
    desk.settle();
    desk.desktop.announcer().flush();
    const auto* announcements = desk.window().findChild<QWidget*>(QStringLiteral("Announcements"));
    REQUIRE(announcements != nullptr);
    CHECK(announcements->accessibleName() ==
          QStringLiteral("Barred until 12/31/2026: abuse (bob)"));
  }

  TEST_CASE("the row's description says the flag") {
    FlagDesk desk;
    desk.ring(3, "Anna Lee");
    desk.know(3, CallerFlag::Barred);
    CHECK(desk.description(3) ==
          QStringLiteral("Barred until 12/31/2026: abuse (bob). On air 3 times, last 11/12/2026. "
                         "Anna Lee, Troy"));
    CHECK(desk.description(4).isEmpty());
  }

  TEST_CASE("a caller is flagged with the keyboard alone") {
    FlagDesk desk;
    desk.platform.winsock1.stand_connected();
    desk.form().WinsockMenu.checked = true;
    desk.console.known_callers.begin();
    desk.console.caller_data.show_for_line(4);
    desk.settle();
    QWidget& entry = *desk.desktop.dialog(desk.console.Form4)->window();
    entry.activateWindow();
    desk.settle();
    CHECK_FALSE(part<QLabel>(entry, "FlagLabel").isVisible());
    part<QLineEdit>(entry, "TheText(6)").setFocus();
    QTest::keyClicks(entry.focusWidget(), QStringLiteral("5550100"));
    desk.platform.loop.advance(platform::Milliseconds(400));
    desk.console.known_callers.answer(barred());
    desk.settle();
    CHECK(part<QLabel>(entry, "FlagLabel").isVisible());
    CHECK(part<QLineEdit>(entry, "TheText(6)").hasFocus());
    // What is pressed by its letter is seen to go down before it clicks.
    QTest::keyClick(entry.focusWidget(), Qt::Key_G, Qt::AltModifier);
    REQUIRE(test::wait_for([&] { return desk.console.FlagForm.visible.get(); }));
    desk.come_to_rest();
    QWidget& flag = *desk.desktop.dialog(desk.console.FlagForm)->window();
    REQUIRE(flag.isVisible());
    flag.activateWindow();
    desk.come_to_rest();
    CHECK(part<QRadioButton>(flag, "BarredFlag").hasFocus());
    QTest::keyClick(flag.focusWidget(), Qt::Key_C, Qt::AltModifier);
    CHECK(test::wait_for([&] { return desk.console.FlagForm.CarefulFlag.value.get(); }));
    QTest::keyClick(flag.focusWidget(), Qt::Key_E, Qt::AltModifier);
    desk.settle();
    CHECK(part<QLineEdit>(flag, "ReasonText").hasFocus());
    part<QLineEdit>(flag, "ReasonText").selectAll();
    QTest::keyClicks(flag.focusWidget(), QStringLiteral("talks long"));
    QTest::keyClick(flag.focusWidget(), Qt::Key_L, Qt::AltModifier);
    desk.settle();
    part<QLineEdit>(flag, "UntilText").selectAll();
    QTest::keyClicks(flag.focusWidget(), QStringLiteral("soon"));
    QTest::keyClick(flag.focusWidget(), Qt::Key_Return);
    desk.settle();
    CHECK(part<QLabel>(flag, "NoticeLabel").isVisible());
    CHECK(flag.isVisible());
    part<QLineEdit>(flag, "UntilText").selectAll();
    QTest::keyClick(flag.focusWidget(), Qt::Key_Backspace);
    desk.platform.winsock1.take_writes();
    QTest::keyClick(flag.focusWidget(), Qt::Key_Return);
    desk.come_to_rest();
    CHECK_FALSE(flag.isVisible());
    const auto writes = desk.platform.winsock1.take_writes();
    REQUIRE(writes.size() == 1);
    CHECK(writes[0].find("5550100\3talks long\3") != std::string::npos);
  }

  TEST_CASE("Esc closes the flag's window and sends nothing") {
    FlagDesk desk;
    desk.platform.winsock1.stand_connected();
    desk.form().WinsockMenu.checked = true;
    desk.console.known_callers.begin();
    desk.console.caller_data.show_for_line(4);
    desk.console.Form4.TheText(6).text = "5550100";
    desk.console.Form4.FlagCaller.on_click();
    desk.come_to_rest();
    QWidget& flag = *desk.desktop.dialog(desk.console.FlagForm)->window();
    desk.platform.winsock1.take_writes();
    QTest::keyClick(flag.focusWidget(), Qt::Key_Escape);
    desk.settle();
    CHECK_FALSE(flag.isVisible());
    CHECK(desk.platform.winsock1.take_writes().empty());
  }
}

}  // namespace
}  // namespace lineweir

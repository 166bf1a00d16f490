#include <doctest/doctest.h>

#include <map>

#include "shown_console.h"

namespace lineweir {
namespace {

using Counts = std::map<QString, int>;

Counts paint_counts(test::ShownConsole& desk) {
  Counts counts;
  for (const ElementWidget* widget : desk.canvas().element_widgets()) {
    counts[widget->objectName()] = widget->paint_count();
  }
  return counts;
}

// The names of what was painted since, with how often.
Counts painted_since(test::ShownConsole& desk, const Counts& before) {
  Counts painted;
  for (const auto& [name, count] : paint_counts(desk)) {
    if (count != before.at(name)) painted[name] = count - before.at(name);
  }
  return painted;
}

TEST_SUITE("repainting") {
  TEST_CASE("a new caption paints its label once, with the strip below and the mark at its edge") {
    test::ShownConsole desk;
    const Counts before = paint_counts(desk);
    desk.form().LineName(4).caption = "Margaret";
    desk.form().LineName(4).caption = "Margaret Ellison";
    desk.settle();
    // The mark at the right edge of the column before stands on the label's first two pixels.
    const QString mark = object_name(desk.form().MyMark(4 * column_count + time_column));
    CHECK(painted_since(desk, before) == Counts{{"LineName(4)", 1}, {"DataRow(4)", 1}, {mark, 1}});
  }

  TEST_CASE("an equal value, an event timer and a hidden element cost nothing") {
    test::ShownConsole desk;
    desk.form().LineName(4).caption = "Margaret";
    desk.settle();
    const Counts before = paint_counts(desk);
    desk.form().LineName(4).caption = "Margaret";
    desk.form().labels_of(CallerField::ZipCode)(4).caption = "12345";
    desk.form().Timer5.interval = 250;
    desk.settle();
    CHECK(painted_since(desk, before).empty());
  }

  TEST_CASE("ten changes of ten rows within a frame are one painting of each") {
    test::ShownConsole desk;
    const Counts before = paint_counts(desk);
    for (int second = 0; second < 10; ++second) {
      for (int row = 0; row < 10; ++row) {
        desk.form().LineTime(row).caption = "0:00:0" + std::to_string(second);
      }
    }
    desk.settle();
    const Counts painted = painted_since(desk, before);
    // A label, a strip and a mark in each row.
    CHECK(painted.size() == 30);
    for (const auto& [name, count] : painted) {
      CAPTURE(name.toStdString());
      CHECK(count == 1);
    }
  }

  TEST_CASE("changes are shown by themselves within a frame or two") {
    test::ShownConsole desk;
    const ElementWidget& widget = desk.widget(desk.form().LineName(1));
    const int before = widget.paint_count();
    desk.form().LineName(1).caption = "Dev";
    CHECK(test::wait_for([&] { return widget.paint_count() == before + 1; }));
  }

  TEST_CASE("after a quiet time a change is shown at once and waits for no frame") {
    test::ShownConsole desk;
    QTest::qWait(2 * FrameTimer::frame_milliseconds);
    const ElementWidget& widget = desk.widget(desk.form().LineName(1));
    const int before = widget.paint_count();
    desk.form().LineName(1).caption = "Dev";
    // Whatever is due now runs, and nothing is waited for.
    for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
    CHECK(widget.paint_count() == before + 1);
  }

  TEST_CASE("a moving hand paints its clock and nothing else") {
    test::ShownConsole desk;
    desk.form().picRealTimeClock.visible = true;
    desk.settle();
    const Counts before = paint_counts(desk);
    desk.form().SecondHand.x2 = 900;
    desk.form().SecondHand.y2 = 500;
    desk.settle();
    const Counts painted = painted_since(desk, before);
    CHECK(painted.at("picRealTimeClock") == 1);
    CHECK_FALSE(painted.contains("picShowTimeClock"));
    CHECK_FALSE(painted.contains("DataRow(9)"));
  }

  TEST_CASE("an icon costs its own painting and that of the key below it") {
    test::ShownConsole desk;
    const Counts before = paint_counts(desk);
    desk.console.rows.HybridPictureSet(3, 1, 0);
    desk.settle();
    CHECK(painted_since(desk, before) == Counts{{"CIcon1(3)", 1}, {"OnHybrid1(3)", 1}});
  }
}

}  // namespace
}  // namespace lineweir

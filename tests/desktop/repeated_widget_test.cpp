#include <doctest/doctest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

#include "callerdata/call_log.h"
#include "shown_console.h"
#include "support/call_log_file.h"

namespace lineweir {
namespace {

QWidget& window_of(test::ShownConsole& desk, Form& form) {
  form.show();
  desk.settle();
  return *desk.desktop.dialog(form)->window();
}

// What Tab comes to behind a widget, whether it can be used now or not.
QString next_stop(const QWidget& from) {
  const QWidget* next = from.nextInFocusChain();
  while ((next->focusPolicy() & Qt::TabFocus) == 0) next = next->nextInFocusChain();
  return next->objectName();
}

QString of_array(const char* name, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

TEST_SUITE("desktop/repeated widgets") {
  TEST_CASE("rows of which the first is drawn stand below one another, and Tab goes through them") {
    test::ShownConsole desk;
    const QWidget& window = window_of(desk, desk.console.DisplayOptionForm);
    int seen = 0;
    for (int column = 0; column + 1 < column_count; ++column) {
      CAPTURE(column);
      const auto* check = window.findChild<QCheckBox*>(of_array("CheckItem", column));
      const auto* below = window.findChild<QCheckBox*>(of_array("CheckItem", column + 1));
      const auto* width = window.findChild<QLineEdit*>(of_array("WidthText", column));
      REQUIRE((check != nullptr && below != nullptr && width != nullptr));
      CHECK(below->y() > check->y());
      CHECK(below->x() == check->x());
      CHECK(width->x() > check->x());
      CHECK(width->width() == window.findChild<QLineEdit*>(of_array("WidthText", 0))->width());
      CHECK(next_stop(*check) == of_array("WidthText", column));
      CHECK(next_stop(*width) == of_array("CheckItem", column + 1));
      ++seen;
    }
    CHECK(seen == 12);
  }

  TEST_CASE("the details of a call have as many rows as its log has columns") {
    test::ShownConsole desk;
    test::choose_log(desk);
    auto columns = new_log_columns("Sponsor");
    columns.insert(columns.begin() + 3, {"Topic", 50});
    columns.push_back({"Mood", 50});
    desk.platform.databases.create("newer.lwl")->create_table(std::string(call_log_table), columns);
    DatabaseViewerForm& form = desk.console.DatabaseViewer;
    const auto show = [&](const char* file) {
      desk.console.Lineweir.Data1.database_name = file;
      desk.console.Lineweir.ShowDatabaseMenuItem.on_click();
      desk.platform.loop.advance(platform::Milliseconds(1000));
      desk.settle();
    };
    const auto text_of = [&](const char* name, int index) -> QLabel* {
      auto* label = desk.desktop.dialog(form)->window()->findChild<QLabel*>(of_array(name, index));
      return label == nullptr || label->isHidden() ? nullptr : label;
    };
    show("newer.lwl");
    REQUIRE(text_of("DetailName", 15) != nullptr);
    CHECK(text_of("DetailName", 8)->text() == "Sponsor");
    CHECK(text_of("DetailName", 14)->text() == "Topic");
    CHECK(text_of("DetailName", 15)->text() == "Mood");
    CHECK(text_of("DetailText", 15)->y() > text_of("DetailText", 14)->y());
    CHECK(text_of("DetailText", 15)->wordWrap());
    show(test::log_path);
    CHECK(text_of("DetailName", 8)->text() == "Sponsor");
    CHECK(text_of("DetailName", 14) == nullptr);
    show("newer.lwl");
    CHECK(text_of("DetailName", 15)->text() == "Mood");
  }
}

}  // namespace
}  // namespace lineweir

#include <doctest/doctest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>

#include "full_dialogs.h"

namespace lineweir {
namespace {

using test::for_each_dialog;
using test::shown_controls;

// Letters of another size as long as it lives.
class DialogLetters {
 public:
  explicit DialogLetters(int percent) : before_(QApplication::font()) {
    QFont font = before_;
    font.setPixelSize(before_.pixelSize() * percent / 100);
    QApplication::setFont(font);
  }
  ~DialogLetters() { QApplication::setFont(before_); }
  DialogLetters(const DialogLetters&) = delete;
  DialogLetters& operator=(const DialogLetters&) = delete;

 private:
  QFont before_;
};

QSize needed_size(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (!label->wordWrap()) return label->sizeHint();
    return {0, label->heightForWidth(label->width())};
  }
  if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
    const QFontMetrics metrics = edit->fontMetrics();
    return {metrics.horizontalAdvance(edit->text()) + 8, metrics.height() + 4};
  }
  if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) return combo->sizeHint();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    const QFontMetrics metrics = button->fontMetrics();
    const QSize text = metrics.size(Qt::TextShowMnemonic, button->text());
    const bool push = button->inherits("QPushButton");
    return {push ? text.width() + 8 : button->sizeHint().width(), text.height() + 4};
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
    return {group->fontMetrics().size(Qt::TextShowMnemonic, group->title()).width(), 0};
  }
  return {0, 0};
}

void check_table(QTableWidget& table) {
  const QFontMetrics metrics = table.fontMetrics();
  for (int column = 0; column < table.columnCount(); ++column) {
    const QString heading = table.horizontalHeaderItem(column)->text();
    CAPTURE(heading.toStdString());
    CHECK(table.horizontalHeader()->fontMetrics().horizontalAdvance(heading) + 4 <=
          table.columnWidth(column));
    for (int row = 0; row < table.rowCount(); ++row) {
      const auto* cell = table.item(row, column);
      if (cell == nullptr) continue;
      CHECK(metrics.horizontalAdvance(cell->text()) + 6 <= table.columnWidth(column));
      CHECK(metrics.height() <= table.rowHeight(row));
    }
  }
}

TEST_SUITE("letters in dialogs") {
  TEST_CASE("no text is cut off, whatever the size of the letters") {
    for (const int percent : {100, 150, 200}) {
      CAPTURE(percent);
      const DialogLetters letters(percent);
      test::ShownConsole desk;
      for_each_dialog(desk, [&](QWidget& window) {
        CAPTURE(window.objectName().toStdString());
        for (QWidget* widget : shown_controls(window)) {
          CAPTURE(widget->objectName().toStdString());
          const QSize needed = needed_size(*widget);
          CHECK(needed.width() <= widget->width());
          CHECK(needed.height() <= widget->height());
          // And the control itself is seen whole.
          CHECK(widget->parentWidget()->rect().contains(widget->geometry()));
          if (auto* table = qobject_cast<QTableWidget*>(widget)) check_table(*table);
        }
      });
    }
  }

  TEST_CASE("no two controls of a dialog overlap, whatever the size of the letters") {
    for (const int percent : {100, 150, 200}) {
      CAPTURE(percent);
      const DialogLetters letters(percent);
      test::ShownConsole desk;
      for_each_dialog(desk, [&](QWidget& window) {
        CAPTURE(window.objectName().toStdString());
        const auto controls = shown_controls(window);
        for (std::size_t i = 0; i < controls.size(); ++i) {
          for (std::size_t j = i + 1; j < controls.size(); ++j) {
            if (controls[i]->parentWidget() != controls[j]->parentWidget()) continue;
            CAPTURE(controls[i]->objectName().toStdString());
            CAPTURE(controls[j]->objectName().toStdString());
            CHECK_FALSE(controls[i]->geometry().intersects(controls[j]->geometry()));
          }
        }
      });
    }
  }

  TEST_CASE("a dialog fits on a small screen with letters of half again their size") {
    const DialogLetters letters(150);
    test::ShownConsole desk;
    for_each_dialog(desk, [&](QWidget& window) {
      CAPTURE(window.objectName().toStdString());
      CHECK(window.width() <= 1280);
      CHECK(window.height() <= 1000);
    });
  }
}

}  // namespace
}  // namespace lineweir

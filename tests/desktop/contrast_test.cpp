#include <doctest/doctest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include "forms/picture_names.h"
#include "full_dialogs.h"
#include "pixels.h"

// Contrast as it stands on the screen: the letters' pixels against those around them. Disabled text
// counts like any other, since it tells what would be there.
namespace lineweir {
namespace {

using test::best_contrast;
using test::shown_pixels;

bool stands_on_key(Look look) {
  return look == Look::KeyCaption || look == Look::DropCaption || look == Look::HoldCaption;
}

// The place of the letters, without edges and lines of light, which have contrasts of their own.
QRect letters_of(const ElementWidget& widget) {
  return stands_on_key(widget.element_look().look) ? widget.rect().adjusted(3, 4, -3, -6)
                                                   : widget.rect();
}

void check_main_form(test::ShownConsole& desk, int at_least) {
  int texts = 0;
  for (ElementWidget* widget : desk.canvas().element_widgets()) {
    if (!widget->isVisible() || widget->shown_caption().isEmpty()) continue;
    if (widget->size().isEmpty()) continue;
    ++texts;
    CAPTURE(widget->objectName().toStdString());
    CAPTURE(widget->shown_caption().toStdString());
    CHECK(best_contrast(shown_pixels(*widget, letters_of(*widget))) >= readable_contrast);
  }
  CHECK(texts >= at_least);
}

void fill_rows(test::ShownConsole& desk) {
  MainForm& form = desk.form();
  constexpr std::array strips = {pictures::DataRowWhite, pictures::DataRowGreen,
                                 pictures::DataRowRed};
  for (int line = 0; line < 10; ++line) {
    form.DataRow(line).picture = strips[static_cast<std::size_t>(line) % strips.size()];
    for (int column = 0; column < column_count; ++column) {
      form.column_labels(column)(line).caption = "Mixed 0123";
    }
  }
  form.Label1.caption = "Producer";
  form.Text1.text = "Studio> Who is next?";
  form.StatusText.caption = "News";
  form.CountDownTime.caption = "00:05:00";
  form.RealTime.caption = "10:00:00";
  form.picRealTimeClock.visible = true;
  form.picShowTimeClock.visible = true;
  desk.settle();
}

// Where in a control its letters stand.
QRect letters_of(const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    if (button->inherits("QPushButton")) return widget.rect().adjusted(4, 5, -4, -5);
    return widget.rect().adjusted(button->iconSize().width() + 8, 3, -4, -3);
  }
  return widget.rect().adjusted(3, 3, -3, -3);
}

QString text_of(const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
  if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) return edit->text();
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) return box->currentText();
  return {};
}

TEST_SUITE("contrast on the screen") {
  TEST_CASE("every text of the main form can be read, on both faces and in each mode") {
    for (const bool grey : {false, true}) {
      CAPTURE(grey);
      test::ShownConsole desk;
      choose_face(desk, grey);
      fill_rows(desk);
      check_main_form(desk, 80);
      desk.form().MitelPhone1.checked = true;
      desk.form().ScreenerMode.on_click();
      fill_rows(desk);
      check_main_form(desk, 80);
      desk.form().PassiveMode.on_click();
      fill_rows(desk);
      REQUIRE_FALSE(desk.form().NextButton.enabled);
      check_main_form(desk, 80);
    }
  }

  TEST_CASE("every text can be read while there is no link, and so can the words that say so") {
    for (const bool grey : {false, true}) {
      CAPTURE(grey);
      test::ShownConsole desk;
      choose_face(desk, grey);
      desk.form().Off.on_click();
      fill_rows(desk);
      REQUIRE(desk.widget(desk.form().Shape1).shown_caption() == QStringLiteral("No link"));
      check_main_form(desk, 81);
      desk.console.layout.set_line_count(20);
      desk.console.layout.RedefineScreen();
      desk.settle();
      ElementWidget& lamp = desk.widget(desk.form().Shape1);
      CHECK(best_contrast(shown_pixels(lamp)) >= readable_contrast);
    }
  }

  TEST_CASE("every text on a pressed key can be read, and on one under the mouse") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      MainForm& form = desk.form();
      for (const PanelButton& key : form.panel_buttons()) {
        if (&key.button == &form.OptionsButton) continue;
        CAPTURE(key.button.name());
        ElementWidget& caption = desk.widget(key.label);
        key.button.on_mouse_down(left_button, 0);
        desk.settle();
        CHECK(best_contrast(shown_pixels(caption, letters_of(caption))) >= readable_contrast);
        key.button.on_mouse_up(left_button, 0);
        desk.widget(key.button).setAttribute(Qt::WA_UnderMouse);
        desk.settle();
        CHECK(best_contrast(shown_pixels(caption, letters_of(caption))) >= readable_contrast);
      }
    }
  }

  TEST_CASE("twenty rows can be read too") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      desk.console.lines.LineCount = 20;
      choose_face(desk, grey);
      fill_rows(desk);
      check_main_form(desk, 90);
    }
  }

  TEST_CASE("the large digits can be read, in red as well") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      MainForm& form = desk.form();
      for (TextBox* box : {&form.RealTime2, &form.CountDownTime2, &form.StatusText2}) {
        for (const int color : {color_black, color_red}) {
          box->visible = true;
          box->text = "00:12:34";
          box->fore_color = color;
          desk.settle();
          ElementWidget& widget = desk.widget(*box);
          const QRect inside = widget.rect().adjusted(6, 4, -6, -4);
          CHECK(best_contrast(shown_pixels(widget, inside)) >= readable_contrast);
        }
      }
    }
  }

  TEST_CASE("a message can be read on every ground that its sender may choose") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    form.Text1.text = "MMMM 0123 MMMM 0123";
    for (const int ground : {color_white, color_red, color_green, color_black, 0x808080}) {
      for (const int letters : {color_black, color_red, color_white}) {
        form.Text1.back_color = ground;
        form.Text1.fore_color = letters;
        desk.settle();
        ElementWidget& box = desk.widget(form.Text1);
        CHECK(best_contrast(shown_pixels(box, QRect(4, 4, 200, 20))) >= readable_contrast);
      }
    }
  }

  TEST_CASE("every text of the dialogs can be read, on both faces") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      int texts = 0;
      test::for_each_dialog(desk, [&](QWidget& window) {
        CAPTURE(window.objectName().toStdString());
        for (QWidget* widget : test::shown_controls(window)) {
          if (text_of(*widget).isEmpty()) continue;
          ++texts;
          CAPTURE(widget->objectName().toStdString());
          CHECK(best_contrast(shown_pixels(*widget, letters_of(*widget))) >= readable_contrast);
        }
      });
      CHECK(texts > 120);
    }
  }

  TEST_CASE("the entries of the menus can be read") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      int entries = 0;
      for (QMenu* menu : desk.window().findChildren<QMenu*>()) {
        menu->ensurePolished();
        menu->resize(menu->sizeHint());
        const QImage picture = menu->grab().toImage();
        for (QAction* entry : menu->actions()) {
          if (entry->text().isEmpty() || !entry->isVisible()) continue;
          CAPTURE(entry->text().toStdString());
          const QRect place = menu->actionGeometry(entry).adjusted(4, 1, -4, -1);
          CHECK(best_contrast(picture.copy(place)) >= readable_contrast);
          ++entries;
        }
      }
      CHECK(entries > 40);
    }
  }
}

}  // namespace
}  // namespace lineweir

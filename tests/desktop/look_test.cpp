#include <doctest/doctest.h>

#include <QApplication>

#include "forms/picture_names.h"
#include "pixels.h"
#include "screen/button_faces.h"
#include "shown_console.h"

namespace lineweir {
namespace {

using test::differing_pixels;
using test::pixels_of;
using test::shown_pixels;

// Nothing but brightness, as an eye sees that can't tell colours.
QImage without_color(const QImage& image) {
  return image.convertToFormat(QImage::Format_Grayscale8);
}

QImage row_picture(test::ShownConsole& desk, int line, std::string_view strip) {
  desk.form().DataRow(line).picture = strip;
  desk.console.rows.DrawMark(line);
  desk.settle();
  return shown_pixels(desk.widget(desk.form().DataRow(line)));
}

TEST_SUITE("look") {
  TEST_CASE("the last column has the room up to the strip's end, whichever it is") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const auto end_of = [&](const Control& control) { return on_canvas(desk, control).right(); };
    CHECK(end_of(form.LineComments(3)) == end_of(form.DataRow(3)));
    CHECK(end_of(form.LineCity(3)) < end_of(form.DataRow(3)));
    desk.console.display.set_width(column_of(CallerField::Comments), 0);
    desk.console.display.RefreshColumnOrder();
    desk.console.layout.RedefineScreen();
    desk.settle();
    CHECK(end_of(form.LineCity(3)) == end_of(form.DataRow(3)));
  }

  TEST_CASE("what stands in columns beyond the strip's end is cut there") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    desk.console.display.set_width(column_of(CallerField::CallerName), 9000);
    desk.console.display.RefreshColumnOrder();
    form.LineName(0).caption = std::string(200, 'x');
    desk.settle();
    const int end = on_canvas(desk, form.DataRow(0)).right();
    REQUIRE(form.LineName(0).left + form.LineName(0).width >
            form.DataRow(0).left + form.DataRow(0).width);
    CHECK(on_canvas(desk, form.LineName(0)).right() == end);
    CHECK(on_canvas(desk, form.CaptionLabel(column_of(CallerField::CallerName))).right() == end);
    CHECK_FALSE(desk.widget(form.LineName(0)).caption_fits());
    CHECK(desk.widget(form.LineComments(0)).width() == 0);
    CHECK(desk.widget(form.CaptionLabel(column_of(CallerField::Comments))).width() == 0);
    CHECK(desk.widget(form.MyMark(column_of(CallerField::CallerName))).width() == 0);
  }

  TEST_CASE(
      "digits of the clocks stand whole and icons on their keys, however the form is stretched") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    form.picRealTimeClock.visible = true;
    form.picShowTimeClock.visible = true;
    desk.console.rows.HybridPictureSet(2, 4, 4);
    for (const auto& [width, height] : {std::pair{9420, 7255}, {9420, 20000}, {24000, 7255}}) {
      form.width = width;
      form.height = height;
      desk.console.layout.RedefineScreen();
      form.RealTime.caption = "10:08:38";
      form.CountDownTime.caption = "00:08:38";
      desk.settle();
      CHECK(desk.widget(form.RealTime).caption_fits());
      CHECK(desk.widget(form.CountDownTime).caption_fits());
      // The icon's colour doesn't reach the key's edge.
      const QImage key = shown_pixels(desk.widget(form.CIcon1(2)));
      CHECK(pixels_of(key, signal_blue) > 10);
      CHECK(pixels_of(key.copy(0, 0, 3, key.height()), signal_blue) == 0);
      CHECK(pixels_of(key.copy(key.width() - 4, 0, 4, key.height()), signal_blue) == 0);
    }
  }

  TEST_CASE("at the design's size headings, line numbers, states and times stand whole") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    int captions = 0;
    for (int rows = 1; rows <= 20; ++rows) {
      CAPTURE(rows);
      desk.console.layout.set_line_count(rows);
      desk.console.layout.RedefineScreen();
      for (int line = 0; line < rows; ++line) {
        form.LineStatus(line).caption = line % 2 == 0 ? "Set Busy" : "On Air";
        form.LineTime(line).caption = "9:59:59";
      }
      form.Label1.caption = "Producer";
      form.RealTime.caption = "10:08:38";
      form.CountDownTime.caption = "00:08:38";
      desk.settle();
      for (const ElementWidget* widget : desk.canvas().element_widgets()) {
        if (!widget->isVisible() || widget->shown_caption().isEmpty()) continue;
        ++captions;
        CAPTURE(widget->objectName().toStdString());
        CHECK(widget->caption_fits());
        CHECK(widget->height() >= 10);
      }
    }
    CHECK(captions > 900);
  }

  TEST_CASE("the strips differ in shape, not only in colour") {
    test::ShownConsole desk;
    const QImage white = row_picture(desk, 3, pictures::DataRowWhite);
    const QImage green = row_picture(desk, 3, pictures::DataRowGreen);
    const QImage red = row_picture(desk, 3, pictures::DataRowRed);
    const auto darkness = [](const QImage& strip, int x) {
      return 255 - qGray(without_color(strip).pixel(x, strip.height() / 2));
    };
    // The next caller's has a pointer at its left end, which is dark beside the strip itself.
    CHECK(darkness(green, 2) > darkness(green, 8) + 60);
    CHECK(std::abs(darkness(white, 2) - darkness(white, 8)) < 10);
    // The one on air has a bright frame.
    const auto bright = [](const QImage& strip, int y) {
      return qGray(strip.pixel(strip.width() - 40, y));
    };
    CHECK(bright(red, 1) > bright(red, 10) + 100);
    CHECK(bright(red, red.height() - 3) > bright(red, 10) + 100);
    CHECK(std::abs(bright(white, 1) - bright(white, 10)) < 30);
  }

  TEST_CASE("the mouse over a key is seen, over a disabled one not") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      ElementWidget& dial = desk.widget(desk.form().Dial);
      const auto hover = [&](bool over) {
        dial.setAttribute(Qt::WA_UnderMouse, over);
        dial.update();
        desk.settle();
        return shown_pixels(dial);
      };
      const QImage resting = hover(false);
      CHECK(differing_pixels(resting, hover(true)) > resting.width() * resting.height() / 2);
      hover(false);
      desk.form().Dial.enabled = false;
      desk.form().Dial.picture = pictures::CenterDisabled;
      desk.settle();
      const QImage disabled = hover(false);
      CHECK(differing_pixels(disabled, hover(true)) == 0);
    }
  }

  TEST_CASE("up, down, disabled and focused look different on every key") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      MainForm& form = desk.form();
      for (Picture* key : {&form.Drop1, &form.Hold1, &form.NextButton, &form.NextToConfButton,
                           &form.Dial, &form.OnHybrid1(2), &form.OnHybrid2(2)}) {
        CAPTURE(key->name());
        ElementWidget& widget = desk.widget(*key);
        const QImage up = shown_pixels(widget);
        key->on_mouse_down(left_button, 0);
        desk.settle();
        const int pixels = up.width() * up.height();
        CHECK(differing_pixels(up, shown_pixels(widget)) > pixels / 2);
        key->on_mouse_up(left_button, 0);
        desk.settle();
        CHECK(differing_pixels(up, shown_pixels(widget)) == 0);
      }
      desk.console.panel.disable_all();
      desk.settle();
      for (Picture* key :
           {&form.NextToConfButton, &form.NextButton, &form.Dial, &form.OnHybrid1(2)}) {
        CAPTURE(key->name());
        // Its face is flat: as dark above as below, where a key that is up is lit from above.
        const QImage disabled = shown_pixels(desk.widget(*key));
        CHECK(disabled.pixel(4, 5) == disabled.pixel(4, disabled.height() - 6));
        key->picture = faces_holding(key->picture.get())->up;
        desk.settle();
        const QImage up = shown_pixels(desk.widget(*key));
        CHECK(up.pixel(4, 5) != up.pixel(4, up.height() - 6));
      }
    }
  }

  TEST_CASE("whatever has the focus shows a ring, however it came by it") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      QApplication::setActiveWindow(&desk.window());
      const QRgb ring = (grey ? grey_theme : metal_theme).focus_ring;
      desk.canvas().setFocus();
      desk.settle();
      int focusable = 0;
      for (ElementWidget* widget : desk.canvas().element_widgets()) {
        if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
        if (!widget->isEnabled()) continue;
        ++focusable;
        CAPTURE(widget->objectName().toStdString());
        CHECK(pixels_of(shown_pixels(*widget), ring) == 0);
        for (const auto reason : {Qt::TabFocusReason, Qt::MouseFocusReason}) {
          widget->setFocus(reason);
          desk.settle();
          const QImage focused = shown_pixels(*widget);
          CHECK(pixels_of(focused, ring) > focused.width() + focused.height());
          desk.canvas().setFocus();
          desk.settle();
        }
      }
      CHECK(focusable >= 28);
    }
  }

  TEST_CASE("an urgent message is red, framed, and white on it") {
    for (const bool grey : {false, true}) {
      test::ShownConsole desk;
      choose_face(desk, grey);
      const Theme& theme = grey ? grey_theme : metal_theme;
      desk.form().Text1.text = "Breaking news in 30 seconds";
      desk.form().Text1.back_color = color_red;
      desk.settle();
      const QImage box = shown_pixels(desk.widget(desk.form().Text1));
      CHECK(pixels_of(box, theme.strip(RowState::OnAir).surface.shading.upper) >
            box.width() * box.height() / 2);
      CHECK(pixels_of(box, theme.strip(RowState::OnAir).frame_color) > box.width() + box.height());
      CHECK(pixels_of(box, qRgb(255, 255, 255)) > 5);
    }
  }

  TEST_CASE("a box for typing shows the focus too") {
    test::ShownConsole desk;
    QApplication::setActiveWindow(&desk.window());
    int key = 117;
    desk.form().on_key_down(key, 0);
    desk.settle();
    const ElementWidget& box = desk.widget(desk.form().Text2);
    REQUIRE(box.isVisible());
    REQUIRE(box.isAncestorOf(QApplication::focusWidget()));
    const QImage focused = shown_pixels(desk.widget(desk.form().Text2));
    CHECK(pixels_of(focused, metal_theme.focus_ring) > focused.width() + focused.height());

    ElementWidget& messages = desk.widget(desk.form().Text1);
    messages.setFocus(Qt::TabFocusReason);
    desk.settle();
    CHECK(pixels_of(shown_pixels(messages), metal_theme.focus_ring) >
          messages.width() + messages.height());
  }
}

}  // namespace
}  // namespace lineweir

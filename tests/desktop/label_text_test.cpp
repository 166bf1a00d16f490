#include <doctest/doctest.h>

#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextDocument>
#include <QToolTip>
#include <cmath>

#include "desktop/text_painter.h"
#include "pixels.h"
#include "shown_console.h"

namespace lineweir {
namespace {

TextLine line_of(const QString& text, int pixels = 11) {
  TextLine line;
  line.text = text;
  line.font = QFont(QStringLiteral("DejaVu Sans"));
  line.font.setPixelSize(pixels);
  return line;
}

QImage painted(const TextLine& line, int width) {
  QImage image(width, 20, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  paint_text(painter, image.rect(), line);
  return image;
}

// The first column from the right that has ink in it.
int last_inked_column(const QImage& image) {
  for (int x = image.width() - 1; x >= 0; --x) {
    for (int y = 0; y < image.height(); ++y) {
      if (image.pixel(x, y) != qRgb(255, 255, 255)) return x;
    }
  }
  return -1;
}

void ask_for_tool_tip(QWidget& widget) {
  const QPoint middle = widget.rect().center();
  QHelpEvent event(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
  QCoreApplication::sendEvent(&widget, &event);
}

TEST_SUITE("texts") {
  TEST_CASE("what people write in a row is shown to the letter") {
    test::ShownConsole desk;
    Label& name = desk.form().LineName(0);
    name.caption = "Smith & Co, A&B";
    desk.settle();
    CHECK(desk.widget(name).shown_caption() == "Smith & Co, A&B");
  }

  TEST_CASE("a text that fits stands whole and has no tool tip") {
    test::ShownConsole desk;
    desk.form().LineName(0).caption = "Dev Patel";
    desk.settle();
    const ElementWidget& name = desk.widget(desk.form().LineName(0));
    CHECK(name.shown_caption() == "Dev Patel");
    CHECK(name.caption_fits());
  }

  TEST_CASE("a text too long for its column ends in an ellipsis and shows whole in a tool tip") {
    test::ShownConsole desk;
    desk.form().LineName(0).caption = "Bartholomew Featherstonehaugh-Cholmondeley";
    desk.settle();
    ElementWidget& name = desk.widget(desk.form().LineName(0));
    CHECK_FALSE(name.caption_fits());
    ask_for_tool_tip(name);
    CHECK(QToolTip::text() == "Bartholomew Featherstonehaugh-Cholmondeley");
    QToolTip::hideText();
  }

  TEST_CASE("what looks like markup stands as it was written, in a tool tip and in a message") {
    test::ShownConsole desk;
    desk.form().LineName(0).caption = "<b>Bartholomew</b> Featherstonehaugh-Cholmondeley";
    desk.settle();
    ask_for_tool_tip(desk.widget(desk.form().LineName(0)));
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    CHECK(shown.toPlainText() == "<b>Bartholomew</b> Featherstonehaugh-Cholmondeley");
    QToolTip::hideText();

    desk.console.messages.ShowMessage("<h1>The studio closes</h1>");
    desk.settle();
    const QWidget* box = desk.desktop.dialog(desk.console.MyMsgbox)->window();
    CHECK(box->findChild<QLabel*>("Label1")->textFormat() == Qt::PlainText);
  }

  TEST_CASE("times, states and line numbers stay whole in a font too large for their columns") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    for (const int size : {10, 12, 14, 18}) {
      CAPTURE(size);
      desk.console.fonts.FontChange({"DejaVu Serif", size, true, false});
      form.LineTime(0).caption = "9:59:59";
      form.LineStatus(0).caption = "Set Busy";
      desk.settle();
      for (const Label* label : {&form.LineTime(0), &form.LineStatus(0), &form.LineNumb(9),
                                 &form.Label9, &form.Label10}) {
        CAPTURE(label->name());
        CHECK(desk.widget(*label).caption_fits());
      }
    }
  }

  TEST_CASE("the message display shows its last line in any font") {
    test::ShownConsole desk;
    desk.form().Text1.text = "one\r\ntwo\r\nthree\r\nfour\r\nfive\r\nsix";
    desk.settle();
    for (const int size : {8, 14, 24}) {
      desk.console.fonts.FontChange({"DejaVu Sans", size, true, false});
      desk.settle();
      const auto* edit = desk.widget(desk.form().Text1).findChild<QPlainTextEdit*>();
      REQUIRE(edit != nullptr);
      CHECK(edit->verticalScrollBar()->value() == edit->verticalScrollBar()->maximum());
      if (size > 8) CHECK(edit->verticalScrollBar()->maximum() > 0);
    }
  }

  TEST_CASE("the message display shows a line of a message in the largest letters, in any layout") {
    for (const int rows : {10, 18, 20}) {
      CAPTURE(rows);
      test::ShownConsole desk;
      desk.console.layout.set_line_count(rows);
      desk.console.layout.RedefineScreen();
      desk.console.fonts.FontChange({"DejaVu Sans", 24, true, false});
      desk.form().Text1.text = "one\r\ntwo\r\nthree";
      desk.settle();
      const auto* edit = desk.widget(desk.form().Text1).findChild<QPlainTextEdit*>();
      REQUIRE(edit != nullptr);
      CHECK(QFontMetrics(edit->font()).lineSpacing() <= edit->viewport()->height());
      const QImage shown = test::shown_pixels(desk.widget(desk.form().Text1));
      CHECK(test::pixels_like(shown, qRgb(0, 0, 0)) > 60);
    }
  }

  TEST_CASE("nothing is ever drawn beyond the column") {
    for (int length = 1; length < 40; ++length) {
      const TextLine line = line_of(QString(length, u'M'));
      CHECK(last_inked_column(painted(line, 90)) < 90);
      const QImage wide = painted(line, 400);
      CHECK(last_inked_column(wide) < 399);
    }
  }

  TEST_CASE("a text that is too long loses its end, and no letter of it is drawn narrower") {
    const TextLine line = line_of("Margaret");
    const int natural = static_cast<int>(std::ceil(text_width(line)));
    CHECK(text_fits(line, natural));
    CHECK_FALSE(text_fits(line, natural - 1));
    const QImage whole = painted(line, natural);
    const QImage cut = painted(line, natural - 2);
    const int first_letters = natural / 3;
    CHECK(test::differing_pixels(whole.copy(0, 0, first_letters, whole.height()),
                                 cut.copy(0, 0, first_letters, cut.height())) == 0);
    CHECK(test::differing_pixels(whole.copy(0, 0, natural - 2, whole.height()),
                                 cut.copy(0, 0, natural - 2, cut.height())) > 0);
  }

  TEST_CASE("a line is broken behind the last word that fits") {
    TextLine line = line_of("was on the boat");
    const auto width_of = [&](const QString& text) {
      return static_cast<int>(std::ceil(text_width(line_of(text))));
    };
    CHECK(last_word_that_fits(line, 1000) == 15);
    CHECK(last_word_that_fits(line, width_of("was on the bo")) == 10);
    CHECK(last_word_that_fits(line, width_of("was on")) == 6);
    CHECK(last_word_that_fits(line, width_of("wa")) == 2);
    CHECK(last_word_that_fits(line, 0) == 0);
  }

  TEST_CASE("an access key is the letter behind the first and-sign") {
    CHECK(caption_of("&DROP").text == "DROP");
    CHECK(caption_of("&DROP").access_key == 0);
    CHECK(caption_of("D&IAL").text == "DIAL");
    CHECK(caption_of("D&IAL").access_key == 1);
    CHECK(caption_of("Rock && Roll").text == "Rock & Roll");
    CHECK(caption_of("Rock && Roll").access_key == -1);
    CHECK(caption_of("Talk &").text == "Talk &");
    CHECK(caption_of("").access_key == -1);
  }

  TEST_CASE("running digits take the same room in every font") {
    for (const char* family : {"DejaVu Sans", "DejaVu Serif"}) {
      TextLine narrow = line_of("1:11:11");
      TextLine wide = line_of("0:08:48");
      for (TextLine* line : {&narrow, &wide}) {
        line->font.setFamily(QString::fromLatin1(family));
        line->even_digits = true;
      }
      CHECK(text_width(narrow) == doctest::Approx(text_width(wide)));
    }
  }

  TEST_CASE("characters beyond the first 128 are those of the core's set") {
    test::ShownConsole desk;
    desk.form().LineCity(0).caption = "Malm\xF6 \x96 \x80 5";
    desk.settle();
    CHECK(desk.widget(desk.form().LineCity(0)).shown_caption() == QStringLiteral(u"Malmö – € 5"));
  }
}

}  // namespace
}  // namespace lineweir

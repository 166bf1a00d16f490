#include <doctest/doctest.h>

#include "desktop/twips.h"
#include "forms/picture_names.h"
#include "shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

TEST_SUITE("windows") {
  TEST_CASE("the title is the form's caption") {
    test::ShownConsole desk;
    CHECK(desk.window().windowTitle().startsWith("Lineweir - Talent"));
    desk.form().caption = "Lineweir - Producer";
    desk.settle();
    CHECK(desk.window().windowTitle() == "Lineweir - Producer");
  }

  TEST_CASE("the user's new size reaches the form in twips and runs its event") {
    test::ShownConsole desk;
    int resizes = 0;
    listen(desk.form().on_resize, [&] { ++resizes; });
    const int bar = desk.canvas().y();
    desk.window().resize(800, 600 + bar);
    REQUIRE(test::wait_for([&] { return resizes > 0; }));
    CHECK(desk.form().width == twips_of(800));
    CHECK(desk.form().height == twips_of(600) + 285);
  }

  TEST_CASE("a size in twips survives being shown in pixels") {
    test::ShownConsole desk;
    desk.form().width = 9427;
    desk.form().height = 7261;
    desk.settle();
    CHECK(desk.canvas().width() == pixel_edge(9427));
    CHECK(desk.form().width == 9427);
    CHECK(desk.form().height == 7261);
  }

  TEST_CASE("showing and hiding a form shows and hides its window") {
    test::ShownConsole desk;
    MessageBoxForm& box = desk.console.MyMsgbox;
    CHECK(desk.desktop.dialog(box)->window() == nullptr);
    desk.console.messages.ShowMessage("No server");
    desk.settle();
    REQUIRE(desk.desktop.dialog(box)->window() != nullptr);
    CHECK(desk.desktop.dialog(box)->window()->isVisible());
    CHECK_FALSE(desk.desktop.dialog(box)->window()->isModal());
    box.unload();
    desk.settle();
    CHECK_FALSE(desk.desktop.dialog(box)->window()->isVisible());
  }

  TEST_CASE("a form that is shown and hidden within a frame never opens a window") {
    test::ShownConsole desk;
    desk.console.Standby.show();
    desk.console.Standby.hide();
    desk.settle();
    CHECK(desk.desktop.dialog(desk.console.Standby)->window() == nullptr);
  }

  TEST_CASE("a modal form is modal to all windows") {
    test::ShownConsole desk;
    desk.console.Form3.show();
    desk.settle();
    CHECK(desk.desktop.dialog(desk.console.Form3)->window()->windowModality() ==
          Qt::ApplicationModal);
    desk.console.Form3.unload();
    desk.settle();
  }

  TEST_CASE("a message box stands where its form does") {
    test::ShownConsole desk;
    desk.form().left = 3000;
    desk.form().top = 1500;
    desk.settle();
    desk.console.messages.ShowMessage("No server");
    desk.settle();
    CHECK(desk.desktop.dialog(desk.console.MyMsgbox)->window()->pos() ==
          QPoint(pixel_edge(5000), pixel_edge(2500)));
  }

  TEST_CASE("moving the window moves the form") {
    test::ShownConsole desk;
    desk.window().move(40, 30);
    REQUIRE(test::wait_for([&] { return desk.form().left == twips_of(40); }));
    CHECK(desk.form().top == twips_of(30));
  }

  TEST_CASE("the close button closes the form, which may refuse") {
    test::ShownConsole desk;
    int closes = 0;
    listen(desk.form().on_close, [&] { ++closes; });
    desk.window().close();
    desk.settle();
    CHECK(closes == 1);
    CHECK(desk.window().isVisible());
    desk.form().on_close.forget_handler();
    desk.window().close();
    desk.settle();
    CHECK_FALSE(desk.form().loaded());
    CHECK_FALSE(desk.window().isVisible());
    CHECK(desk.platform.ended);
  }

  TEST_CASE("the about window closes on a click on it or on one of its texts") {
    test::ShownConsole desk;
    for (const char* name : {"", "Label1", "Label3"}) {
      desk.form().AboutLineweir.on_click();
      desk.settle();
      QWidget* window = desk.desktop.dialog(desk.console.AboutBox)->window();
      REQUIRE(window->isVisible());
      QWidget* target =
          *name == 0 ? window : window->findChild<QWidget*>(QString::fromLatin1(name));
      REQUIRE(target != nullptr);
      QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(3, 3));
      desk.settle();
      CHECK_FALSE(window->isVisible());
    }
  }

  TEST_CASE("the hourglass is the window's pointer while the form has it") {
    test::ShownConsole desk;
    desk.form().mouse_pointer = pointer_hourglass;
    desk.settle();
    CHECK(desk.window().cursor().shape() == Qt::WaitCursor);
    desk.form().mouse_pointer = pointer_default;
    desk.settle();
    CHECK(desk.window().cursor().shape() == Qt::ArrowCursor);
  }

  TEST_CASE("the face is the chosen one at once, before the next rebuild") {
    test::ShownConsole desk;
    CHECK(&desk.canvas().theme() == &metal_theme);
    desk.form().GreyScreenOption.on_click();
    desk.settle();
    CHECK(&desk.canvas().theme() == &grey_theme);
    CHECK(desk.form().ScreenTopImage.picture == pictures::BlackScreenTop);
    desk.form().GreyScreenOption.on_click();
    desk.settle();
    CHECK(&desk.canvas().theme() == &metal_theme);
  }

  TEST_CASE("texts grow with the form as the user wants them to, and half of the way otherwise") {
    test::ShownConsole desk;
    desk.form().width = 9420 * 2;
    desk.form().height = 7255 * 2;
    desk.console.layout.RedefineScreen();
    desk.form().TextGrowToggle.checked = false;
    desk.settle();
    CHECK(desk.canvas().zoom() > 1.9);
    CHECK(desk.canvas().text_zoom() == doctest::Approx((1 + desk.canvas().zoom()) / 2));
    desk.form().TextGrowToggle.checked = true;
    desk.settle();
    CHECK(desk.canvas().text_zoom() > 1.9);
  }
}

}  // namespace
}  // namespace lineweir

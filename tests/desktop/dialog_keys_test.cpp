#include <doctest/doctest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <set>

#include "desktop/telephone_key.h"
#include "full_dialogs.h"
#include "pixels.h"
#include "support/listen.h"

namespace lineweir {
namespace {

TEST_SUITE("keys in dialogs") {
  TEST_CASE("every button has an access key, and no two things in a dialog share one") {
    test::ShownConsole desk;
    int keys = 0;
    test::for_each_dialog(desk, [&](QWidget& window) {
      CAPTURE(window.objectName().toStdString());
      std::set<QString> taken;
      for (QWidget* widget : test::shown_controls(window)) {
        QString text;
        if (const auto* button = qobject_cast<QAbstractButton*>(widget)) text = button->text();
        if (const auto* group = qobject_cast<QGroupBox*>(widget)) text = group->title();
        if (const auto* label = qobject_cast<QLabel*>(widget); label != nullptr && label->buddy()) {
          text = label->text();
        }
        const QString key = QKeySequence::mnemonic(text).toString();
        CAPTURE(widget->objectName().toStdString());
        CAPTURE(text.toStdString());
        // A telephone's keys are pressed by typing what stands on them.
        const bool typed = dynamic_cast<TelephoneKey*>(widget) != nullptr && text.size() == 1;
        if (widget->inherits("QPushButton") && !typed) CHECK_FALSE(key.isEmpty());
        if (!key.isEmpty()) CHECK(taken.insert(key).second);
        if (!key.isEmpty()) ++keys;
      }
    });
    CHECK(keys > 50);
  }

  TEST_CASE("Shift and Tab reach everything that can have the focus, and show where it is") {
    bool grey = false;
    SUBCASE("on the metal face") {}
    SUBCASE("on the grey face") { grey = true; }
    test::ShownConsole desk;
    desk.form().GreyScreenOption.checked = grey;
    desk.console.layout.RedefineScreen();
    desk.settle();
    const QRgb ring = (grey ? grey_theme : metal_theme).focus_ring;
    std::size_t stops_seen = 0;
    test::for_each_dialog(desk, [&](QWidget& window) {
      CAPTURE(window.objectName().toStdString());
      // While a message is written everything else is out of the order of Tab.
      if (window.objectName() == "FlashMessA") return;
      desk.look();
      QApplication::setActiveWindow(&window);
      desk.settle();
      std::set<QWidget*> wanted;
      for (QWidget* widget : test::shown_controls(window)) {
        const bool stops = (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (stops && widget->isEnabled() && widget->focusProxy() == nullptr) wanted.insert(widget);
      }
      std::set<QWidget*> reached;
      const auto steps = 2 * wanted.size() + 4;
      for (std::size_t step = 0; step < steps; ++step) {
        QWidget* focus = window.focusWidget();
        if (focus != nullptr) {
          CAPTURE(focus->objectName().toStdString());
          reached.insert(focus);
          QWidget* shown = focus;
          // The line of a box that takes typing has the ring of the box.
          if (test::is_part_of_control(*shown)) shown = shown->parentWidget();
          reached.insert(shown);
          CHECK(test::pixels_of(test::shown_pixels(*shown), ring) > 20);
        }
        // A radio button's neighbours are reached by the arrow keys.
        QTest::keyClick(focus == nullptr ? &window : focus, Qt::Key_Backtab);
        desk.settle();
      }
      for (QWidget* widget : wanted) {
        if (widget->inherits("QRadioButton")) continue;
        CAPTURE(widget->objectName().toStdString());
        CHECK(reached.contains(widget));
      }
      stops_seen += wanted.size();
    });
    CHECK(stops_seen > 100);
  }

  TEST_CASE("Escape leaves every dialog that can be left without a choice") {
    test::ShownConsole desk;
    for (Form* form : std::initializer_list<Form*>{
             &desk.console.AboutBox, &desk.console.MyMsgbox, &desk.console.DebugForm,
             &desk.console.DisplayOptionForm, &desk.console.Form2, &desk.console.Form3,
             &desk.console.Form4, &desk.console.LogDataForm, &desk.console.DatabaseViewer,
             &desk.console.ImportPreview, &desk.console.LoginForm, &desk.console.FlashMessA,
             &desk.console.DialForm}) {
      CAPTURE(form->name());
      form->on_load.forget_handler();
      form->show();
      desk.settle();
      QWidget& window = *desk.desktop.dialog(*form)->window();
      desk.look();
      QApplication::setActiveWindow(&window);
      desk.settle();
      QTest::keyClick(window.focusWidget() == nullptr ? &window : window.focusWidget(),
                      Qt::Key_Escape);
      desk.settle();
      CHECK_FALSE(window.isVisible());
    }
  }

  TEST_CASE("Escape in the caller's data changes no row and withdraws an offer first") {
    test::ShownConsole desk;
    CallerDataForm& form = desk.console.Form4;
    desk.console.caller_data.show_for_line(2);
    desk.settle();
    QWidget& window = *desk.desktop.dialog(form)->window();
    QApplication::setActiveWindow(&window);
    auto* name = window.findChild<QLineEdit*>("TheText(1)");
    QTest::keyClicks(name, "Ann");
    form.MemoryLabel.visible = true;
    desk.settle();
    QTest::keyClick(name, Qt::Key_Escape);
    desk.settle();
    CHECK_FALSE(form.MemoryLabel.visible);
    CHECK(window.isVisible());
    QTest::keyClick(name, Qt::Key_Escape);
    desk.settle();
    CHECK_FALSE(window.isVisible());
    CHECK(desk.form().LineName(2).caption == "");
  }

  TEST_CASE("Tab leads out of a box that takes only some letters") {
    test::ShownConsole desk;
    CallerDataForm& form = desk.console.Form4;
    form.show();
    desk.settle();
    QWidget& window = *desk.desktop.dialog(form)->window();
    QApplication::setActiveWindow(&window);
    auto* gender = window.findChild<QLineEdit*>("TheText(8)");
    gender->setFocus();
    desk.settle();
    QTest::keyClicks(gender, "xf");
    CHECK(form.TheText(8).text.get() == "Female");
    QTest::keyClick(gender, Qt::Key_Tab);
    CHECK(window.focusWidget()->objectName() == "TheText(9)");
  }

  TEST_CASE("Enter in a field presses the default button, which is told by its edge") {
    test::ShownConsole desk;
    UserLoginForm& form = desk.console.LoginForm;
    form.show();
    desk.settle();
    int clicks = 0;
    listen(form.ConnectButton.on_click, [&] { ++clicks; });
    QWidget& window = *desk.desktop.dialog(form)->window();
    QApplication::setActiveWindow(&window);
    auto* password = window.findChild<QLineEdit*>("PasswordTextBox");
    auto* button = window.findChild<QWidget*>("ConnectButton");
    password->setFocus();
    desk.settle();
    CHECK(test::pixels_of(test::shown_pixels(*button), metal_theme.highlight) > 20);
    QTest::keyClick(password, Qt::Key_Return);
    CHECK(clicks == 1);
  }
}

}  // namespace
}  // namespace lineweir

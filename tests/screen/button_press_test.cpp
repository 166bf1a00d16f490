#include "screen/button_press.h"

#include <doctest/doctest.h>

#include <vector>

#include "screen/button_faces.h"
#include "support/listen.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

void press(Control& part, int button = left_button) { part.on_mouse_down(button, 0); }
void release(Control& part, int button = left_button) { part.on_mouse_up(button, 0); }

struct Pressed {
  Picture& button;
  std::vector<Control*> parts;
  std::vector<const ButtonFaces*> families;
};

std::vector<Pressed> panel_buttons(MainForm& form) {
  const std::vector<const ButtonFaces*> center = {&center_faces, &right_faces};
  const std::vector<const ButtonFaces*> drop = {&drop_large_faces, &drop_small_faces};
  return {
      {form.NextButton, {&form.NextButton, &form.NextButtonImage, &form.CenterLabel1}, center},
      {form.NextToConfButton,
       {&form.NextToConfButton, &form.NextToConfButtonImage, &form.CenterLabel2},
       center},
      {form.Dial, {&form.Dial, &form.DialImage, &form.CenterLabel3}, center},
      {form.Drop1, {&form.Drop1, &form.Drop1Image, &form.Drop1Label}, drop},
      {form.Hold1, {&form.Hold1, &form.Hold1Image, &form.Hold1Label}, drop},
      {form.Drop2, {&form.Drop2, &form.Drop2Image, &form.Drop2Label}, drop},
      {form.Hold2, {&form.Hold2, &form.Hold2Image, &form.Hold2Label}, drop},
      {form.OptionsButton,
       {&form.OptionsButton, &form.OptionsButtonImage, &form.SetupLabel},
       {&setup_faces}},
  };
}

TEST_SUITE("screen/button_press") {
  TEST_CASE("a press on a button, its image or its label goes down and comes up") {
    ScriptedConsole desk;
    for (const Pressed& pressed : panel_buttons(desk.console.Lineweir)) {
      for (Control* part : pressed.parts) {
        for (const ButtonFaces* faces : pressed.families) {
          CAPTURE(part->name());
          pressed.button.picture = faces->up;
          press(*part);
          CHECK(pressed.button.picture == faces->down);
          release(*part);
          CHECK(pressed.button.picture == faces->up);
        }
      }
    }
  }

  TEST_CASE("a click on an image or a label is a click on its button") {
    ScriptedConsole desk;
    for (const Pressed& pressed : panel_buttons(desk.console.Lineweir)) {
      int clicks = 0;
      listen(pressed.button.on_click, [&] { ++clicks; });
      pressed.button.enabled = true;
      pressed.parts[1]->on_click();
      pressed.parts[2]->on_click();
      CHECK(clicks == 2);
      pressed.button.enabled = false;
      pressed.parts[1]->on_click();
      pressed.parts[2]->on_click();
      CHECK(clicks == 2);
    }
  }

  TEST_CASE("a disabled button doesn't react, whatever picture it shows") {
    ScriptedConsole desk;
    for (const Pressed& pressed : panel_buttons(desk.console.Lineweir)) {
      for (const ButtonFaces* faces : pressed.families) {
        for (const auto& picture : {faces->up, faces->down, faces->disabled}) {
          pressed.button.enabled = false;
          pressed.button.picture = picture;
          press(*pressed.parts[1]);
          CHECK(pressed.button.picture == picture);
          release(*pressed.parts[1]);
          CHECK(pressed.button.picture == picture);
        }
      }
    }
  }

  TEST_CASE("a button that shows its disabled face doesn't react, though it is enabled") {
    ScriptedConsole desk;
    Picture& button = desk.console.Lineweir.Hold2;
    button.picture = pictures::DropSmallDisabled;
    press(button);
    release(button);
    CHECK(button.picture == pictures::DropSmallDisabled);
  }

  TEST_CASE("a button disabled while it is down keeps the face that it was given") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    press(form.Drop1);
    form.PassiveMode.on_click();
    release(form.Drop1);
    CHECK(form.Drop1.picture == pictures::DropSmallDisabled);
  }

  TEST_CASE("only the left mouse button presses") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    press(form.Drop1, right_button);
    CHECK(form.Drop1.picture == pictures::DropSmallUp);
    press(form.Drop1);
    release(form.Drop1, right_button);
    CHECK(form.Drop1.picture == pictures::DropSmallDown);
  }

  TEST_CASE("a release over the setup button leaves the face that says that the menus are shown") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    REQUIRE(form.OptionsButton.picture == pictures::SetupDown);
    press(form.OptionsButton);
    release(form.OptionsButton);
    CHECK(form.OptionsButton.picture == pictures::SetupDown);
  }

  TEST_CASE("a row button and its icon go down together") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    for (const int line : {0, 4, 9}) {
      for (const auto& [buttons, icons] :
           {std::pair{&form.OnHybrid1, &form.CIcon1}, {&form.OnHybrid2, &form.CIcon2}}) {
        Picture& button = (*buttons)(line);
        Picture& icon = (*icons)(line);
        for (Control* part : {static_cast<Control*>(&button), static_cast<Control*>(&icon)}) {
          const int left = icon.left;
          const int top = icon.top;
          press(*part);
          CHECK(button.picture == pictures::HybridNormDown);
          CHECK(icon.left == left + 7);
          CHECK(icon.top == top + 17);
          release(*part);
          CHECK(button.picture == pictures::HybridNormUp);
          CHECK(icon.left == left);
          CHECK(icon.top == top);
        }
        int clicks = 0;
        listen(button.on_click, [&] { ++clicks; });
        icon.on_click();
        CHECK(clicks == 1);
        button.enabled = false;
        press(icon);
        CHECK(button.picture == pictures::HybridNormUp);
        icon.on_click();
        CHECK(clicks == 1);
      }
    }
  }
}

}  // namespace
}  // namespace lineweir::test

#include "core/message_box.h"

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr int box_width = 4755;
constexpr int box_height = 2100;
constexpr int button_width = 1215;
constexpr int button_height = 375;
constexpr int button_top = 1580;
constexpr int ok_left_alone = 1770;
constexpr int reconnect_left = 780;
constexpr int offset_left = 2000;
constexpr int offset_top = 1000;

}  // namespace

MessageBoxForm::MessageBoxForm() : Form("MyMsgbox") {
  caption = "Lineweir";
  reachable_beside_modal = true;
  width = box_width;
  height = box_height;
  Label1.move(150, 150, box_width - 300, button_top - 300);
  Label1.alignment = align_center;
  OKButton.move(ok_left_alone, button_top, button_width, button_height);
  ReconnectButton.move(reconnect_left, button_top, button_width, button_height);
  reset();
}

void MessageBoxForm::reset() {
  OKButton.caption = "&Ok";
  OKButton.left = ok_left_alone;
  ReconnectButton.visible = false;
  mouse_pointer = pointer_default;
}

Messages::Messages(Console& console) : console_(console) {
  MessageBoxForm& box = console.MyMsgbox;
  box.on_load = [this] { console_.program.MessageShown = true; };
  box.on_unload = [this] {
    console_.MyMsgbox.reset();
    console_.program.MessageShown = false;
  };
  box.OKButton.on_click = [this] {
    guard(console_, "MyMsgbox_OKButton_Click", [&] {
      console_.program.MessageShown = false;
      console_.MyMsgbox.unload();
    });
  };
  console.Lineweir.MessageTimer.on_timer = [this] { MessageTimer_Timer(); };
}

void Messages::ShowMessage(std::string_view text) {
  console_.MyMsgbox.Label1.caption = text;
  show_box();
}

void Messages::withdraw(std::string_view text) {
  MessageBoxForm& box = console_.MyMsgbox;
  if (box.visible && box.Label1.caption == text) box.unload();
}

void Messages::show_box() {
  place_box();
  console_.MyMsgbox.show();
  if (on_shown) on_shown(console_.MyMsgbox.Label1.caption);
}

void Messages::follow_main_form() {
  if (console_.MyMsgbox.visible) place_box();
}

void Messages::place_box() {
  console_.MyMsgbox.left = console_.Lineweir.left + offset_left;
  console_.MyMsgbox.top = console_.Lineweir.top + offset_top;
}

void Messages::MessageTimer_Timer() {
  guard(console_, "Lineweir_MessageTimer_Timer", [&] {
    if (console_.program.MessageShown) console_.MyMsgbox.show();
  });
}

}  // namespace lineweir

#include "state/message_box.h"

#include <algorithm>

#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr int box_width = 4755;
constexpr int box_height = 2100;
constexpr int button_width = 1215;
constexpr int button_height = 375;
constexpr int button_top = 1580;
constexpr int ok_left_alone = 1770;
constexpr int ok_left_beside_reconnect = 2760;
constexpr int reconnect_left = 780;
// A text of several lines has more room where it needs it.
constexpr int lines_with_room = 5;
constexpr int most_lines = 24;
constexpr int characters_of_line = 38;
constexpr int line_height = 240;
constexpr std::string_view reconnection_offer = "Disconnected from Server - Reconnect?";
constexpr int offset_left = 2000;
constexpr int offset_top = 1000;

int lines_of(std::string_view text) {
  int lines = 0;
  for (;;) {
    const std::size_t end = text.find('\n');
    lines += 1 + static_cast<int>(text.substr(0, end).size()) / characters_of_line;
    if (end == std::string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

void make_room(MessageBoxForm& box, std::string_view text) {
  const bool has_lines = text.find('\n') != std::string_view::npos;
  const int lines =
      has_lines ? std::clamp(lines_of(text), lines_with_room, most_lines) : lines_with_room;
  const int more = (lines - lines_with_room) * line_height;
  box.height = box_height + more;
  box.Label1.height = button_top - 300 + more;
  box.OKButton.top = button_top + more;
  box.ReconnectButton.top = button_top + more;
}

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
  make_room(*this, {});
  mouse_pointer = pointer_default;
}

Messages::Messages(ConsoleState& state) : state_(state) {
  MessageBoxForm& box = state.MyMsgbox;
  wire(box.on_load, state_.trace, "MyMsgbox_Form_Load",
       [this] { state_.program.MessageShown = true; });
  wire(box.on_unload, state_.trace, "MyMsgbox_Form_Unload", [this] {
    state_.MyMsgbox.reset();
    state_.program.MessageShown = false;
  });
  wire(box.OKButton.on_click, state_.trace, "MyMsgbox_OKButton_Click", [this] {
    state_.program.MessageShown = false;
    state_.MyMsgbox.unload();
  });
  wire(state.Lineweir.MessageTimer.on_timer, state_.trace, "Lineweir_MessageTimer_Timer",
       [this] { MessageTimer_Timer(); });
}

void Messages::ShowMessage(std::string_view text) {
  state_.MyMsgbox.reset();
  state_.MyMsgbox.Label1.caption = text;
  make_room(state_.MyMsgbox, text);
  show_box();
}

void Messages::tell(const Failure& failure) {
  ShowMessage(description_of(state_.services.letters, failure));
}

void Messages::offer_reconnection() {
  MessageBoxForm& box = state_.MyMsgbox;
  box.OKButton.left = ok_left_beside_reconnect;
  box.OKButton.caption = "&Cancel";
  box.ReconnectButton.visible = true;
  box.Label1.caption = reconnection_offer;
  make_room(box, reconnection_offer);
  show_box();
}

bool Messages::offers_reconnection() const {
  const MessageBoxForm& box = state_.MyMsgbox;
  return box.visible && box.Label1.caption == reconnection_offer;
}

void Messages::withdraw_offer() { withdraw(reconnection_offer); }

void Messages::withdraw(std::string_view text) {
  MessageBoxForm& box = state_.MyMsgbox;
  if (box.visible && box.Label1.caption == text) box.unload();
}

void Messages::show_box() {
  place_box();
  state_.MyMsgbox.show();
  if (on_shown) on_shown(state_.MyMsgbox.Label1.caption);
}

void Messages::come_to_front() {
  if (state_.MyMsgbox.visible) state_.MyMsgbox.show();
}

void Messages::follow_main_form() {
  if (state_.MyMsgbox.visible) place_box();
}

void Messages::place_box() {
  state_.MyMsgbox.left = state_.Lineweir.left + offset_left;
  state_.MyMsgbox.top = state_.Lineweir.top + offset_top;
}

void Messages::MessageTimer_Timer() {
  if (state_.program.MessageShown) state_.MyMsgbox.show();
}

}  // namespace lineweir

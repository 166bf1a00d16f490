#include "messages/quick_line.h"

#include <string>

#include "elements/control.h"
#include "elements/key_characters.h"
#include "messages/conversation.h"
#include "messages/message_display.h"
#include "messages/message_sender.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto text2_key_press = "Lineweir_Text2_KeyPress";

}  // namespace

QuickLine::QuickLine(ConsoleState& state, MessageSender& sender, MessageDisplay& display)
    : state_(state), sender_(sender), display_(display) {
  MainForm& form = state.Lineweir;
  wire(form.Text2.on_key_press, state_.trace, text2_key_press,
       [this](int& key) { Text2_KeyPress(key); });
  wire(form.Text2.on_lost_focus, state_.trace, "Lineweir_Text2_LostFocus",
       [this] { Text2_LostFocus(); });
}

void QuickLine::open() {
  MainForm& form = state_.Lineweir;
  if (form.focused() != &form.Text2) former_ = form.focused();
  form.Text2.move(form.Text1.left, form.Text1.top, form.Text1.width, form.Text1.height);
  form.Text2.visible = true;
  form.Text2.enabled = true;
  form.Text2.bring_to_front();
  form.Text2.set_focus();
}

void QuickLine::Text2_KeyPress(int& key) {
  if (key == escape_key) {
    key = 0;
    close();
  } else if (key == enter_key) {
    key = 0;
    send_line();
  }
}

void QuickLine::send_line() {
  MainForm& form = state_.Lineweir;
  if (!sender_.has_carrier()) {
    return state_.messages.ShowMessage(
        "The message was not sent: there is no server to carry it. Choose Winsock or Network in "
        "the menu Port.");
  }
  const std::string words = form.Text2.text;
  const std::string name = sendable_line(state_.login.UserName.trimmed());
  const SeatMessage message{
      .back_color = form.Text1.back_color,
      .fore_color = form.Text1.fore_color,
      .sender = name,
      .text = last_lines(with_line(form.Text1.text.get(), name, sendable_line(words)))};
  if (!sender_.may_send(message)) return;
  if (!sender_.send(text2_key_press, message)) return;
  display_.will_come_back(message);
  // While it was being sent the user may have typed on.
  if (form.Text2.text == words) form.Text2.text = "";
}

void QuickLine::Text2_LostFocus() { close(); }

void QuickLine::close() {
  MainForm& form = state_.Lineweir;
  form.Text2.enabled = false;
  form.Text2.visible = false;
  if (form.focused() == &form.Text2) give_focus_back();
}

void QuickLine::give_focus_back() {
  MainForm& form = state_.Lineweir;
  Control* present = nullptr;
  // The element may have gone with its row.
  for (Element* element : form.elements()) {
    auto* control = dynamic_cast<Control*>(element);
    if (control != nullptr && control == former_) present = control;
  }
  form.focus(present != nullptr && present->shown() && present->enabled ? present : nullptr);
}

}  // namespace lineweir

#include "messages/flash_message.h"

#include "base/text.h"
#include "elements/key_characters.h"
#include "link/seat_message.h"
#include "messages/conversation.h"
#include "messages/hot_list.h"
#include "messages/message_display.h"
#include "messages/message_sender.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto send_handler = "FlashMessA_FlashSend_Click";
constexpr int offset_left = 1000;
constexpr int offset_top = 1000;
constexpr int control_held = 2;
constexpr int control_and_shift_held = 3;

}  // namespace

FlashMessage::FlashMessage(ConsoleState& state, MessageSender& sender, MessageDisplay& display,
                           HotList& hot_list)
    : state_(state), sender_(sender), display_(display), hot_list_(hot_list) {
  FlashMessageForm& form = state.FlashMessA;
  Trace& trace = state.trace;
  wire(state.Lineweir.Text1.on_dbl_click, trace, "Lineweir_Text1_DblClick",
       [this] { Text1_DblClick(); });
  wire(form.on_load, trace, "FlashMessA_Form_Load", [this] { Form_Load(); });
  wire(form.on_close, trace, "FlashMessA_Form_QueryUnload", [this] { hide(); });
  wire(form.on_key_down, trace, "FlashMessA_Form_KeyDown",
       [this](int& key_code, int shift) { Form_KeyDown(key_code, shift); });
  wire(form.FlashSend.on_click, trace, send_handler, [this] { FlashSend_Click(); });
  wire(form.SendUrgent.on_click, trace, "FlashMessA_SendUrgent_Click",
       [this] { SendUrgent_Click(); });
  wire(form.FlashMessClear.on_click, trace, "FlashMessA_FlashMessClear_Click",
       [this] { FlashMessClear_Click(); });
  wire(form.FlashMessACancel.on_click, trace, "FlashMessA_FlashMessACancel_Click",
       [this] { hide(); });
  wire(form.Text1.on_got_focus, trace, "FlashMessA_Text1_GotFocus", [this] { Text1_GotFocus(); });
  wire(form.Text1.on_lost_focus, trace, "FlashMessA_Text1_LostFocus",
       [this] { Text1_LostFocus(); });
  wire(form.FollowTimer.on_timer, trace, "FlashMessA_FollowTimer_Timer",
       [this] { FollowTimer_Timer(); });
  display.on_history = [this] { show_history(); };
}

void FlashMessage::Text1_DblClick() {
  if (!state_.program.MessagesAllowed) return;
  FlashMessageForm& form = state_.FlashMessA;
  if (!form.visible) FlashMessA_RedefineFlashMess();
  if (form.loaded()) {
    show_on_white();
    keep_sender_name();
    hot_list_.keep_up();
  }
  show_carrier();
  form.FollowTimer.enabled = true;
  form.show();
  form.Text1.set_focus();
}

void FlashMessage::FlashMessA_RedefineFlashMess() {
  state_.FlashMessA.left = state_.Lineweir.left + offset_left;
  state_.FlashMessA.top = state_.Lineweir.top + offset_top;
}

void FlashMessage::Form_Load() {
  FlashMessageForm& form = state_.FlashMessA;
  const TextBox& display = state_.Lineweir.Text1;
  form.Text1.text = display.text;
  form.Text1.back_color = display.back_color;
  form.Text1.fore_color = display.fore_color;
  form.Text1.caret_to_end();
  keep_sender_name();
  show_history();
  hot_list_.keep_up();
}

void FlashMessage::keep_sender_name() {
  TextBox& name = state_.FlashMessA.Text2;
  // Another user may have logged in; a name that was typed here stays.
  if (name.text != name_given_) return;
  name_given_ = state_.login.UserName.trimmed();
  name.text = name_given_;
}

bool FlashMessage::send(const std::string& words) {
  FlashMessageForm& form = state_.FlashMessA;
  const std::string name = sendable_line(trimmed(form.Text2.text.get()));
  const SeatMessage message{.back_color = form.Text1.back_color,
                            .fore_color = form.Text1.fore_color,
                            .sender = name,
                            .text = name + "> " + sendable(words)};
  if (!sender_.may_send(message)) return false;
  display_.show_own(message);
  const bool carried = sender_.has_carrier();
  const bool sent = carried && sender_.send(send_handler, message);
  display_.own_went(sent      ? OwnMessage::Sent
                    : carried ? OwnMessage::NotSent
                              : OwnMessage::ShownHereOnly);
  if (carried && !sent) return false;
  show_on_white();
  state_.Lineweir.Text1.caret_to_end();
  return true;
}

void FlashMessage::FlashSend_Click() {
  if (send(state_.FlashMessA.Text1.text)) hide();
}

void FlashMessage::SendUrgent_Click() {
  TextBox& text = state_.FlashMessA.Text1;
  const int color_before = text.back_color;
  text.back_color = color_red;
  // One that wasn't sent is not urgent until the user says so again.
  if (send(text.text)) {
    hide();
  } else {
    text.back_color = color_before;
  }
}

// The dialog stays: the same key would do something else in the main window.
void FlashMessage::send_entry(int place) {
  const auto& entries = state_.FlashMessA.DBList1.list.get();
  if (place < static_cast<int>(entries.size())) send(entries[static_cast<std::size_t>(place)]);
}

void FlashMessage::FlashMessClear_Click() { state_.FlashMessA.Text1.text = ""; }

void FlashMessage::hide() {
  state_.FlashMessA.FollowTimer.enabled = false;
  state_.FlashMessA.hide();
}

void FlashMessage::Text1_GotFocus() { set_tab_stops(false); }

void FlashMessage::Text1_LostFocus() { set_tab_stops(true); }

void FlashMessage::set_tab_stops(bool on) {
  for (Control* control : state_.FlashMessA.controls_beside_text()) control->tab_stop = on;
}

void FlashMessage::Form_KeyDown(int& key_code, int shift) {
  // The keys belong to the page with the message, which is then to be seen.
  if (state_.FlashMessA.focused() == &state_.FlashMessA.Today) return;
  const bool digit = key_code >= '1' && key_code <= '9';
  if (shift == control_held && digit) {
    send_entry(key_code - '1');
  } else if (shift == control_held && key_code == enter_key) {
    FlashSend_Click();
  } else if (shift == control_and_shift_held && key_code == enter_key) {
    SendUrgent_Click();
  } else {
    return;
  }
  key_code = 0;
}

void FlashMessage::FollowTimer_Timer() {
  keep_sender_name();
  show_carrier();
  hot_list_.follow();
}

void FlashMessage::show_on_white() {
  TextBox& text = state_.FlashMessA.Text1;
  text.back_color = color_white;
  // The letters may be those of a message that had another ground.
  if (text.fore_color == color_white) text.fore_color = color_black;
}

void FlashMessage::show_carrier() {
  state_.FlashMessA.CarrierLabel.visible = !sender_.has_carrier();
}

void FlashMessage::show_history() {
  TextBox& today = state_.FlashMessA.Today;
  today.text = display_.history().text();
  today.caret_to_end();
}

}  // namespace lineweir

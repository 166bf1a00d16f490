#include "seat/seat_entrance.h"

#include "core/console.h"
#include "driver/hands.h"
#include "seat/fingers.h"
#include "serverlink/reply_code.h"

namespace lineweir::seat {

bool SeatEntrance::step() {
  if (is_refused()) return true;
  if (console_.LoginForm.visible) {
    type_login();
    return true;
  }
  MessageBoxForm& box = console_.MyMsgbox;
  if (box.visible) {
    if (!click(console_, box, box.ReconnectButton)) close(console_, box);
    return true;
  }
  if (console_.WinsockOptions.visible) {
    choose_server();
    return true;
  }
  if (is_in()) return false;
  console_.Lineweir.WinsockMenu.on_click();
  return true;
}

bool SeatEntrance::is_in() const {
  const MainForm& form = console_.Lineweir;
  return form.WinsockMenu.checked && form.Shape1.fill_color == color_green;
}

bool SeatEntrance::is_refused() const {
  return console_.login.LastReplyCode == reply_password_rejected;
}

void SeatEntrance::type_login() {
  UserLoginForm& form = console_.LoginForm;
  form.LoginCombo.text = login_.user;
  form.LoginCombo.on_change();
  replace_text(console_, form.PasswordTextBox, login_.password);
  click(console_, form, form.ConnectButton);
}

void SeatEntrance::choose_server() {
  WinsockOptionsForm& form = console_.WinsockOptions;
  replace_text(console_, form.Text1, login_.host);
  replace_text(console_, form.Text2, std::to_string(login_.port));
  click(console_, form, form.SockConnect);
}

}  // namespace lineweir::seat

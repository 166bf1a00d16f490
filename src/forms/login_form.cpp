#include "forms/login_form.h"

namespace lineweir {

LoginWindow::LoginWindow() : Form("LoginForm") {
  caption = "Login";
  width = 4500;
  height = 2100;
  Label1.caption = "&User name";
  Label2.caption = "&Password";
  Label1.move(150, 180, 1300, 300);
  LoginCombo.move(1500, 150, 2800, 315);
  Label2.move(150, 630, 1300, 300);
  PasswordTextBox.move(1500, 600, 2800, 315);
  PasswordTextBox.hides_text = true;
  ConnectButton.move(3085, 1200, 1215, 375);
}

}  // namespace lineweir

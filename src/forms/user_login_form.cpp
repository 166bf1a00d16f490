#include "forms/user_login_form.h"

namespace lineweir {

UserLoginForm::UserLoginForm() : Form("LoginForm") {
  caption = "Login";
  width = 4500;
  height = 2100;
  Label1.caption = "&User name";
  Label2.caption = "&Password";
  PasswordTextBox.hides_text = true;
}

}  // namespace lineweir

#pragma once

#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/list_box.h"
#include "elements/text_box.h"

namespace lineweir {

// The login of a console at its server.
class UserLoginForm : public Form {
 public:
  UserLoginForm();

  Label Label1{*this, "Label1"};
  Label Label2{*this, "Label2"};
  ComboBox LoginCombo{*this, "LoginCombo"};
  TextBox PasswordTextBox{*this, "PasswordTextBox"};
  Button ConnectButton{*this, "ConnectButton", "&Connect"};

  // True when the user opened the form to change the login; cleared when it is unloaded.
  bool ChangeUser = false;
  // The user's name when the form was loaded.
  std::string TheOldName;
};

}  // namespace lineweir

#include "forms/winsock_options_form.h"

namespace lineweir {

WinsockOptionsForm::WinsockOptionsForm() : Form("WinsockOptions") {
  caption = "Server";
  width = 4500;
  height = 2500;
  Label1.caption = "Server &address";
  Label2.caption = "Server &port";
  QuorlinkIntCheck.caption = "Quorlink Interface";
  Label1.move(150, 180, 1300, 300);
  Text1.move(1500, 150, 2800, 315);
  Label2.move(150, 630, 1300, 300);
  Text2.move(1500, 600, 1200, 315);
  QuorlinkIntCheck.move(1500, 1050, 2800, 315);
  SockConnect.move(3085, 1600, 1215, 375);
}

}  // namespace lineweir

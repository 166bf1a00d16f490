#include "serverlink/server_connection.h"

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr platform::Milliseconds connection_limit{5000};
constexpr std::string_view initial_status_text = "F00F01F02F03F04F05F06F07F08F09";

}  // namespace

ServerConnection::ServerConnection(Console& console) : console_(console) {
  console.services.winsock1.on_connect = [this] { Winsock1_Connect(); };
}

void ServerConnection::begin() {
  console_.line_events.TheStatusText = initial_status_text;
  console_.services.winsock1.connect(console_.login.RemoteHost, console_.login.RemotePort);
}

bool ServerConnection::await() {
  platform::EventLoop& loop = console_.services.loop;
  const auto start = loop.now();
  while (console_.services.winsock1.state() != platform::socket_connected) {
    if (loop.now() - start > connection_limit) {
      console_.messages.ShowMessage("Error communicating remote socket! No Server Available!");
      console_.Lineweir.mouse_pointer = pointer_default;
      return false;
    }
    loop.yield();
  }
  return true;
}

void ServerConnection::Winsock1_Connect() {
  guard(console_, "Lineweir_Winsock1_Connect",
        [&] { console_.Lineweir.WinsockMenu.checked = true; });
}

}  // namespace lineweir

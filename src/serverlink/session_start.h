#pragma once

namespace lineweir {

class ServerLink;
struct ConsoleState;

// Why a session with the server begins.
enum class SessionReason { Login = 0, GroupChange = 1, ProgramStart = 2 };

// TextWrit_SockConnecter: registers the console in its group and asks for the studio's state. The
// connection stands and the server has let the console in.
void TextWrit_SockConnecter(ConsoleState& state, ServerLink& server, SessionReason RestartWinsock);

}  // namespace lineweir

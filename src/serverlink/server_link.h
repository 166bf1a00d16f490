#pragma once

#include <array>
#include <functional>
#include <string_view>

#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

namespace lineweir {

struct ConsoleState;

// The console's end of the socket: frames go out at once, received bytes are gathered at once, and
// frames are cut and handled by WinsTimer, at most 50 ms later.
class ServerLink {
 public:
  using Handler = std::function<void(const ServerPacket& packet)>;

  explicit ServerLink(ConsoleState& state);

  // All bytes received and not yet consumed, across connections.
  ReceiveBuffer RecString;

  // Told of each frame that was handled, whatever it is.
  std::function<void(const ServerPacket& packet)> on_frame;

  // The bytes that come next are another connection's. If they begin with a frame, what is left of
  // one that the former connection cut short goes: the two would make a third that nobody sent.
  void expect_new_stream() { new_stream_ = true; }

  // How many frames were handled.
  int frames() const { return frames_; }

  // Who handles a received command. A command without a handler is passed over in silence.
  void handle(ServerCommand command, Handler handler);

  // A packet of this console, as client_packet.
  ServerPacket packet(ClientCommand command) const;

  // Sends the packet as one frame. A failure of the socket is the sender's to handle: then nothing
  // was sent.
  void send(ServerPacket packet);

  void TextWrit_CheckWinsPort();

 private:
  void Winsock1_DataArrival();
  // Cuts and handles the frames in RecString. A frame whose handler fails stays there, is handled
  // once more when more bytes have arrived, and then dropped.
  void WinsTimer_Timer();

  void gather();
  void handle_frames();
  // Returns whether the handler did not fail.
  bool dispatch(const ServerPacket& packet);

  ConsoleState& state_;
  // What a handler lets run may bring more bytes.
  bool handling_ = false;
  bool first_has_failed_ = false;
  bool new_stream_ = false;
  int frames_ = 0;
  // By the place of the command in its table.
  std::array<Handler, server_commands.size()> handlers_;
};

}  // namespace lineweir

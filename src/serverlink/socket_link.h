#pragma once

#include <functional>
#include <string>

#include "link/studio_link.h"
#include "wire/server_packet_commands.h"

namespace lineweir {

struct ConsoleState;
struct ServerPacket;
class ServerLink;

// The way over the server's socket: each call is one frame.
class SocketLink : public StudioLink {
 public:
  SocketLink(ConsoleState& state, ServerLink& server) : state_(state), server_(server) {}

  // Why the server is taken for lost though the connection may stand; empty while it isn't.
  std::string silence;

  // The login in another group, which may let events run; returns whether a session has begun.
  std::function<bool()> on_enter_group;

  void command(std::string_view handler, std::string_view word, int bank) override;
  void next_call(std::string_view handler, int line) override;
  HandPick hand_pick() const override;
  void next_action(std::string_view handler, NextAction action) override;
  bool caller_data(std::string_view handler, int line, std::string_view text,
                   const std::function<bool()>& still_wanted) override;
  bool may_remember_callers() const override { return true; }
  void ask_caller(std::string_view handler, std::string_view number) override;
  bool flag_caller(std::string_view handler, int flag, std::string_view text) override;
  bool carries_messages() const override { return true; }
  bool message(std::string_view handler, const SeatMessage& message) override;
  void mode(std::string_view handler, bool producer) override;
  void phone(std::string_view handler, int number) override;
  void phone_names() override;
  void line_names(std::string_view handler) override;
  void seize(std::string_view handler, int line, int bank) override;
  bool leave_group(std::string_view handler) override;
  GroupEntry enter_group() override;
  void give_way(bool was_chosen) override;
  void let_go() override;
  bool polls_server() const override { return true; }
  bool hears_heartbeat() const override { return true; }
  void leave() override;
  std::string_view trouble() const override;
  std::string_view standing() const override;
  bool tells_lost_commands() const override { return true; }
  bool locks_keys() const override;
  bool keeps_profiles() const override;
  void keep_profile(std::string_view block) override;

 private:
  // Sends a packet of the command with what `fill` puts into it, in the trap of the handlers that
  // write to the socket; returns whether nothing failed.
  bool send(std::string_view handler, ClientCommand command,
            const std::function<void(ServerPacket& packet)>& fill);

  ConsoleState& state_;
  ServerLink& server_;
};

}  // namespace lineweir

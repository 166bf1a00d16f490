#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/connection.h"
#include "server/frame_allowance.h"
#include "server/seat.h"
#include "server/session_services.h"
#include "wire/rights_layout.h"
#include "wire/server_packet_framing.h"

namespace lineweir::server {

// A console on a socket, from its connecting to its end: what it may send when, and what it is
// answered. Until it is let in it may send logins and ask for the time.
class Session final : public Seat {
 public:
  // The first whole frame must come within this time, and the rest of one that has begun before.
  static constexpr platform::Milliseconds first_frame_within{10'000};
  // A person may be typing a password.
  static constexpr platform::Milliseconds login_within{300'000};
  // A console that comes back closes the calls that have ended meanwhile, and gives up a next call
  // that is gone, when it has the letters of the lines; what it is told of new callers before would
  // take the place of the old ones.
  static constexpr platform::Milliseconds callers_told_after{150};
  // Bytes of a frame that isn't whole, and of what waits for the answer to a login.
  static constexpr std::size_t most_unread = 64 * 1024;

  Session(std::uint64_t seat_number, std::unique_ptr<platform::Connection> connection,
          SessionServices services, std::function<void(Session&)> on_over);
  ~Session() override;

  void tell(const Telling& telling) override;
  void tell_person(const std::string& text) override;
  void end() override;
  std::string place() const override { return peer_; }

  // One that isn't let in ends at once, for another.
  void give_way();
  // Runs each second.
  void look_after_silence();
  // The server could not listen for that long.
  void forgive_silence(platform::Milliseconds span);
  bool is_over() const { return over_; }
  std::size_t queued() const { return connection_ ? connection_->queued() : 0; }

  // The rights of the user have changed; the seat is told which groups are open to him, and its
  // rights where those in its group are others. It leaves the group where it has none there any
  // more.
  void take_new_rights();
  // The names of the groups, and which are open to the user.
  void tell_groups();

 private:
  struct Request;
  static const Request* request_of(std::uint8_t code);

  void receive(std::string_view bytes);
  void read_frames();
  bool begins_as_frame() const;
  void handle(const ServerPacket& packet);
  void finish(SeatBook::Leaving leaving, const std::string& why);
  void refuse(Refusal refusal);
  bool is_allowed(const Request& request, const ServerPacket& packet);
  bool is_of_own_group(const Request& request, const ServerPacket& packet);
  void refuse_right(Right right);
  void refuse_flood();
  void tell_person_of_refusal(const std::string& reason);
  Group& own_group() { return *services_.seats.find_group(group); }
  void send(const ServerPacket& packet) { tell(Telling(packet)); }

  // One for each request; told beside the table in the source.
  void check_password(const ServerPacket& packet);
  void check_login(const ServerPacket& packet);
  struct LoginAnswer {
    ServerCommand command;
    // What AltInfo says.
    char yes;
    char no;
  };
  void ask_login(const ServerPacket& packet, ServerCommand command, char yes, char no);
  void refuse_login(const ServerPacket& packet, const LoginAnswer& answer, Refusal reason);
  void answer_login(const ServerPacket& asked, const LoginAnswer& answer,
                    const std::optional<std::string>& accepted);
  void ask_who(const ServerPacket& packet, std::function<void(const std::string& asker)> if_right);
  void tell_rights(const ServerPacket& packet);
  void tell_first_open_group(const ServerPacket& packet);
  void let_in(const std::string& accepted);
  void register_console(const ServerPacket& packet);
  void leave_group(const ServerPacket& packet);
  void order_line(const ServerPacket& packet);
  void tell_status(const ServerPacket& packet);
  void take_caller_data(const ServerPacket& packet);
  void take_message(const ServerPacket& packet);
  void set_next_call(const ServerPacket& packet);
  void tell_group_names(const ServerPacket& packet);
  void tell_studio_status(const ServerPacket& packet);
  void tell_times(const ServerPacket& packet);
  void tell_line_numbers(const ServerPacket& packet);
  void dial_digit(const ServerPacket& packet);
  void act_on_next(const ServerPacket& packet);
  void seize_line(const ServerPacket& packet);
  void tell_phones(const ServerPacket& packet);
  void set_mode(const ServerPacket& packet);
  void select_phone(const ServerPacket& packet);
  void tell_time(const ServerPacket& packet);
  void tell_caller(const ServerPacket& packet);
  void flag_caller(const ServerPacket& packet);
  void take_profile(const ServerPacket& packet);

  void send_elsewhere(int wanted);
  void hand_over(const LineOrder& order);
  void tell_allowed_groups();
  void tell_callers_later();
  // Who is let in without a password from where this console is.
  std::optional<std::string> user_of_place() const;
  std::string rights_in(const std::string& of_user, int asked_group) const;
  void learn_own_names(const platform::Account& account);
  int group_asked_for(const ServerPacket& packet) const;

  std::unique_ptr<platform::Connection> connection_;
  SessionServices services_;
  std::function<void(Session&)> on_over_;
  std::string peer_;
  ReceiveBuffer received_;
  int registrations_ = 0;
  // The letters of the lines come only now, and may end what was told of callers before.
  bool callers_told_too_early_ = false;
  // The answer to a login is on its way; what comes behind it waits.
  bool waiting_ = false;
  bool over_ = false;
  bool was_refused_ = false;
  int early_frames_ = 0;
  platform::Milliseconds heard_;
  platform::Milliseconds frame_heard_;
  platform::Milliseconds person_told_;
  FrameAllowance allowance_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

// The server's date and time.
ServerPacket time_packet(const Context& context);

}  // namespace lineweir::server

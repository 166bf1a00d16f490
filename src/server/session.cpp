#include "server/session.h"

#include <utility>

#include "base/time_text.h"
#include "server/session_request.h"

namespace lineweir::server {
namespace {

using platform::ConnectionEnd;

// Frames that came before their time, such as those of a console whose login was refused.
constexpr int most_early_frames = 100;
constexpr platform::Milliseconds person_told_every{10'000};

}  // namespace

Session::Session(std::uint64_t seat_number, std::unique_ptr<platform::Connection> connection,
                 SessionServices services, std::function<void(Session&)> on_over)
    : Seat(seat_number),
      connection_(std::move(connection)),
      services_(services),
      on_over_(std::move(on_over)),
      peer_(connection_->peer()),
      heard_(services_.context.loop.now()),
      frame_heard_(heard_),
      person_told_(heard_ - person_told_every),
      allowance_(heard_) {
  connection_->on_bytes = [this](std::string_view bytes) { receive(bytes); };
  connection_->on_end = [this](ConnectionEnd ended) {
    if (ended == ConnectionEnd::Overflow) {
      ++services_.context.figures.dropped_slow;
      if (!user.empty()) {
        services_.told_at_login[user + '\n' + peer_] =
            "This console was disconnected because it read too slowly what the server sent.";
      }
      return finish(SeatBook::Leaving::Vanished, "read too slowly");
    }
    finish(SeatBook::Leaving::Vanished, "connection gone");
  };
}

Session::~Session() = default;

void Session::tell(const Telling& telling) {
  if (over_) return;
  ++services_.context.figures.frames_out[telling.packet.CMD];
  connection_->send(telling.frame);
  const bool is_status = telling.packet.CMD == static_cast<int>(ServerCommand::SrvFullStatus);
  if (is_status && std::exchange(callers_told_too_early_, false)) tell_callers_later();
}

void Session::tell_person(const std::string& text) {
  send(server_packet(ServerCommand::SrvMessage, no_value,
                     services_.context.letters.from_utf8(text)));
}

void Session::end() {
  if (over_) return;
  connection_->close_when_sent();
  finish(SeatBook::Leaving::Vanished, "ended by the server");
}

void Session::give_way() { finish(SeatBook::Leaving::Goodbye, "gave way to another"); }

void Session::look_after_silence() {
  if (over_ || waiting_) return;
  const platform::Milliseconds now = services_.context.loop.now();
  if (user.empty()) {
    const auto allowed = was_refused_ ? login_within : first_frame_within;
    if (now - frame_heard_ > allowed) finish(SeatBook::Leaving::Goodbye, "said nothing");
    return;
  }
  if (now - heard_ <= SeatBook::silence_allowed) return;
  ++services_.context.figures.dropped_silent;
  finish(SeatBook::Leaving::Silent, "silent for too long");
}

void Session::forgive_silence(platform::Milliseconds span) {
  heard_ += span;
  frame_heard_ += span;
}

void Session::receive(std::string_view bytes) {
  heard_ = services_.context.loop.now();
  received_.append(bytes);
  read_frames();
}

void Session::read_frames() {
  while (!over_ && !waiting_) {
    if (!begins_as_frame()) {
      refuse(Refusal::NoFrame);
      return finish(SeatBook::Leaving::Vanished, "sent what is no frame");
    }
    const auto body = received_.first_body();
    if (!body) break;
    const ServerPacket packet = packet_of(*body);
    received_.drop_first();
    frame_heard_ = heard_;
    handle(packet);
  }
  if (!over_ && received_.text().size() > most_unread) {
    refuse(Refusal::NoFrame);
    finish(SeatBook::Leaving::Vanished, "sent a frame that is too long");
  }
}

// In front of a frame may stand what is left of the end marker before it, fewer bytes than a frame
// has.
bool Session::begins_as_frame() const {
  std::string_view text = received_.text();
  const std::size_t left = std::min(text.find_first_not_of(end_marker.front()), text.size());
  text.remove_prefix(std::min(left, header_length));
  return start_marker.starts_with(text.substr(0, start_marker.size()));
}

void Session::handle(const ServerPacket& packet) {
  Figures& figures = services_.context.figures;
  ++figures.frames_in[packet.CMD];
  const Request* request = request_of(packet.CMD);
  if (request == nullptr) return refuse(Refusal::UnknownCode);
  if (!allowance_.take(packet.Buffer.size(), heard_)) return refuse_flood();
  if (is_allowed(*request, packet)) (this->*request->answer)(packet);
}

void Session::finish(SeatBook::Leaving leaving, const std::string& why) {
  if (over_) return;
  over_ = true;
  if (!user.empty()) {
    services_.context.log(LogLevel::Info,
                          "seat ends: user \"" + user + "\" at " + peer_ + ", " + why);
    services_.seats.remove(*this, leaving);
  } else {
    services_.context.log(LogLevel::Debug, "connection ends: " + peer_ + ", " + why);
  }
  connection_.reset();
  on_over_(*this);
}

void Session::refuse(Refusal refusal) {
  services_.context.figures.refuse(refusal);
  if (refusal != Refusal::NotLetIn || ++early_frames_ <= most_early_frames) return;
  finish(SeatBook::Leaving::Vanished, "sent too much without being let in");
}

bool Session::is_allowed(const Request& request, const ServerPacket& packet) {
  if (request.needs == Needs::Nothing) return true;
  if (user.empty()) return refuse(Refusal::NotLetIn), false;
  if (request.needs == Needs::LetIn) return true;
  if (!is_of_own_group(request, packet)) return false;
  if (request.works_lines && allows(rights, Right::ForcePassiveOn)) {
    return refuse(Refusal::Passive), false;
  }
  if (request.right && !allows(rights, *request.right)) return refuse_right(*request.right), false;
  return true;
}

bool Session::is_of_own_group(const Request& request, const ServerPacket& packet) {
  if (group == 0) return refuse(Refusal::NotRegistered), false;
  if (packet.GroupNo != group) return refuse(Refusal::OtherGroup), false;
  const bool own_console = packet.Console == console || packet.Console == no_value;
  if (!own_console && !request.changes_console) return refuse(Refusal::OtherConsole), false;
  if (request.names_line && !own_group().lines().exists(packet.LineNo)) {
    return refuse(Refusal::OtherLine), false;
  }
  return true;
}

void Session::refuse_right(Right right) {
  refuse(Refusal::MissingRight);
  tell_person_of_refusal("you do not have the right " +
                         std::string(rights_layout[static_cast<std::size_t>(right)].name) + " in " +
                         own_group().options().name);
}

void Session::refuse_flood() {
  refuse(Refusal::TooMany);
  if (!user.empty()) tell_person_of_refusal("this console sends too much at once");
}

void Session::tell_person_of_refusal(const std::string& reason) {
  const platform::Milliseconds now = services_.context.loop.now();
  if (now - person_told_ < person_told_every) return;
  person_told_ = now;
  tell_person("The server did not do this: " + reason + ".");
}

void Session::take_new_rights() {
  if (group == 0) return;
  tell_allowed_groups();
  const std::string before = std::exchange(rights, services_.accounts.rights(user, group));
  // A console that is told its rights takes its stored profile too.
  if (rights == before) return;
  send(server_packet(ServerCommand::SrvRights, group, rights));
  if (rights == no_rights) services_.seats.leave_group(*this);
}

ServerPacket time_packet(const Context& context) {
  return server_packet(ServerCommand::SrvTime, no_value,
                       date_time_text(context.clock.local(context.clock.now())));
}

}  // namespace lineweir::server

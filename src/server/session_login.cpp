#include <algorithm>

#include "base/text.h"
#include "server/session.h"
#include "wire/server_packet_codec.h"

// How a console is let in.
namespace lineweir::server {
namespace {

// The profile's field, from 0, that holds the name which stamps a user's caller data, and the flags
// in front of the fields.
constexpr std::size_t operator_name_field = 6;
constexpr std::size_t profile_flags_length = 43;

}  // namespace

void Session::check_password(const ServerPacket& packet) {
  ask_login(packet, ServerCommand::SrvPasswordResult, 'T', 'F');
}

// Without a name the console asks whether what was agreed before still holds: for the one who has
// been let in on this connection, and for a seat whose place the configuration knows.
void Session::check_login(const ServerPacket& packet) {
  if (!packet.Buffer.empty()) {
    return ask_login(packet, ServerCommand::SrvLoginCheckResult, 'F', 'T');
  }
  const std::optional<std::string> accepted =
      services_.accounts.find(user) == nullptr ? user_of_place() : user;
  const LoginAnswer answer{ServerCommand::SrvLoginCheckResult, 'F', 'T'};
  if (!accepted) return refuse_login(packet, answer, Refusal::NotLetIn);
  if (user.empty()) let_in(*accepted);
  answer_login(packet, answer, accepted);
}

void Session::ask_login(const ServerPacket& packet, ServerCommand command, char yes, char no) {
  const LoginAnswer answer{command, yes, no};
  const auto login = decode_login(packet.Buffer);
  if (!login) {
    return refuse_login(packet, answer, Refusal::Malformed);
  }
  // A console that was let in by its place comes back with what it holds: no password, and the name
  // only where its user has typed one.
  if (const auto accepted = user_of_place(); accepted && trimmed(login->password).empty()) {
    const std::string_view name = trimmed(login->user);
    if (name.empty() || name == *accepted) {
      let_in(*accepted);
      return answer_login(packet, answer, accepted);
    }
  }
  waiting_ = true;
  services_.logins.check(*login, peer_,
                         [this, alive = std::weak_ptr(alive_), packet,
                          answer](const std::optional<std::string>& accepted) {
                           if (!alive.lock() || over_) return;
                           waiting_ = false;
                           heard_ = frame_heard_ = services_.context.loop.now();
                           if (accepted) let_in(*accepted);
                           answer_login(packet, answer, accepted);
                           read_frames();
                         });
}

// As late as a wrong password.
void Session::refuse_login(const ServerPacket& packet, const LoginAnswer& answer, Refusal reason) {
  services_.context.figures.refuse(reason);
  waiting_ = true;
  services_.context.loop.schedule(LoginDesk::refused_after,
                                  [this, alive = std::weak_ptr(alive_), packet, answer] {
                                    if (!alive.lock() || over_) return;
                                    waiting_ = false;
                                    answer_login(packet, answer, std::nullopt);
                                    read_frames();
                                  });
}

void Session::answer_login(const ServerPacket& asked, const LoginAnswer& answer,
                           const std::optional<std::string>& accepted) {
  const int asked_group = group_asked_for(asked);
  ServerPacket told = server_packet(answer.command, asked_group);
  told.AltInfo = static_cast<std::uint8_t>(accepted ? answer.yes : answer.no);
  if (accepted) {
    told.Buffer = rights_in(*accepted, asked_group);
    told.Buffer += services_.accounts.find(*accepted)->profile;
    // A frame whose length ends as the marker does, and whose text begins so, would be cut there;
    // the profile may end with one item more.
    if (carried_buffer(told.Buffer) != told.Buffer) told.Buffer += item_end;
  } else {
    was_refused_ = true;
  }
  send(told);
  if (!accepted) return;
  if (services_.end_notice) send(services_.end_notice->packet(services_.context));
  const auto reason = services_.told_at_login.find(user + '\n' + peer_);
  if (reason == services_.told_at_login.end()) return;
  tell_person(reason->second);
  services_.told_at_login.erase(reason);
}

void Session::ask_who(const ServerPacket& packet,
                      std::function<void(const std::string& asker)> if_right) {
  // A seat that was let in by its place has no password to give.
  if (packet.Buffer.empty() || user_of_place() == user) {
    if (user.empty()) return refuse(Refusal::NotLetIn);
    return if_right(user);
  }
  const auto login = decode_login(packet.Buffer);
  if (!login) return refuse(Refusal::Malformed);
  waiting_ = true;
  services_.logins.check(*login, peer_,
                         [this, alive = std::weak_ptr(alive_), if_right = std::move(if_right)](
                             const std::optional<std::string>& accepted) {
                           if (!alive.lock() || over_) return;
                           waiting_ = false;
                           heard_ = frame_heard_ = services_.context.loop.now();
                           if (accepted) if_right(*accepted);
                           read_frames();
                         });
}

void Session::tell_rights(const ServerPacket& packet) {
  ask_who(packet, [this, asked = int{packet.GroupNo}](const std::string& asker) {
    send(server_packet(ServerCommand::SrvRights, asked, rights_in(asker, asked)));
  });
}

void Session::tell_first_open_group(const ServerPacket& packet) {
  ask_who(packet, [this](const std::string& asker) {
    ServerPacket told = server_packet(ServerCommand::SrvFirstUnblocked, no_value);
    const auto open = std::find_if(
        services_.groups.begin(), services_.groups.end(),
        [&](const auto& entry) { return services_.accounts.has_rights(asker, entry.first); });
    const auto elsewhere = std::ranges::find_if(services_.places.all(), [&](const auto& entry) {
      return services_.accounts.has_rights(asker, entry.first);
    });
    if (open != services_.groups.end()) {
      told.AltInfo = field_byte(open->first);
    } else if (elsewhere != services_.places.all().end()) {
      told.AltInfo = field_byte(elsewhere->first);
    }
    send(told);
  });
}

void Session::let_in(const std::string& accepted) {
  const platform::Account* const account = services_.accounts.find(accepted);
  if (user != accepted) {
    if (!user.empty()) services_.seats.remove(*this, SeatBook::Leaving::Goodbye);
    user = accepted;
    own_names.clear();
    services_.seats.add(*this);
    ++services_.context.figures.logins;
    services_.context.log(LogLevel::Info, "login: user \"" + user + "\" from " + peer_);
    services_.context.audit.note(user, "login", peer_);
  }
  learn_own_names(*account);
  services_.accounts.note_seen(accepted, services_.context.clock.now());
}

std::optional<std::string> Session::user_of_place() const {
  for (const FixedSeat& seat : services_.fixed_seats) {
    const platform::Account* const account = services_.accounts.find(seat.user);
    if (seat.address == peer_ && account != nullptr && !account->locked) return seat.user;
  }
  return std::nullopt;
}

// Nobody has rights in a group that isn't there. For one at another server the console is sent
// there when it registers.
std::string Session::rights_in(const std::string& of_user, int asked_group) const {
  const bool is_there = services_.seats.find_group(asked_group) != nullptr ||
                        services_.places.find(asked_group) != nullptr;
  if (!is_there) return std::string(no_rights);
  return services_.accounts.rights(of_user, asked_group);
}

// A user's data go out under the name that the profile holds, or the user's own.
void Session::learn_own_names(const platform::Account& account) {
  own_names.add(services_.context.letters.from_utf8(account.name));
  if (account.profile.size() <= profile_flags_length) return;
  const auto fields = decode_list(std::string_view(account.profile).substr(profile_flags_length));
  if (fields.size() > operator_name_field) own_names.add(fields[operator_name_field]);
}

// A console that hasn't been in any group yet means its first.
int Session::group_asked_for(const ServerPacket& packet) const {
  const bool has_none = packet.GroupNo == 0 || packet.GroupNo == no_value;
  if (!has_none || services_.groups.empty()) return packet.GroupNo;
  return services_.groups.begin()->first;
}

}  // namespace lineweir::server

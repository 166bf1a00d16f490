#include "server/seat_connections.h"

#include <algorithm>
#include <utility>

namespace lineweir::server {

SeatConnections::SeatConnections(const Context& context, SessionServices services, SeatBook& seats,
                                 const ServerOptions& options)
    : context_(context), services_(services), seats_(seats), options_(options) {}

SeatConnections::~SeatConnections() = default;

void SeatConnections::accept(std::unique_ptr<platform::Connection> connection) {
  const std::string peer = connection->peer();
  const auto most = static_cast<std::size_t>(options_.seats);
  const auto most_of_address = static_cast<std::size_t>(options_.seats_of_address);
  if (open_from(peer) >= most_of_address && !make_room(peer)) {
    return refuse(peer + " has all the seats that one address may have");
  }
  if (open() >= most && !make_room({})) {
    return refuse("all " + std::to_string(most) + " seats are taken");
  }
  full_is_told_ = false;
  ++context_.figures.connections;
  sessions_.push_back(
      std::make_unique<Session>(seats_.new_number(), std::move(connection), services_,
                                [this](Session& session) { remove_later(session); }));
}

// A crowd at the door is told once, until somebody gets in again.
void SeatConnections::refuse(const std::string& why) {
  context_.figures.refuse(Refusal::TooManySeats);
  if (!std::exchange(full_is_told_, true)) {
    context_.log(LogLevel::Warning, "a connection is refused: " + why);
  }
}

std::size_t SeatConnections::open() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(sessions_, [](const auto& session) { return !session->is_over(); }));
}

std::size_t SeatConnections::open_from(const std::string& peer) const {
  return static_cast<std::size_t>(std::ranges::count_if(sessions_, [&](const auto& session) {
    return !session->is_over() && session->place() == peer;
  }));
}

// Who only takes places keeps nobody out: of the connections that aren't let in, the oldest one of
// the address that has most of them gives way.
bool SeatConnections::make_room(const std::string& peer) {
  const auto may_give_way = [&](const auto& session) {
    const bool fits = peer.empty() || session->place() == peer;
    return fits && !session->is_over() && session->user.empty();
  };
  std::map<std::string, std::size_t> counts;
  for (const auto& session : sessions_) {
    if (may_give_way(session)) ++counts[session->place()];
  }
  if (counts.empty()) return false;
  const std::string most_of =
      std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; })->first;
  const auto oldest = std::ranges::find_if(sessions_, [&](const auto& session) {
    return may_give_way(session) && session->place() == most_of;
  });
  context_.figures.refuse(Refusal::TooManySeats);
  (*oldest)->give_way();
  return true;
}

// A session ends in the middle of its own work.
void SeatConnections::remove_later(Session& session) {
  context_.loop.schedule(
      platform::Milliseconds{0}, [this, &session, alive = std::weak_ptr(alive_)] {
        if (!alive.lock()) return;
        std::erase_if(sessions_, [&](const auto& held) { return held.get() == &session; });
      });
}

void SeatConnections::beat(platform::Milliseconds forgiven) {
  const Telling time(time_packet(context_));
  for (const auto& session : sessions_) {
    session->forgive_silence(forgiven);
    session->look_after_silence();
    if (!session->is_over() && session->group != 0) session->tell(time);
  }
}

void SeatConnections::tell(const Telling& telling) {
  for (const auto& session : sessions_) {
    if (!session->is_over() && !session->user.empty()) session->tell(telling);
  }
}

void SeatConnections::tell_groups() {
  for (const auto& session : sessions_) {
    if (!session->is_over() && session->group != 0) session->tell_groups();
  }
}

void SeatConnections::tell_new_rights(const std::string& user) {
  for (const auto& session : sessions_) {
    if (!session->is_over() && session->user == user) session->take_new_rights();
  }
}

void SeatConnections::end(const std::string& user, const std::string& why) {
  for (const auto& session : sessions_) {
    if (session->is_over() || session->user != user) continue;
    session->tell_person(why);
    session->end();
  }
}

void SeatConnections::end_all() {
  for (const auto& session : sessions_) session->end();
}

QueueFigures SeatConnections::queues() const {
  QueueFigures queues;
  for (const auto& session : sessions_) {
    if (session->is_over()) continue;
    ++queues.connections;
    queues.queued_bytes += session->queued();
    queues.longest_queue = std::max(queues.longest_queue, session->queued());
  }
  return queues;
}

}  // namespace lineweir::server

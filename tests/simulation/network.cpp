#include "simulation/network.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lineweir::simulation {

// What both ends of a connection share.
struct Wire {
  Network& network;
  std::string name;
  std::string origin;
  std::string address;
  // Null once that end is gone.
  std::array<Connection*, 2> ends{};
  // When the last thing that is on its way to an end gets there: nothing overtakes it.
  std::array<Milliseconds, 2> last_arrival{};
  // Bytes that still pass before the connection is cut; none where it never is.
  std::optional<std::size_t> life;
  bool broken = false;
  bool cut_unseen = false;
  // What has come to where the way to an end is parted.
  std::array<std::vector<std::function<void()>>, 2> held{};
};

namespace {

constexpr int longest_piece = 40;
constexpr Milliseconds tried_again_after{500};
constexpr Milliseconds longest_attempt{20'000};

}  // namespace

Connection::Connection(std::shared_ptr<Wire> wire, int side) : wire_(std::move(wire)), side_(side) {
  wire_->ends[static_cast<std::size_t>(side)] = this;
}

Connection::~Connection() {
  close();
  wire_->ends[static_cast<std::size_t>(side_)] = nullptr;
}

const std::string& Connection::origin() const { return wire_->origin; }

Milliseconds Connection::silence() const {
  return open_ ? wire_->network.silence(*wire_) : Milliseconds{0};
}

void Connection::send(std::string_view bytes) {
  if (open_) wire_->network.carry(wire_, side_, bytes);
}

void Connection::close() {
  if (!std::exchange(open_, false)) return;
  wire_->network.finish(wire_, side_);
}

void Connection::take(std::string_view bytes) {
  if (open_ && on_bytes) on_bytes(bytes);
}

void Connection::end() {
  if (!std::exchange(open_, false)) return;
  if (on_closed) on_closed();
}

Network::Network(platform::VirtualEventLoop& loop, Transcript& transcript, const Weather& weather,
                 std::uint64_t seed)
    : loop_(loop), transcript_(transcript), weather_(weather), dice_(seed) {}

void Network::listen(const std::string& address, Taker accept) {
  listeners_[address] = std::move(accept);
}

void Network::stop_listening(const std::string& address) { listeners_.erase(address); }

void Network::connect(const std::string& address, Taker done, const std::string& from) {
  const bool late = dice_.happens(weather_.late);
  const Milliseconds delay =
      late ? dice_.between(weather_.longest_delay, weather_.longest_lateness)
           : 2 * dice_.between(weather_.shortest_delay, weather_.longest_delay);
  loop_.schedule(
      delay, [this, address, from, done = std::move(done), until = loop_.now() + longest_attempt] {
        try_to_establish(address, from, done, until);
      });
}

void Network::part(const std::string& from, const std::string& to) { parted_.emplace(from, to); }

void Network::mend() {
  parted_.clear();
  for (const auto& wire : std::exchange(held_up_, {})) {
    for (auto& held : wire->held) {
      for (const auto& arrive : std::exchange(held, {})) arrive();
    }
  }
}

void Network::try_to_establish(const std::string& address, const std::string& from,
                               const Taker& done, Milliseconds given_up_at) {
  if (!is_parted(from, address) && !is_parted(address, from)) {
    return establish(address, from, done);
  }
  if (loop_.now() >= given_up_at) return done(nullptr);
  loop_.schedule(tried_again_after, [this, address, from, done, given_up_at] {
    try_to_establish(address, from, done, given_up_at);
  });
}

void Network::establish(const std::string& address, const std::string& from, const Taker& done) {
  const auto listener = listeners_.find(address);
  if (listener == listeners_.end() || dice_.happens(weather_.refused)) {
    transcript_.add("network", address + " refuses a connection");
    return done(nullptr);
  }
  const auto wire = std::make_shared<Wire>(Wire{*this,
                                                "connection " + std::to_string(++connections_),
                                                from,
                                                address,
                                                {},
                                                {},
                                                {},
                                                false,
                                                false,
                                                {}});
  if (dice_.happens(weather_.cut)) {
    wire->life = static_cast<std::size_t>(dice_.below(weather_.longest_life));
    wire->cut_unseen = weather_.cut_unseen > 0 && dice_.happens(weather_.cut_unseen);
  }
  transcript_.add("network", wire->name + " to " + address);
  // The caller's end comes first into being, so that what the other side says at once is heard.
  auto near = std::make_unique<Connection>(wire, 0);
  auto far = std::make_unique<Connection>(wire, 1);
  const Taker accept = listener->second;
  done(std::move(near));
  accept(std::move(far));
}

void Network::carry(const std::shared_ptr<Wire>& wire, int from, std::string_view bytes) {
  while (!bytes.empty() && !wire->broken) {
    std::size_t length = static_cast<std::size_t>(dice_.below(longest_piece)) + 1;
    if (wire->life) length = std::min(length, *wire->life);
    length = std::min(length, bytes.size());
    if (length > 0) {
      const int to = 1 - from;
      deliver(wire, to, [wire, to, piece = std::string(bytes.substr(0, length))] {
        Connection* const end = wire->ends[static_cast<std::size_t>(to)];
        if (end != nullptr) end->take(piece);
      });
    }
    bytes.remove_prefix(length);
    if (!wire->life) continue;
    *wire->life -= length;
    if (*wire->life == 0) cut(wire);
  }
}

void Network::deliver(const std::shared_ptr<Wire>& wire, int to, std::function<void()> arrive) {
  loop_.schedule(arrival(*wire, to) - loop_.now(), [this, wire, to, arrive = std::move(arrive)] {
    auto& held = wire->held[static_cast<std::size_t>(to)];
    if (held.empty() && !is_parted(*wire, to)) return arrive();
    if (held.empty()) held_up_.push_back(wire);
    held.push_back(arrive);
  });
}

bool Network::is_parted(const Wire& wire, int to) const {
  return to == 1 ? is_parted(wire.origin, wire.address) : is_parted(wire.address, wire.origin);
}

bool Network::is_parted(const std::string& from, const std::string& to) const {
  return parted_.contains({from, to});
}

void Network::finish(const std::shared_ptr<Wire>& wire, int from) {
  const int to = 1 - from;
  deliver(wire, to, [wire, to] {
    Connection* const end = wire->ends[static_cast<std::size_t>(to)];
    if (end != nullptr) end->end();
  });
}

// What is on its way still comes; each end learns of the cut in its own time.
void Network::cut(const std::shared_ptr<Wire>& wire) {
  wire->broken = true;
  transcript_.add("network", wire->name + (wire->cut_unseen ? " is cut unseen" : " is cut"));
  if (wire->cut_unseen) return;
  finish(wire, 0);
  finish(wire, 1);
}

Milliseconds Network::silence(const Wire& wire) const {
  if (wire.broken) return Milliseconds{0};
  return std::max(Milliseconds{0}, loop_.now() - std::ranges::max(wire.last_arrival));
}

Milliseconds Network::arrival(Wire& wire, int to) {
  Milliseconds delay = dice_.between(weather_.shortest_delay, weather_.longest_delay);
  if (dice_.happens(weather_.stalled)) delay += dice_.between({}, weather_.longest_stall);
  Milliseconds& last = wire.last_arrival[static_cast<std::size_t>(to)];
  last = std::max(last, loop_.now() + delay);
  return last;
}

}  // namespace lineweir::simulation

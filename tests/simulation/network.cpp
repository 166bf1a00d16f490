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
  // Null once that end is gone.
  std::array<Connection*, 2> ends{};
  // When the last thing that is on its way to an end gets there: nothing overtakes it.
  std::array<Milliseconds, 2> last_arrival{};
  // Bytes that still pass before the connection is cut; none where it never is.
  std::optional<std::size_t> life;
  bool broken = false;
  bool cut_unseen = false;
};

namespace {

constexpr int longest_piece = 40;

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
  loop_.schedule(delay,
                 [this, address, from, done = std::move(done)] { establish(address, from, done); });
}

void Network::establish(const std::string& address, const std::string& from, const Taker& done) {
  const auto listener = listeners_.find(address);
  if (listener == listeners_.end() || dice_.happens(weather_.refused)) {
    transcript_.add("network", address + " refuses a connection");
    return done(nullptr);
  }
  const auto wire = std::make_shared<Wire>(
      Wire{*this, "connection " + std::to_string(++connections_), from, {}, {}, {}, false, false});
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
    if (length > 0) deliver(wire, 1 - from, std::string(bytes.substr(0, length)));
    bytes.remove_prefix(length);
    if (!wire->life) continue;
    *wire->life -= length;
    if (*wire->life == 0) cut(wire);
  }
}

void Network::deliver(const std::shared_ptr<Wire>& wire, int to, std::string bytes) {
  loop_.schedule(arrival(*wire, to) - loop_.now(), [wire, to, bytes = std::move(bytes)] {
    Connection* const end = wire->ends[static_cast<std::size_t>(to)];
    if (end != nullptr) end->take(bytes);
  });
}

void Network::finish(const std::shared_ptr<Wire>& wire, int from) {
  const int to = 1 - from;
  loop_.schedule(arrival(*wire, to) - loop_.now(), [wire, to] {
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

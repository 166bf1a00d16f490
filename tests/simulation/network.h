#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exchange/dice.h"
#include "platform/scripted/virtual_event_loop.h"
#include "simulation/transcript.h"

namespace lineweir::simulation {

using platform::Milliseconds;

// How bad a network is. Probabilities from 0 to 1.
struct Weather {
  Milliseconds shortest_delay{1};
  Milliseconds longest_delay{80};
  // Of each piece that is sent: it and all behind it on this connection wait for a while.
  double stalled = 0.01;
  Milliseconds longest_stall{3000};
  // Of each attempt to connect.
  double refused = 0.05;
  double late = 0.05;
  Milliseconds longest_lateness{8000};
  // Of each connection: it is cut behind a byte before `longest_life`, counted in both directions.
  double cut = 0.3;
  int longest_life = 2000;
  // Of each cut: neither end is told, and what is sent from then on is lost.
  double cut_unseen = 0;
};

struct Wire;

// One end of a connection. Bytes come in the order in which they were sent, in pieces that have
// nothing to do with those of the sender. An end that is destroyed is closed.
class Connection {
 public:
  Connection(std::shared_ptr<Wire> wire, int side);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Whether this end knows nothing of an end of the connection.
  bool is_open() const { return open_; }
  // Where the one who connected is.
  const std::string& origin() const;
  // How long nothing has been on its way in either direction; 0 while anything is, and where the
  // connection has ended.
  Milliseconds silence() const;
  // On a closed connection nothing happens.
  void send(std::string_view bytes);
  // The other end is told once it has got what was sent before. Nothing is told to this one.
  void close();

  // Set by whoever holds this end. `on_closed` is told once: the other end has closed, or the
  // connection was cut.
  std::function<void(std::string_view bytes)> on_bytes;
  std::function<void()> on_closed;

 private:
  friend class Network;

  void take(std::string_view bytes);
  void end();

  std::shared_ptr<Wire> wire_;
  int side_;
  bool open_ = true;
};

// A network in virtual time whose chances follow a seed: connections are refused, come late, stall
// and are cut at any byte; two of them never wait for each other, so that what is sent first on one
// may come after what is sent later on another.
class Network {
 public:
  using Taker = std::function<void(std::unique_ptr<Connection> connection)>;

  // The loop and the transcript outlive the network, and the network all ends of connections.
  Network(platform::VirtualEventLoop& loop, Transcript& transcript, const Weather& weather,
          std::uint64_t seed);

  // Whoever connects to the address, from now on, is given to `accept`. Nobody listens at first.
  void listen(const std::string& address, Taker accept);
  void stop_listening(const std::string& address);

  // From now on; a connection that is to be cut later still is.
  void set_weather(const Weather& weather) { weather_ = weather; }

  // What goes from the one place to the other waits, until all is mended: addresses that somebody
  // listens at, and places that somebody connects from. Whoever tries to connect meanwhile may give
  // up.
  void part(const std::string& from, const std::string& to);
  void mend();

  // Tells later: this end of the connection, or none where it is refused.
  void connect(const std::string& address, Taker done, const std::string& from = {});

 private:
  friend class Connection;

  void establish(const std::string& address, const std::string& from, const Taker& done);
  void carry(const std::shared_ptr<Wire>& wire, int from, std::string_view bytes);
  void finish(const std::shared_ptr<Wire>& wire, int from);
  void cut(const std::shared_ptr<Wire>& wire);
  void deliver(const std::shared_ptr<Wire>& wire, int to, std::function<void()> arrive);
  bool is_parted(const Wire& wire, int to) const;
  bool is_parted(const std::string& from, const std::string& to) const;
  void try_to_establish(const std::string& address, const std::string& from, const Taker& done,
                        Milliseconds given_up_at);
  Milliseconds silence(const Wire& wire) const;
  Milliseconds arrival(Wire& wire, int to);

  platform::VirtualEventLoop& loop_;
  Transcript& transcript_;
  Weather weather_;
  exchange::Dice dice_;
  std::map<std::string, Taker> listeners_;
  std::set<std::pair<std::string, std::string>> parted_;
  // Those on which something waits for the mending.
  std::vector<std::shared_ptr<Wire>> held_up_;
  int connections_ = 0;
};

}  // namespace lineweir::simulation

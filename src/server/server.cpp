#include "server/server.h"

#include <algorithm>
#include <list>
#include <set>
#include <utility>

#include "server/admin_services.h"
#include "server/admin_session.h"
#include "server/first_user.h"
#include "server/metrics.h"
#include "server/neighbours.h"
#include "server/remote_seats.h"
#include "server/retention.h"
#include "server/session.h"
#include "server/still_true.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using platform::Milliseconds;

constexpr Milliseconds beat_every = 1s;
// The loop was so late because the machine or the process was stopped.
constexpr Milliseconds stood_still = 1s;
constexpr Milliseconds store_read_again_after = 2s;
// What can't be written by then is given up, and reported.
constexpr Milliseconds last_writes_within = 10s;
// Nobody is told of lines that only seem free, since their exchange has not answered yet. One that
// can be reached has told all within this time.
constexpr Milliseconds letters_waited_for = 1s;
constexpr Milliseconds letters_looked_at_every = 20ms;
// One that is reached later has told of its lines by then.
constexpr Milliseconds letters_known_after = 10s;
// Consoles leave a server five seconds ahead of the end that they are told; one more is for the
// way.
constexpr int left_ahead = 6;

}  // namespace

class Server::Inside {
 public:
  Inside(ServerServices services, ServerOptions options);
  ~Inside();
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;

  void start(std::function<void()> serving,
             std::function<void(std::string name, std::string password)> first_user);
  void accept(std::unique_ptr<platform::Connection> connection);
  void accept_admin(std::unique_ptr<platform::Connection> connection);
  void publish(platform::RemoteService& service);
  void reconfigure(ServerOptions options);
  void shut_down(int seconds, const std::string& text, std::function<void()> done);
  std::string metrics() const;

  std::function<void(int seconds, std::string text)> on_shutdown_asked;

 private:
  void begin(std::function<void()> serving,
             std::function<void(std::string name, std::string password)> first_user);
  void serve(bool is_new, std::function<void()> serving,
             std::function<void(std::string name, std::string password)> first_user);
  void wait_for_letters(Milliseconds until, std::function<void()> done);
  void learn_letters(int group, Milliseconds until);
  void write_what_was_left(std::function<void()> done);
  void write_left(const std::set<std::int64_t>& known_calls, std::function<void()> done);
  void read_known_calls(std::function<void(const std::set<std::int64_t>&)> done);
  void read_store(std::function<void(platform::StoredState)> done);
  void take_over(platform::StoredState state);
  void make_first_user(std::function<void(std::string name, std::string password)> told);
  void begin_group(const GroupOptions& options, const platform::GroupMemory* memory);
  void watch_exchange(Group& group);
  void remove_empty_groups();
  void beat();
  void end_sessions();
  void remove_later(Session& session);
  void end_seats(const std::string& user, const std::string& why);
  void tell_new_rights(const std::string& user);
  void tell_groups();
  std::size_t open_connections() const;
  std::size_t connections_from(const std::string& peer) const;
  // Ends a connection, of the peer where one is named, that nobody has been let in on; false where
  // there is none.
  bool make_room(const std::string& peer);
  AdminServices admin_services();
  void after(Milliseconds delay, std::function<void()> call);

  ServerServices services_;
  ServerOptions options_;
  Figures figures_;
  StoreOutbox outbox_;
  Audit audit_;
  CallBook calls_;
  CallerMemory memory_;
  Context context_;
  Accounts accounts_;
  LoginDesk logins_;
  Groups groups_;
  SeatBook seats_;
  Neighbours neighbours_;
  Retention retention_;
  std::map<std::string, std::string> told_at_login_;
  std::list<std::unique_ptr<Session>> sessions_;
  AdminServices admin_services_;
  std::list<std::unique_ptr<AdminSession>> admins_;
  std::unique_ptr<RemoteSeats> remote_seats_;
  // Of groups that the configuration doesn't have any more.
  std::set<int> ending_groups_;
  bool serving_ = false;
  Milliseconds beat_due_{0};
  platform::EventLoop::CallId next_beat_ = 0;
  platform::EventLoop::CallId shutdown_ = 0;
  Milliseconds ends_at_{0};
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

Server::Inside::Inside(ServerServices services, ServerOptions options)
    : services_(std::move(services)),
      options_(std::move(options)),
      outbox_(services_.loop, services_.store, services_.log, {services_.journal, services_.epoch}),
      audit_(services_.clock, services_.random, outbox_),
      calls_(services_.clock, outbox_, services_.epoch),
      memory_(services_.store, services_.clock, outbox_, audit_),
      context_{services_.loop, services_.clock, services_.letters,
               services_.log,  figures_,        outbox_,
               audit_,         calls_,          memory_},
      accounts_(outbox_),
      logins_(context_, accounts_, services_.passwords),
      seats_(context_, groups_),
      neighbours_(
          accounts_, memory_, outbox_,
          {[this](const std::string& user) { tell_new_rights(user); },
           [this](const std::string& user, const std::string& why) { end_seats(user, why); },
           [this] { tell_groups(); }}),
      retention_(context_, services_.store),
      admin_services_(admin_services()) {
  services_.store.on_trouble = [this](const std::string& trouble) {
    if (trouble.empty()) return services_.log(LogLevel::Notice, "the store is well again");
    services_.log(LogLevel::Error, "the store: " + trouble);
  };
  services_.store.on_news = [this](const platform::StoreNews& news) {
    if (serving_) neighbours_.take(news);
  };
  memory_.on_change = [this](const std::string& key) {
    for (const auto& [number, group] : groups_) group->known_callers().flag_changed(key);
  };
}

Server::Inside::~Inside() {
  services_.store.on_trouble = nullptr;
  services_.store.on_news = nullptr;
  services_.loop.cancel(next_beat_);
  services_.loop.cancel(shutdown_);
  remote_seats_.reset();
  sessions_.clear();
}

void Server::Inside::start(std::function<void()> serving,
                           std::function<void(std::string name, std::string password)> first_user) {
  write_what_was_left(
      [this, serving = std::move(serving), first_user = std::move(first_user)]() mutable {
        begin(std::move(serving), std::move(first_user));
      });
}

void Server::Inside::write_what_was_left(std::function<void()> done) {
  if (services_.journal == nullptr) return done();
  if (has_led_alone(services_.journal->left(), services_.epoch)) return write_left({}, done);
  read_known_calls([this, done = std::move(done)](const std::set<std::int64_t>& known) {
    write_left(known, done);
  });
}

void Server::Inside::write_left(const std::set<std::int64_t>& known_calls,
                                std::function<void()> done) {
  auto left = still_true(services_.journal->left(), services_.epoch, known_calls);
  if (left.empty()) {
    services_.journal->clear();
    return done();
  }
  services_.log(LogLevel::Notice, "the journal holds " + std::to_string(left.size()) +
                                      " records that the store has not taken yet");
  services_.store.write(
      left, [this, alive = std::weak_ptr(alive_), done = std::move(done)](bool written) {
        if (!alive.lock()) return;
        if (!written)
          return after(store_read_again_after, [this, done] { write_what_was_left(done); });
        services_.journal->clear();
        done();
      });
}

// Of the calls in the journal those that the store has already.
void Server::Inside::read_known_calls(std::function<void(const std::set<std::int64_t>&)> done) {
  platform::Moment since = platform::Moment::max();
  std::map<std::int64_t, platform::CallRecord> ours;
  for (const platform::StoreChange& change : services_.journal->left().changes) {
    const auto* const call = std::get_if<platform::CallRecord>(&change);
    if (call == nullptr) continue;
    since = std::min(since, call->began);
    ours[call->id] = *call;
  }
  if (since == platform::Moment::max()) return done({});
  read_store([this, since, ours, done = std::move(done)](const platform::StoredState& state) {
    std::set<std::int64_t> known;
    for (const platform::CallRecord& call : state.open_calls) known.insert(call.id);
    services_.store.calls({.since = since}, [this, alive = std::weak_ptr(alive_), known, ours,
                                             done](const auto& calls) mutable {
      if (!alive.lock()) return;
      if (!calls) return after(store_read_again_after, [this, done] { read_known_calls(done); });
      for (const platform::CallRecord& call : *calls) {
        const auto left = ours.find(call.id);
        if (left == ours.end() || !was_only_closed(call, left->second)) known.insert(call.id);
      }
      done(known);
    });
  });
}

void Server::Inside::begin(std::function<void()> serving,
                           std::function<void(std::string name, std::string password)> first_user) {
  read_store([this, serving = std::move(serving),
              first_user = std::move(first_user)](platform::StoredState state) mutable {
    const bool is_new = state.accounts.empty();
    take_over(std::move(state));
    wait_for_letters(services_.loop.now() + letters_waited_for,
                     [this, is_new, serving = std::move(serving),
                      first_user = std::move(first_user)] { serve(is_new, serving, first_user); });
  });
}

void Server::Inside::serve(bool is_new, std::function<void()> serving,
                           std::function<void(std::string name, std::string password)> first_user) {
  neighbours_.tell_places(options_);
  retention_.set(options_.retention);
  retention_.start();
  audit_.note({}, "server started");
  serving_ = true;
  beat_due_ = services_.loop.now() + beat_every;
  next_beat_ = services_.loop.schedule(beat_every, [this] { beat(); });
  if (!is_new) return serving();
  make_first_user([first_user = std::move(first_user), serving = std::move(serving)](
                      const std::string& name, const std::string& password) {
    first_user(name, password);
    serving();
  });
}

void Server::Inside::wait_for_letters(Milliseconds until, std::function<void()> done) {
  const bool all_told = std::ranges::all_of(
      groups_, [](const auto& group) { return group.second->lines().exchange().has_told_all(); });
  if (all_told || services_.loop.now() >= until) return done();
  after(letters_looked_at_every,
        [this, until, done = std::move(done)] { wait_for_letters(until, done); });
}

// What a box doesn't tell, which has fewer lines, is waited for only so long.
void Server::Inside::learn_letters(int number, Milliseconds until) {
  Group* const group = seats_.find_group(number);
  if (group == nullptr || !group->lines().exchange().is_reached()) return;
  const exchange::Exchange& exchange = group->lines().exchange();
  if (exchange.has_told_all() || services_.loop.now() >= until) return group->letters_known();
  after(letters_looked_at_every, [this, number, until] { learn_letters(number, until); });
}

void Server::Inside::read_store(std::function<void(platform::StoredState)> done) {
  services_.store.load([this, alive = std::weak_ptr(alive_),
                        done = std::move(done)](std::optional<platform::StoredState> state) {
    if (!alive.lock()) return;
    if (state) return done(std::move(*state));
    services_.log(LogLevel::Error, "the store can't be read; it is tried again");
    after(store_read_again_after, [this, done] { read_store(done); });
  });
}

void Server::Inside::take_over(platform::StoredState state) {
  accounts_.take_over(std::move(state.accounts));
  memory_.take_over(std::move(state.flagged_callers));
  neighbours_.take_over(std::move(state.studio_places));
  calls_.remember(std::move(state.open_calls));
  for (const GroupOptions& options : options_.groups) {
    const auto memory = std::find_if(state.groups.begin(), state.groups.end(),
                                     [&](const auto& of) { return of.group == options.number; });
    begin_group(options, memory == state.groups.end() ? nullptr : &*memory);
  }
}

void Server::Inside::make_first_user(
    std::function<void(std::string name, std::string password)> told) {
  const std::string name(first_user_name);
  std::string password = random_password(services_.random);
  services_.passwords.hash(password, [this, alive = std::weak_ptr(alive_), name, password,
                                      told = std::move(told)](const std::string& hash) {
    if (!alive.lock() || !accounts_.empty()) return;
    accounts_.save(first_account(hash));
    audit_.note({}, "user added", name);
    told(name, password);
  });
}

void Server::Inside::begin_group(const GroupOptions& options, const platform::GroupMemory* memory) {
  auto group = std::make_unique<Group>(context_, options, services_.make_exchange(options), memory);
  watch_exchange(*group);
  groups_[options.number] = std::move(group);
}

// A call that stood when the last server ended goes on where the exchange still has it.
void Server::Inside::watch_exchange(Group& group) {
  exchange::Exchange& exchange = group.lines().exchange();
  const int number = group.number();
  exchange.on_reached = [this, number](bool reached) {
    Group* const of_number = seats_.find_group(number);
    if (of_number == nullptr) return;
    const std::string& name = of_number->options().name;
    if (reached) {
      services_.log(LogLevel::Notice, name + ": the exchange is reached");
      learn_letters(number, services_.loop.now() + letters_known_after);
    } else {
      services_.log(LogLevel::Error, name + ": the exchange can't be reached");
      of_number->tell_persons("The telephone equipment of " + name +
                              " does not answer. The lines show what was last known of them.");
    }
  };
}

void Server::Inside::accept(std::unique_ptr<platform::Connection> connection) {
  const std::string peer = connection->peer();
  const auto most = static_cast<std::size_t>(options_.seats);
  const auto most_of_address = static_cast<std::size_t>(options_.seats_of_address);
  if (!serving_) return;
  if (connections_from(peer) >= most_of_address && !make_room(peer)) {
    return figures_.refuse(Refusal::TooManySeats);
  }
  if (open_connections() >= most && !make_room({})) return figures_.refuse(Refusal::TooManySeats);
  ++figures_.connections;
  sessions_.push_back(std::make_unique<Session>(
      seats_.new_number(), std::move(connection),
      SessionServices{context_, accounts_, logins_, seats_, groups_, neighbours_.places(),
                      options_.fixed_seats, told_at_login_},
      [this](Session& session) { remove_later(session); }));
}

std::size_t Server::Inside::open_connections() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(sessions_, [](const auto& session) { return !session->is_over(); }));
}

std::size_t Server::Inside::connections_from(const std::string& peer) const {
  return static_cast<std::size_t>(std::ranges::count_if(sessions_, [&](const auto& session) {
    return !session->is_over() && session->place() == peer;
  }));
}

// Who only takes places keeps nobody out: of the connections that aren't let in, the oldest one of
// the address that has most of them gives way.
bool Server::Inside::make_room(const std::string& peer) {
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
  figures_.refuse(Refusal::TooManySeats);
  (*oldest)->give_way();
  return true;
}

// A session ends in the middle of its own work.
void Server::Inside::remove_later(Session& session) {
  after(Milliseconds{0}, [this, &session] {
    std::erase_if(sessions_, [&](const auto& held) { return held.get() == &session; });
    remove_empty_groups();
  });
}

void Server::Inside::accept_admin(std::unique_ptr<platform::Connection> connection) {
  admins_.push_back(std::make_unique<AdminSession>(
      std::move(connection), admin_services_, [this](AdminSession& session) {
        after(Milliseconds{0}, [this, &session] {
          std::erase_if(admins_, [&](const auto& held) { return held.get() == &session; });
        });
      }));
}

AdminServices Server::Inside::admin_services() {
  return {context_,
          services_.store,
          services_.passwords,
          accounts_,
          logins_,
          seats_,
          groups_,
          [this] { return serving_; },
          [this](const std::string& user) { tell_new_rights(user); },
          [this](const std::string& user, const std::string& why) { end_seats(user, why); },
          [this](int seconds, const std::string& text) {
            if (on_shutdown_asked) on_shutdown_asked(seconds, text);
          },
          [this](std::function<void(bool read)> done) {
            services_.store.load([this, alive = std::weak_ptr(alive_), done = std::move(done)](
                                     std::optional<platform::StoredState> state) {
              if (!alive.lock()) return;
              if (state) accounts_.take_over(std::move(state->accounts));
              done(state.has_value());
            });
          }};
}

void Server::Inside::publish(platform::RemoteService& service) {
  remote_seats_ = std::make_unique<RemoteSeats>(context_, seats_, groups_, service);
}

void Server::Inside::reconfigure(ServerOptions options) {
  options_ = std::move(options);
  ending_groups_.clear();
  for (const auto& [number, group] : groups_) ending_groups_.insert(number);
  for (const GroupOptions& wanted : options_.groups) {
    ending_groups_.erase(wanted.number);
    Group* const group = seats_.find_group(wanted.number);
    if (group == nullptr) {
      begin_group(wanted, nullptr);
    } else {
      group->change(wanted);
    }
  }
  neighbours_.tell_places(options_);
  retention_.set(options_.retention);
  tell_groups();
  remove_empty_groups();
  audit_.note({}, "configuration read again");
}

void Server::Inside::remove_empty_groups() {
  for (auto number = ending_groups_.begin(); number != ending_groups_.end();) {
    Group* const group = seats_.find_group(*number);
    const bool is_empty = group == nullptr || group->seats().seats().empty();
    if (is_empty) groups_.erase(*number);
    number = is_empty ? ending_groups_.erase(number) : std::next(number);
  }
}

void Server::Inside::beat() {
  const Milliseconds now = services_.loop.now();
  figures_.late = now - beat_due_;
  figures_.worst_late = std::max(figures_.worst_late, figures_.late);
  beat_due_ = now + beat_every;
  next_beat_ = services_.loop.schedule(beat_every, [this] { beat(); });

  const Telling time(time_packet(context_));
  for (const auto& session : sessions_) {
    // A server that stood still has not heard what the seats said meanwhile.
    if (figures_.late > stood_still) session->forgive_silence(figures_.late);
    session->look_after_silence();
    if (!session->is_over() && session->group != 0) session->tell(time);
  }
  seats_.look_after_vanished();
}

void Server::Inside::shut_down(int seconds, const std::string& text, std::function<void()> done) {
  const Milliseconds wait = std::chrono::seconds(std::max(seconds, 0));
  const Milliseconds now = services_.loop.now();
  if (shutdown_ != 0 && ends_at_ <= now + wait) return;
  services_.loop.cancel(shutdown_);
  ends_at_ = now + wait;
  ServerPacket notice =
      server_packet(ServerCommand::SrvShutdownNotice, no_value, services_.letters.from_utf8(text));
  // A server that follows this one serves from its end on, so nobody is to leave ahead of that.
  const bool is_followed = services_.epoch != 0;
  notice.AltInfo = field_byte(std::clamp(seconds + (is_followed ? left_ahead : 0), 0, 254));
  const Telling told(notice);
  for (const auto& session : sessions_) {
    if (!session->is_over() && !session->user.empty()) session->tell(told);
  }
  audit_.note({}, "server ends", text);
  shutdown_ = services_.loop.schedule(wait, [this, done = std::move(done)] {
    end_sessions();
    // Whichever comes first.
    const auto once = std::make_shared<std::function<void()>>(done);
    const auto end = [this, once] {
      if (outbox_.waiting() != 0) {
        const std::string records = std::to_string(outbox_.waiting()) + " records";
        services_.log(LogLevel::Error,
                      "the store could not be written: " + records +
                          (services_.journal == nullptr ? " are lost" : " wait in the journal"));
      }
      if (const auto call = std::exchange(*once, nullptr)) call();
    };
    after(last_writes_within, end);
    outbox_.when_empty(end);
  });
}

void Server::Inside::end_sessions() {
  serving_ = false;
  remote_seats_.reset();
  for (const auto& session : sessions_) session->end();
}

void Server::Inside::tell_new_rights(const std::string& user) {
  for (const auto& session : sessions_) {
    if (!session->is_over() && session->user == user) session->take_new_rights();
  }
}

void Server::Inside::tell_groups() {
  for (const auto& session : sessions_) {
    if (!session->is_over() && session->group != 0) session->tell_groups();
  }
}

void Server::Inside::end_seats(const std::string& user, const std::string& why) {
  for (const auto& session : sessions_) {
    if (session->is_over() || session->user != user) continue;
    session->tell_person(why);
    session->end();
  }
}

std::string Server::Inside::metrics() const {
  QueueFigures queues;
  for (const auto& session : sessions_) {
    if (session->is_over()) continue;
    ++queues.connections;
    queues.queued_bytes += session->queued();
    queues.longest_queue = std::max(queues.longest_queue, session->queued());
  }
  return metrics_text(context_, seats_, groups_, logins_, queues);
}

void Server::Inside::after(Milliseconds delay, std::function<void()> call) {
  services_.loop.schedule(delay, [alive = std::weak_ptr(alive_), call = std::move(call)] {
    if (alive.lock()) call();
  });
}

Server::Server(ServerServices services, ServerOptions options)
    : inside_(std::make_unique<Inside>(std::move(services), std::move(options))) {
  inside_->on_shutdown_asked = [this](int seconds, std::string text) {
    if (on_shutdown_asked) on_shutdown_asked(seconds, std::move(text));
  };
}

Server::~Server() = default;

void Server::start(std::function<void()> serving,
                   std::function<void(std::string name, std::string password)> first_user) {
  inside_->start(std::move(serving), std::move(first_user));
}

void Server::accept(std::unique_ptr<platform::Connection> connection) {
  inside_->accept(std::move(connection));
}

void Server::accept_admin(std::unique_ptr<platform::Connection> connection) {
  inside_->accept_admin(std::move(connection));
}

void Server::publish(platform::RemoteService& service) { inside_->publish(service); }

void Server::reconfigure(ServerOptions options) { inside_->reconfigure(std::move(options)); }

void Server::shut_down(int seconds, const std::string& text, std::function<void()> done) {
  inside_->shut_down(seconds, text, std::move(done));
}

std::string Server::metrics() const { return inside_->metrics(); }

}  // namespace lineweir::server

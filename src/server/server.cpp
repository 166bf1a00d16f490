#include "server/server.h"

#include <algorithm>
#include <list>
#include <set>
#include <utility>

#include "server/admin_services.h"
#include "server/admin_session.h"
#include "server/first_user.h"
#include "server/journal_replay.h"
#include "server/metrics.h"
#include "server/neighbours.h"
#include "server/remote_seats.h"
#include "server/retention.h"
#include "server/seat_connections.h"

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
  const Group* find_group(int number) const { return seats_.find_group(number); }
  bool shut_down(int seconds, const std::string& text, std::function<void()> done);
  std::string metrics() const;
  bool has_kept_all() const { return outbox_.has_kept_all(); }

  std::function<void(int seconds, std::string text)> on_shutdown_asked;

 private:
  void begin(std::function<void()> serving,
             std::function<void(std::string name, std::string password)> first_user);
  void serve(bool is_new, std::function<void()> serving,
             std::function<void(std::string name, std::string password)> first_user);
  void wait_for_letters(Milliseconds until, std::function<void()> done);
  void learn_letters(int group, Milliseconds until);
  void read_store(std::function<void(platform::StoredState)> done);
  void take_over(platform::StoredState state);
  // What a backup has brought into a store that was new.
  void take_restored(platform::StoredState state);
  void make_first_user(std::function<void(std::string name, std::string password)> told);
  void begin_group(const GroupOptions& options);
  void watch_exchange(Group& group);
  // Whether there was one.
  bool remove_empty_groups();
  void beat();
  void tell_end();
  void end_sessions();
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
  std::optional<EndNotice> end_notice_;
  SeatConnections sessions_;
  // Nothing where there is no journal.
  std::optional<JournalReplay> replay_;
  AdminServices admin_services_;
  std::list<std::unique_ptr<AdminSession>> admins_;
  std::unique_ptr<RemoteSeats> remote_seats_;
  // Of groups that the configuration doesn't have any more.
  std::set<int> ending_groups_;
  // Of groups that aren't there now, for when the configuration has them again.
  std::map<int, platform::GroupMemory> memories_;
  bool knows_store_ = false;
  bool serving_ = false;
  Milliseconds beat_due_{0};
  platform::EventLoop::CallId next_beat_ = 0;
  platform::EventLoop::CallId shutdown_ = 0;
  platform::EventLoop::CallId next_notice_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

Server::Inside::Inside(ServerServices services, ServerOptions options)
    : services_(std::move(services)),
      options_(std::move(options)),
      outbox_(services_.loop, services_.store, services_.log,
              {.journal = services_.journal,
               .epoch = services_.epoch,
               .holds_former = services_.journal != nullptr}),
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
          {[this](const std::string& user) { sessions_.tell_new_rights(user); },
           [this](const std::string& user, const std::string& why) { sessions_.end(user, why); },
           [this] { sessions_.tell_groups(); }}),
      retention_(context_, services_.store),
      sessions_(context_,
                SessionServices{context_, accounts_, logins_, seats_, groups_, neighbours_.places(),
                                options_.fixed_seats, told_at_login_, end_notice_},
                seats_, options_),
      admin_services_(admin_services()) {
  if (services_.journal != nullptr) {
    replay_.emplace(services_.loop, services_.store, *services_.journal, services_.epoch,
                    services_.log);
  }
  services_.store.on_trouble = [this](const std::string& trouble) {
    if (trouble.empty()) {
      services_.log(LogLevel::Notice, "the store is well again");
      for (const auto& [number, group] : groups_) group->known_callers().store_is_back();
      return;
    }
    services_.log(LogLevel::Error, "the store: " + trouble);
  };
  services_.store.on_news = [this](const platform::StoreNews& news) {
    if (knows_store_) neighbours_.take(news);
  };
  calls_.on_ended = [this](const platform::CallRecord& call) {
    const std::string key = caller_key(call);
    if (key.empty()) return;
    // He may be on another line too, whose history is that of the store.
    outbox_.when_written([this, key] {
      for (const auto& [number, group] : groups_) group->known_callers().history_changed(key);
    });
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
  services_.loop.cancel(next_notice_);
}

void Server::Inside::start(std::function<void()> serving,
                           std::function<void(std::string name, std::string password)> first_user) {
  if (!replay_) return begin(std::move(serving), std::move(first_user));
  replay_->run([this, serving = std::move(serving), first_user = std::move(first_user)]() mutable {
    outbox_.former_is_kept();
    begin(std::move(serving), std::move(first_user));
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
  if (!all_told && services_.loop.now() < until) {
    after(letters_looked_at_every,
          [this, until, done = std::move(done)] { wait_for_letters(until, done); });
    return;
  }
  for (const auto& [number, group] : groups_) {
    if (!group->lines().exchange().is_reached()) group->lines().show_last_known();
  }
  done();
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
  knows_store_ = true;
  accounts_.take_over(std::move(state.accounts));
  memory_.take_over(state.flagged_callers);
  neighbours_.take_over(std::move(state.studio_places));
  calls_.remember(std::move(state.open_calls));
  for (platform::GroupMemory& memory : state.groups) memories_[memory.group] = std::move(memory);
  std::set<int> served;
  for (const GroupOptions& options : options_.groups) {
    served.insert(options.number);
    begin_group(options);
  }
  if (!services_.owns_store) return;
  // The configuration has lost these meanwhile.
  for (auto& [number, memory] : memories_) {
    if (!calls_.remembers(number, memory.next_call)) continue;
    memory.next_call = platform::GroupMemory{}.next_call;
    outbox_.put(memory);
  }
  calls_.close_forgotten_but(served);
}

void Server::Inside::take_restored(platform::StoredState state) {
  accounts_.take_over(std::move(state.accounts));
  memory_.take_over(state.flagged_callers);
  calls_.close_restored(state.open_calls);
  for (const platform::GroupMemory& memory : state.groups) {
    Group* const group = seats_.find_group(memory.group);
    if (group != nullptr) {
      group->take_restored(memory);
    } else {
      platform::GroupMemory& held = memories_[memory.group] = memory;
      held.next_call = platform::GroupMemory{}.next_call;
      outbox_.put(held);
    }
  }
}

void Server::Inside::make_first_user(
    std::function<void(std::string name, std::string password)> told) {
  const std::string name(first_user_name);
  std::string password = random_password(services_.random);
  services_.passwords.hash(password, [this, alive = std::weak_ptr(alive_), name, password,
                                      told = std::move(told)](const std::string& hash) {
    if (!alive.lock() || !accounts_.empty()) return;
    accounts_.add(first_account(hash));
    audit_.note({}, "user added", name);
    told(name, password);
  });
}

void Server::Inside::begin_group(const GroupOptions& options) {
  const auto memory = memories_.extract(options.number);
  auto group = std::make_unique<Group>(context_, options, services_.make_exchange(options),
                                       memory.empty() ? nullptr : &memory.mapped());
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
      of_number->tell_persons(of_number->exchange_is_away());
    }
  };
}

void Server::Inside::accept(std::unique_ptr<platform::Connection> connection) {
  if (serving_) sessions_.accept(std::move(connection));
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
          [this]() -> std::optional<Milliseconds> {
            if (!end_notice_) return std::nullopt;
            return end_notice_->ends_at() - services_.loop.now();
          },
          [this](const std::string& user) { sessions_.tell_new_rights(user); },
          [this](const std::string& user, const std::string& why) { sessions_.end(user, why); },
          [this](int seconds, const std::string& text) {
            if (on_shutdown_asked) on_shutdown_asked(seconds, text);
          },
          [this](std::function<void(bool read)> done) {
            services_.store.load([this, alive = std::weak_ptr(alive_), done = std::move(done)](
                                     std::optional<platform::StoredState> state) {
              if (!alive.lock()) return;
              if (state) take_restored(std::move(*state));
              done(state.has_value());
            });
          }};
}

void Server::Inside::publish(platform::RemoteService& service) {
  remote_seats_ = std::make_unique<RemoteSeats>(context_, seats_, groups_, service);
}

void Server::Inside::reconfigure(ServerOptions options) {
  options_ = std::move(options);
  // The groups begin with what the store tells.
  if (!knows_store_) return;
  for (const auto& [number, group] : groups_) ending_groups_.insert(number);
  for (const GroupOptions& wanted : options_.groups) {
    ending_groups_.erase(wanted.number);
    Group* const group = seats_.find_group(wanted.number);
    if (group == nullptr) {
      begin_group(wanted);
    } else {
      group->change(wanted);
    }
  }
  neighbours_.tell_places(options_);
  retention_.set(options_.retention);
  remove_empty_groups();
  sessions_.tell_groups();
  audit_.note({}, "configuration read again");
}

bool Server::Inside::remove_empty_groups() {
  const std::size_t before = groups_.size();
  for (auto number = ending_groups_.begin(); number != ending_groups_.end();) {
    Group* const group = seats_.find_group(*number);
    if (group != nullptr && !group->seats().seats().empty()) {
      ++number;
      continue;
    }
    if (group != nullptr) {
      group->end();
      memories_[*number] = group->memory();
      groups_.erase(*number);
    }
    number = ending_groups_.erase(number);
  }
  return groups_.size() != before;
}

void Server::Inside::beat() {
  const Milliseconds now = services_.loop.now();
  figures_.late = now - beat_due_;
  figures_.worst_late = std::max(figures_.worst_late, figures_.late);
  beat_due_ = now + beat_every;
  next_beat_ = services_.loop.schedule(beat_every, [this] { beat(); });

  // A server that stood still has not heard what the seats said meanwhile.
  sessions_.beat(figures_.late > stood_still ? figures_.late : Milliseconds{0});
  seats_.look_after_vanished();
  if (remove_empty_groups()) sessions_.tell_groups();
}

bool Server::Inside::shut_down(int seconds, const std::string& text, std::function<void()> done) {
  const Milliseconds wait = std::chrono::seconds(std::max(seconds, 0));
  const Milliseconds now = services_.loop.now();
  if (end_notice_ && end_notice_->ends_at() <= now + wait) return false;
  services_.loop.cancel(shutdown_);
  end_notice_.emplace(now + wait, text, services_.epoch != 0);
  tell_end();
  audit_.note({}, "server ends", text);
  shutdown_ = services_.loop.schedule(wait, [this, done = std::move(done)] {
    end_sessions();
    // Whichever comes first.
    const auto once = std::make_shared<std::function<void()>>(done);
    const auto end = [this, once] {
      if (outbox_.waiting() != 0) {
        const std::string count = std::to_string(outbox_.waiting());
        services_.log(LogLevel::Error,
                      "the store could not be written: " + count +
                          (outbox_.has_kept_all()
                               ? " records wait in the journal"
                               : " records are lost, but for those that the journal holds"));
      } else if (outbox_.holds_former()) {
        services_.log(LogLevel::Error,
                      "the store could not be written: what the last server has left waits in the "
                      "journal");
      }
      if (const auto call = std::exchange(*once, nullptr)) call();
    };
    after(last_writes_within, end);
    outbox_.when_empty(end);
  });
  return true;
}

void Server::Inside::tell_end() {
  services_.loop.cancel(next_notice_);
  sessions_.tell(Telling(end_notice_->packet(context_)));
  const Milliseconds wait = end_notice_->notice_at() - services_.loop.now();
  if (wait <= Milliseconds{0}) return;
  next_notice_ = services_.loop.schedule(wait, [this] { tell_end(); });
}

void Server::Inside::end_sessions() {
  serving_ = false;
  remote_seats_.reset();
  sessions_.end_all();
}

std::string Server::Inside::metrics() const {
  return metrics_text(context_, seats_, groups_, logins_, sessions_.queues());
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

const GroupOptions* Server::running_group(int number) const {
  const Group* const group = inside_->find_group(number);
  return group == nullptr ? nullptr : &group->options();
}

bool Server::shut_down(int seconds, const std::string& text, std::function<void()> done) {
  return inside_->shut_down(seconds, text, std::move(done));
}

bool Server::has_kept_all() const { return inside_->has_kept_all(); }

std::string Server::metrics() const { return inside_->metrics(); }

}  // namespace lineweir::server

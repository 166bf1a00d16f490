#include "simulation/server_machine.h"

#include <utility>

#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

}  // namespace

// What lives and dies with the process.
struct ServerMachine::Process {
  Process(platform::LeaseOffice& office, test::ProcessLoop& loop)
      : lease(office, loop), leadership(loop, lease), passwords(loop) {}

  platform::ScriptedLease lease;
  server::Leadership leadership;
  platform::ScriptedPasswordHash passwords;
  platform::Epoch epoch = 0;
  // Of the one exchange; with the server it goes.
  ExchangeLink* exchange = nullptr;
  std::unique_ptr<StoreLink> store;
  std::unique_ptr<server::Server> server;
  bool serving = false;
  std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

// The server's end of a connection. The machine takes what comes also while the process is stopped;
// what the process sends goes out at the end of its round, if it may still send.
class ServerMachine::ServerEnd final : public platform::Connection {
 public:
  ServerEnd(std::unique_ptr<simulation::Connection> wire, ServerMachine& machine)
      : wire_(std::move(wire)), machine_(machine) {
    wire_->on_bytes = [this](std::string_view bytes) {
      in_ += bytes;
      later([this] { hear(); });
    };
    wire_->on_closed = [this] {
      later([this] {
        if (on_end) on_end(platform::ConnectionEnd::Gone);
      });
    };
  }

  std::string peer() const override { return wire_->origin(); }
  void send(std::string_view bytes) override {
    if (out_.empty()) later([this] { flush(); });
    out_ += bytes;
  }
  std::size_t queued() const override { return 0; }
  void close_when_sent() override {}

 private:
  void later(std::function<void()> call) {
    machine_.loop_.schedule(0ms, [alive = std::weak_ptr(alive_), call = std::move(call)] {
      if (!alive.expired()) call();
    });
  }

  void hear() {
    if (in_.empty() || !on_bytes) return;
    const std::string bytes = std::exchange(in_, {});
    heard_.append(bytes);
    while (const auto body = heard_.first_body()) {
      machine_.on_received(machine_, packet_of(*body));
      heard_.drop_first();
    }
    const auto handler = on_bytes;
    handler(bytes);
  }

  void flush() {
    const auto alive = std::weak_ptr(alive_);
    machine_.look_at_proof();
    if (alive.expired()) return;
    said_.append(out_);
    while (const auto body = said_.first_body()) {
      machine_.on_sent(machine_, packet_of(*body));
      said_.drop_first();
    }
    wire_->send(std::exchange(out_, {}));
  }

  std::unique_ptr<simulation::Connection> wire_;
  ServerMachine& machine_;
  std::string in_;
  std::string out_;
  ReceiveBuffer heard_;
  ReceiveBuffer said_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

ServerMachine::ServerMachine(const StudioGround& ground, std::string name, std::string address,
                             double rate, std::uint64_t seed)
    : ground_(ground),
      name_(std::move(name)),
      address_(std::move(address)),
      loop_(ground.world, rate),
      clock_(ground.world),
      random_(seed) {}

ServerMachine::~ServerMachine() { kill(); }

void ServerMachine::start() {
  if (process_) return;
  ground_.transcript.add(name_, "starts");
  process_ = std::make_unique<Process>(ground_.office, loop_);
  process_->passwords.take(17ms);
  plug();
  process_->leadership.on_lead = [this](platform::Epoch epoch) { lead(epoch); };
  process_->leadership.on_lost = [this] { lose_lead(); };
  process_->leadership.start();
}

void ServerMachine::kill() {
  if (!process_) return;
  ground_.transcript.add(name_, "is killed");
  ground_.network.stop_listening(address_);
  process_->server.reset();
  process_.reset();
  loop_.go_on();
}

void ServerMachine::end_in_order() {
  if (!process_ || !process_->serving || is_stopped()) return;
  ground_.transcript.add(name_, "is told to end");
  process_->server->shut_down(0, "The server ends.", [this, gone = std::weak_ptr(process_->alive)] {
    if (gone.expired()) return;
    loop_.schedule(0ms, [this, gone] {
      if (gone.expired()) return;
      process_->leadership.end();
      kill();
    });
  });
}

void ServerMachine::stop() {
  if (!process_ || is_stopped()) return;
  ground_.transcript.add(name_, "is stopped");
  loop_.stop();
}

void ServerMachine::go_on() {
  if (!is_stopped()) return;
  ground_.transcript.add(name_, "goes on");
  loop_.go_on();
}

platform::Epoch ServerMachine::epoch() const {
  return process_ && process_->server ? process_->epoch : 0;
}

bool ServerMachine::serves() const { return process_ && process_->serving; }

bool ServerMachine::serves_well() const {
  return serves() && believes_to_lead() && store_cable.is_whole() && exchange_cable.is_whole() &&
         process_->exchange->is_reached();
}

bool ServerMachine::believes_to_lead() const {
  return process_ && !is_stopped() && process_->leadership.leads();
}

server::Server& ServerMachine::server() { return *process_->server; }

void ServerMachine::plug() {
  if (!process_) return;
  process_->lease.reaches = lease_cable.there;
  process_->lease.hears = lease_cable.back;
  process_->lease.way = lease_cable.way;
}

void ServerMachine::lead(platform::Epoch epoch) {
  ground_.transcript.add(name_, "leads in epoch " + std::to_string(epoch));
  process_->epoch = epoch;
  process_->store =
      std::make_unique<StoreLink>(ground_.store, ground_.office, loop_, store_cable, epoch);
  process_->server = std::make_unique<server::Server>(
      server::ServerServices{
          loop_, clock_, random_, *process_->store, process_->passwords, letters_,
          [this](server::LogLevel level, const std::string& line) {
            if (level != server::LogLevel::Debug) ground_.transcript.add(name_, line);
          },
          [this](const server::GroupOptions&) {
            auto link = std::make_unique<ExchangeLink>(ground_.room, loop_, exchange_cable,
                                                       [this] { look_at_proof(); });
            process_->exchange = link.get();
            return link;
          },
          &journal_, epoch},
      ground_.options);
  process_->server->start(
      [this] {
        ground_.transcript.add(name_, "serves");
        process_->serving = true;
        on_lead_began(*this);
        ground_.network.listen(address_, [this](std::unique_ptr<simulation::Connection> wire) {
          auto end = std::make_shared<std::unique_ptr<ServerEnd>>(
              std::make_unique<ServerEnd>(std::move(wire), *this));
          loop_.schedule(0ms, [this, end] {
            if (serves()) process_->server->accept(std::move(*end));
          });
        });
      },
      [](const std::string&, const std::string&) {});
}

void ServerMachine::lose_lead() {
  ground_.transcript.add(name_, "has lost its lead");
  ground_.network.stop_listening(address_);
  process_->serving = false;
  process_->exchange = nullptr;
  process_->server.reset();
  process_->store.reset();
}

void ServerMachine::look_at_proof() {
  if (process_) process_->leadership.look_at_proof();
}

}  // namespace lineweir::simulation

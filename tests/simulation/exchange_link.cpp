#include "simulation/exchange_link.h"

#include <utility>

namespace lineweir::simulation {

ExchangeRoom::ExchangeRoom(platform::VirtualEventLoop& world,
                           const exchange::SimulatedExchangeOptions& options)
    : world_(world),
      exchange_(world, options),
      letters_(static_cast<std::size_t>(options.line_count), 'F') {
  exchange_.on_change = [this](exchange::LineChange change, const std::string& number) {
    const char before =
        std::exchange(letters_[static_cast<std::size_t>(change.line)], change.letter);
    if (on_change) on_change(change, before);
    for (ExchangeLink* link : links_) link->hear(change, number);
  };
}

std::string ExchangeRoom::letters() const { return letters_; }

ExchangeLink::ExchangeLink(ExchangeRoom& room, platform::EventLoop& loop, const Cable& cable,
                           std::function<void()> before_sending)
    : room_(room),
      loop_(loop),
      cable_(cable),
      before_sending_(std::move(before_sending)),
      letters_(room.letters_.size(), 'F'),
      answered_at_(loop.now()) {
  room_.links_.push_back(this);
  ask();
}

ExchangeLink::~ExchangeLink() { std::erase(room_.links_, this); }

void ExchangeLink::obey(std::string_view word) {
  order([said = std::string(word)](exchange::SimulatedExchange& exchange) { exchange.obey(said); });
}

void ExchangeLink::take_to_position(int line, int position) {
  order([line, position](exchange::SimulatedExchange& exchange) {
    exchange.take_to_position(line, position);
  });
}

void ExchangeLink::ask() {
  if (reached_ && loop_.now() - answered_at_ > lost_after) set_reached(false);
  later(asked_every, [this] { ask(); });
  if (!cable_.there) return;
  room_.world().schedule(cable_.way, [this, alive = std::weak_ptr(alive_)] {
    if (alive.expired()) return;
    from_exchange([this, letters = room_.letters_] {
      for (std::size_t line = 0; line < letters.size(); ++line) {
        take({static_cast<int>(line), letters[line]}, {});
      }
      answered();
    });
  });
}

void ExchangeLink::hear(exchange::LineChange change, const std::string& number) {
  from_exchange([this, change, number] { take(change, number); });
}

void ExchangeLink::take(exchange::LineChange change, const std::string& number) {
  char& letter = letters_[static_cast<std::size_t>(change.line)];
  if (std::exchange(letter, change.letter) == change.letter) return;
  if (on_change) on_change(change, number);
}

void ExchangeLink::order(std::function<void(exchange::SimulatedExchange&)> work) {
  later(Milliseconds{0}, [this, alive = std::weak_ptr(alive_), work = std::move(work)] {
    // It may destroy this, and with it itself.
    const auto before_sending = before_sending_;
    before_sending();
    if (alive.expired() || !cable_.there) return;
    room_.world().schedule(cable_.way, [&room = room_, work] { work(room.exchange()); });
  });
}

void ExchangeLink::answered() {
  answered_at_ = loop_.now();
  set_reached(true);
}

void ExchangeLink::set_reached(bool reached) {
  if (std::exchange(reached_, reached) == reached) return;
  if (on_reached) on_reached(reached);
}

void ExchangeLink::later(Milliseconds delay, std::function<void()> call) {
  loop_.schedule(delay, [alive = std::weak_ptr(alive_), call = std::move(call)] {
    if (!alive.expired()) call();
  });
}

void ExchangeLink::from_exchange(std::function<void()> call) {
  if (!cable_.back) return;
  room_.world().schedule(cable_.way, [this, alive = std::weak_ptr(alive_), call = std::move(call)] {
    if (!alive.expired()) later(Milliseconds{0}, call);
  });
}

}  // namespace lineweir::simulation

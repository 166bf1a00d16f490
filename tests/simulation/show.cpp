#include "simulation/show.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Milliseconds step = 250ms;
constexpr Milliseconds between_log_looks = 60s;
constexpr Milliseconds mean_between_acts = 2500ms;
constexpr Milliseconds mean_between_fates = 12min;
constexpr Milliseconds patience_without_link = 40s;
constexpr Milliseconds longest_away = 20s;

// Each part's chances are its own, so that one more of them in one part leaves the others alone.
enum class Part : std::uint64_t { Show = 1, Network, BoxedExchange, Seats, Operators = 1000 };

std::uint64_t seed_of(std::uint64_t seed, Part part, std::size_t number = 0) {
  return seed * 1'000'003 + static_cast<std::uint64_t>(part) * 31 + number;
}

studio::BoxedExchangeOptions exchange_options(const ShowOptions& options) {
  studio::BoxedExchangeOptions exchange;
  exchange.seed = seed_of(options.seed, Part::BoxedExchange);
  exchange.boxes = options.seats_at_boxes;
  exchange.callers = {9s, 40s, 90s};
  exchange.auto_operator.emplace();
  return exchange;
}

}  // namespace

Show::Show(const ShowOptions& options)
    : dice_(seed_of(options.seed, Part::Show)),
      network_(loop_, transcript_, options.weather, seed_of(options.seed, Part::Network)),
      room_(loop_, transcript_, exchange_options(options)),
      server_(network_, transcript_, network_address(server_host, server_port)),
      witness_(room_, server_, loop_, transcript_) {
  const int seats = options.seats_at_boxes + options.seats_at_server;
  fates_.resize(static_cast<std::size_t>(seats));
  for (int number = 0; number < seats; ++number) {
    const auto place = static_cast<std::size_t>(number);
    const bool at_box = number < options.seats_at_boxes;
    seats_.push_back(std::make_unique<Seat>(loop_, network_, transcript_, number,
                                            at_box ? SeatLink::SerialBox : SeatLink::Server,
                                            seed_of(options.seed, Part::Seats, place)));
    if (at_box) room_.plug_in(number, seats_.back()->port());
    operators_.push_back(std::make_unique<Operator>(*seats_.back(), seats,
                                                    seed_of(options.seed, Part::Operators, place)));
    fates_[place].next = dice_.exponential(mean_between_fates);
    fates_[place].starts_at = dice_.between(0s, 3s);
    let_operator_act(place);
  }
}

Show::~Show() = default;

void Show::run(Milliseconds length) {
  const Milliseconds end = loop_.now() + length;
  Milliseconds next_log_look = loop_.now() + between_log_looks;
  while (loop_.now() < end) {
    loop_.advance(step);
    for (std::size_t i = 0; i < seats_.size(); ++i) {
      tend(*seats_[i], *operators_[i], fates_[i]);
      witness_.look(*seats_[i]);
      if (loop_.now() >= next_log_look || loop_.now() >= end) witness_.look_at_log(*seats_[i]);
    }
    if (loop_.now() >= next_log_look) next_log_look = loop_.now() + between_log_looks;
  }
}

void Show::let_operator_act(std::size_t seat) {
  loop_.schedule(dice_.exponential(mean_between_acts), [this, seat] {
    let_operator_act(seat);
    witness_.look_at_hands(*seats_[seat]);
    operators_[seat]->act();
    witness_.look_at_hands(*seats_[seat]);
  });
}

// Between the steps no handler runs, so that a console may go and another come.
void Show::tend(Seat& seat, Operator& operator_, Fate& fate) {
  if (seat.running() && loop_.now() >= fate.next) {
    fate.next = loop_.now() + dice_.exponential(mean_between_fates);
    befall(seat, operator_, fate);
  }
  const bool linked = seat.linked();
  if (linked || !seat.running()) fate.no_link_since = loop_.now();
  if (loop_.now() - fate.no_link_since > patience_without_link) {
    seat.note("has no link and begins anew");
    witness_.forget(seat);
    loop_.run([&] { operator_.quit(); });
    fate.no_link_since = loop_.now();
  }
  if (seat.take_away_ended()) fate.starts_at = loop_.now() + dice_.between(1s, longest_away);
  if (!seat.running() && loop_.now() >= fate.starts_at) seat.start();
}

void Show::befall(Seat& seat, Operator& operator_, Fate& fate) {
  switch (dice_.below(3)) {
    case 0:
      witness_.forget(seat);
      seat.lose_power();
      fate.starts_at = loop_.now() + dice_.between(1s, longest_away);
      return;
    case 1:
      witness_.forget(seat);
      return loop_.run([&] { operator_.quit(); });
    default:
      if (seat.link() != SeatLink::SerialBox) return;
      seat.note("loses its port");
      return seat.port().vanish();
  }
}

}  // namespace lineweir::simulation

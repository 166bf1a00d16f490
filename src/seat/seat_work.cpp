#include "seat/seat_work.h"

#include "core/console.h"
#include "seat/simulated_host.h"
#include "seat/simulated_screener.h"

namespace lineweir::seat {
namespace {

constexpr platform::Milliseconds look_every{150};
constexpr platform::Milliseconds try_again_after{1000};

std::unique_ptr<SimulatedPerson> person_at(Console& console, const Options& options) {
  if (options.work == Work::Host) return std::make_unique<SimulatedHost>(console, options.seed);
  return std::make_unique<SimulatedScreener>(console, options.seed);
}

}  // namespace

SeatWork::SeatWork(Console& console, platform::EventLoop& loop, const Options& options)
    : loop_(loop), entrance_(console, options.login), person_(person_at(console, options)) {
  console.startup.Main("");
  // As a console that has its user in its settings.
  console.login.UserName = options.login.user;
  console.login.UserPassword = options.login.password;
  look();
}

SeatWork::~SeatWork() { loop_.cancel(next_look_); }

// What the person does may wait for something and let the loop run meanwhile.
void SeatWork::look() {
  platform::Milliseconds next = look_every;
  if (!is_looking_) {
    is_looking_ = true;
    if (entrance_.step()) {
      if (!entrance_.is_in()) next = try_again_after;
    } else {
      if (!sits_) person_->sit_down();
      sits_ = true;
      person_->look(loop_.now());
    }
    is_looking_ = false;
  }
  next_look_ = loop_.schedule(next, [this] { look(); });
}

}  // namespace lineweir::seat

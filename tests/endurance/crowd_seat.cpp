#include "endurance/crowd_seat.h"

#include "base/text.h"
#include "platform/services_with.h"
#include "seat/simulated_host.h"
#include "seat/simulated_screener.h"

namespace lineweir::endurance {
namespace {

using namespace std::chrono_literals;

constexpr platform::Milliseconds look_every = 150ms;
// Who only looks on has nothing to do but to come back after a cut.
constexpr platform::Milliseconds onlooker_looks_every = 2000ms;
constexpr platform::Milliseconds try_again_after = 1000ms;
// A console that has lost its server comes back by itself, but for one that had heard it for less
// than three seconds: its user sees that there is no link, and chooses the server again.
constexpr platform::Milliseconds patience_without_link = 45s;

std::unique_ptr<seat::SimulatedPerson> person_at(Console& console, const CrowdSeat::Place& place) {
  switch (place.work) {
    case CrowdSeat::Work::Screen:
      return std::make_unique<seat::SimulatedScreener>(console, place.seed);
    case CrowdSeat::Work::Host:
      return std::make_unique<seat::SimulatedHost>(console, place.seed);
    case CrowdSeat::Work::None:
      break;
  }
  return nullptr;
}

}  // namespace

CrowdSeat::CrowdSeat(platform::QtEventLoop& loop, const Place& place)
    : socket_(loop),
      console_(platform::services_with(workstation_.services(),
                                       {.loop = &loop, .clock = &clock_, .winsock1 = &socket_})),
      entrance_(console_, place.login),
      person_(person_at(console_, place)),
      loop_(loop) {
  socket_.trusted_fingerprint = [known = place.fingerprint](const std::string&, int) {
    return known;
  };
  console_.startup.Main("");
  console_.program.GroupNumber = place.group;
  console_.login.UserName = place.login.user;
  console_.login.UserPassword = place.login.password;
  look();
}

CrowdSeat::~CrowdSeat() {
  loop_.cancel(next_look_);
  socket_.close();
}

// What is done may wait for something and let the loop run meanwhile.
void CrowdSeat::look() {
  platform::Milliseconds next = person_ == nullptr && is_in() ? onlooker_looks_every : look_every;
  if (!is_looking_) {
    is_looking_ = true;
    if (console_.Lineweir.no_link.get().empty()) linked_at_ = loop_.now();
    if (loop_.now() - linked_at_ > patience_without_link) {
      linked_at_ = loop_.now();
      console_.Lineweir.WinsockMenu.on_click();
    } else if (entrance_.step()) {
      if (!entrance_.is_in()) next = try_again_after;
    } else if (person_ != nullptr) {
      if (!sits_) person_->sit_down();
      sits_ = true;
      if (!rests_) person_->look(loop_.now());
    }
    is_looking_ = false;
  }
  next_look_ = loop_.schedule(next, [this] { look(); });
}

std::vector<std::string> CrowdSeat::rows() {
  std::vector<std::string> rows;
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const char letter = console_.lines.StatusLetter(line);
    const auto name = trimmed(console_.Lineweir.LineName(line).caption.get());
    rows.push_back(std::string(1, is_empty(letter) ? 'F' : letter) + ' ' +
                   console_.services.letters.to_utf8(std::string(name)));
  }
  return rows;
}

}  // namespace lineweir::endurance

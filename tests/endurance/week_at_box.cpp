#include "endurance/week_studio.h"
#include "studio/boxed_exchange.h"

namespace lineweir::endurance {
namespace {

using namespace std::chrono_literals;

constexpr platform::Milliseconds hand_over_every = 25ms;

// An interface box on the serial line, at the pace of 1200 bits a second.
class WeekAtBox final : public WeekStudio {
 public:
  explicit WeekAtBox(platform::VirtualEventLoop& loop) : loop_(loop), desk_(loop) {
    hand_over();
    desk_.start();
    desk_.console->Lineweir.PortOn.on_click();
  }
  ~WeekAtBox() override { loop_.cancel(next_); }

  WeekDesk& desk() override { return desk_; }
  char letter(int line) const override { return exchange_.letter(line); }
  bool ring(int line, const std::string& /*number*/) override {
    if (letter(line) != exchange::idle_letter) return false;
    exchange_.happen_now({.kind = exchange::StudioEvent::Kind::Call, .line = line}, loop_.now());
    return true;
  }
  bool leave(int line) override {
    if (letter(line) == exchange::idle_letter) return false;
    exchange_.happen_now({.kind = exchange::StudioEvent::Kind::HangUp, .line = line}, loop_.now());
    return true;
  }

 private:
  // Nobody calls by himself.
  static studio::BoxedExchangeOptions options() {
    studio::BoxedExchangeOptions options;
    options.callers = {0ms, 0ms, 0ms};
    return options;
  }

  void hand_over() {
    auto& port = desk_.workstation.comm1;
    for (const std::string& words : port.take_writes()) exchange_.receive(words, loop_.now());
    exchange_.advance(loop_.now());
    exchange_.take_records();
    const std::string said = exchange_.take_output();
    if (!said.empty()) port.arrive(said);
    next_ = loop_.schedule(hand_over_every, [this] { hand_over(); });
  }

  platform::VirtualEventLoop& loop_;
  studio::BoxedExchange exchange_{options()};
  WeekDesk desk_;
  platform::EventLoop::CallId next_ = 0;
};

}  // namespace

std::unique_ptr<WeekStudio> week_at_box(platform::VirtualEventLoop& loop) {
  return std::make_unique<WeekAtBox>(loop);
}

}  // namespace lineweir::endurance

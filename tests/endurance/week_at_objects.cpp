#include "endurance/week_exchange.h"
#include "endurance/week_studio.h"
#include "wire/studio_texts.h"

namespace lineweir::endurance {
namespace {

using namespace std::chrono_literals;
using platform::RemoteCall;

constexpr platform::Milliseconds hand_over_every = 50ms;
constexpr std::int64_t group = 1;

// The objects of a server, as a script has them: what the console writes is obeyed, and each change
// comes by its call-back object.
class WeekAtObjects final : public WeekStudio {
 public:
  explicit WeekAtObjects(platform::VirtualEventLoop& loop)
      : loop_(loop), exchange_(loop), desk_(loop) {
    exchange_.on_change = [this](exchange::LineChange) {
      objects().call_back("ReturnCommand", {exchange_.status_text()});
      objects().set_result("OutputSerialPort", exchange_.status_text());
    };
    objects().set_present(true);
    objects().set_result("AddObjectReference", true);
    objects().set_result("DropObjectReference", true);
    objects().set_result("OutputSerialPort", exchange_.status_text());
    objects().set_result("GetDimType", std::int64_t{1});
    const std::string yes = std::string("True") + item_end;
    std::string studio = yes + yes + yes + yes;
    std::string times;
    for (int line = 1; line <= week_lines; ++line) {
      studio += std::to_string(line) + item_end;
      times += std::string("0") + item_end;
    }
    objects().set_result("GetStudioStatus", studio);
    objects().set_result("gettimes", times + "10:00:00" + item_end);
    objects().set_result("GetStudioNames", std::string("Morning") + item_end);
    hand_over();
    desk_.start();
    desk_.console->Lineweir.NetworkConnectionOption.on_click();
    loop.advance(10s);
  }
  ~WeekAtObjects() override { loop_.cancel(next_); }

  WeekDesk& desk() override { return desk_; }
  char letter(int line) const override { return exchange_.letter(line); }
  bool ring(int line, const std::string& number) override {
    return exchange_.lines().arrive(line, number);
  }
  bool leave(int line) override { return exchange_.lines().leave(line); }

 private:
  platform::ScriptedRemoteObjects& objects() { return desk_.workstation.remote_objects; }

  void hand_over() {
    for (const RemoteCall& call : objects().take_calls()) take(call);
    next_ = loop_.schedule(hand_over_every, [this] { hand_over(); });
  }

  void take(const RemoteCall& call) {
    if (call.member == "InputSerialPort") {
      exchange_.lines().obey(std::get<std::string>(call.arguments.back()));
    } else if (call.member == "CallerDataServer") {
      objects().call_back("ReturnCallerData",
                          {call.arguments.back(), call.arguments.front(), group});
    } else if (call.member == "SetNextCall") {
      objects().call_back("ReturnNextCall", {call.arguments.front(), group});
    }
  }

  platform::VirtualEventLoop& loop_;
  WeekExchange exchange_;
  WeekDesk desk_;
  platform::EventLoop::CallId next_ = 0;
};

}  // namespace

std::unique_ptr<WeekStudio> week_at_objects(platform::VirtualEventLoop& loop) {
  return std::make_unique<WeekAtObjects>(loop);
}

}  // namespace lineweir::endurance

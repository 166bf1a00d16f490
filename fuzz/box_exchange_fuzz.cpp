// A server's interface box that sends any bytes, cut anywhere, while time passes, the cable is
// pulled, the port can't be opened, and words go out. The letters, and which of them are told, are
// those of the plain rule of the stream; the box counts as reached exactly while it answers.
//
// The input is the number of lines and a list of steps. A byte below 128 is followed by that many
// bytes, which the box sends in one piece; any other byte is one of the steps of take_step().

#include "exchange/box_exchange.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "exchange/switchboard.h"
#include "platform/scripted/virtual_event_loop.h"
#include "support/box_cable.h"
#include "support/reference_stream.h"

using namespace lineweir;
using namespace lineweir::exchange;
using namespace std::chrono_literals;
using platform::Milliseconds;

namespace {

constexpr unsigned first_step = 128;
constexpr int most_lines = 24;
constexpr int searched_lines = 20;
constexpr int told_lines = 10;
constexpr std::size_t longest_noise = 4096;
// Within this time an answer is missed by nobody, and behind that one by everybody.
constexpr Milliseconds surely_reached = BoxExchange::asked_every * BoxExchange::missed_answers;
constexpr Milliseconds surely_lost = surely_reached + BoxExchange::asked_every;
// The questions that go out meanwhile, and the word itself.
constexpr Milliseconds longest_backlog = BoxExchange::latest_word + 1000ms;

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::abort();
}

class Bench {
 public:
  explicit Bench(int lines)
      : expected_(static_cast<std::size_t>(lines), idle_letter),
        exchange_(loop_, lines, [this] { return open(); }) {
    exchange_.on_change = [this](LineChange change, const std::string&) {
      const auto place = static_cast<std::size_t>(change.line);
      require(place < told_letters_.size(), "a change of a line that isn't there");
      require(told_letters_[place] != change.letter, "a change that is none");
      told_letters_[place] = change.letter;
    };
    exchange_.on_reached = [this](bool reached) {
      require(reached != told_reached_, "reached is told again");
      told_reached_ = reached;
    };
  }

  void receive(const std::string& piece) {
    if (cable_.port == nullptr || piece.empty()) return;
    reference_.append(piece);
    for (const StatusItem& item :
         reference_.items(std::min(exchange_.line_count(), searched_lines)))
      expect(item);
    reference_.drop();
    if (reference_.buffer().size() > longest_noise) reference_ = {};
    cable_.port->on_bytes(piece);
  }

  void take_step(unsigned step) {
    const int amount = static_cast<int>(step / 8);
    switch (step % 8) {
      case 0:
        return loop_.advance(Milliseconds(amount * amount));
      case 1:
        return loop_.advance(amount * 1000ms);
      case 2:
        return pull_cable();
      case 3:
        cable_.can_be_opened = amount % 2 == 0;
        return;
      case 4:
        return take_to_position(amount, amount % 4 - 1);
      default:
        return obey(status_item(amount, "NCPOLHD"[amount % 7]));
    }
  }

  void look() const {
    for (int line = 0; line < exchange_.line_count(); ++line) {
      const auto place = static_cast<std::size_t>(line);
      require(exchange_.letter(line) == expected_[place], "a letter");
      require(told_letters_[place] == expected_[place], "a letter as it was told");
    }
    require(exchange_.is_reached() == told_reached_, "reached, as it was told");
    const Milliseconds silent = loop_.now() - answered_;
    if (!answers_ || silent > surely_lost) require(!told_reached_, "reached without an answer");
    if (answers_ && silent < surely_reached) require(told_reached_, "lost with an answer");
    const bool knows_all =
        std::ssize(reported_) >= std::min(exchange_.line_count(), told_lines) && told_reached_;
    require(exchange_.has_told_all() == knows_all, "all is told");
    require(exchange_.backlog() <= longest_backlog, "too much waits");
  }

  void end() {
    cable_.can_be_opened = true;
    loop_.advance(BoxExchange::retry_after);
    require(cable_.port != nullptr, "the port isn't opened again");
    require(loop_.scheduled() == 1, "calls stay");
  }

 private:
  void pull_cable() {
    if (cable_.port == nullptr) return;
    answers_ = false;
    cable_.port->on_end(platform::ConnectionEnd::Gone);
  }

  std::unique_ptr<platform::Connection> open() {
    reference_ = {};
    reported_.clear();
    answers_ = false;
    return cable_.open();
  }

  void expect(StatusItem item) {
    if (item.line >= exchange_.line_count()) return;
    if (status_letters.find(item.letter) == std::string_view::npos) return;
    expected_[static_cast<std::size_t>(item.line)] = item.letter;
    reported_.insert(item.line);
    answers_ = true;
    answered_ = loop_.now();
  }

  void obey(const std::string& word) {
    const bool goes = cable_.port != nullptr && exchange_.backlog() <= BoxExchange::latest_word;
    cable_.sent.clear();
    exchange_.obey(word);
    require(cable_.sent == (goes ? word : ""), "a word");
  }

  void take_to_position(int line, int position) {
    cable_.sent.clear();
    const bool goes = cable_.port != nullptr && exchange_.backlog() <= BoxExchange::latest_word;
    exchange_.take_to_position(line, position);
    const bool there = position == 0 || position == 1;
    require(cable_.sent == (goes && there ? status_item(line, "PO"[position]) : std::string()),
            "a position");
  }

  platform::VirtualEventLoop loop_;
  test::BoxCable cable_;
  test::ReferenceStream reference_;
  std::string expected_;
  std::string told_letters_ = expected_;
  std::set<int> reported_;
  bool answers_ = false;
  Milliseconds answered_{0};
  bool told_reached_ = false;
  BoxExchange exchange_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  std::string_view input(reinterpret_cast<const char*>(data), size);
  Bench bench(1 + static_cast<unsigned char>(input.front()) % most_lines);
  input.remove_prefix(1);
  while (!input.empty()) {
    const auto step = static_cast<unsigned>(static_cast<unsigned char>(input.front()));
    input.remove_prefix(1);
    if (step >= first_step) {
      bench.take_step(step - first_step);
    } else {
      const std::string_view piece = input.substr(0, step);
      input.remove_prefix(piece.size());
      bench.receive(std::string(piece));
    }
    bench.look();
  }
  bench.end();
  return 0;
}

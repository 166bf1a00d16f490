#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "exchange/exchange.h"
#include "platform/connection.h"
#include "platform/event_loop.h"
#include "wire/serial_buffer.h"

namespace lineweir::exchange {

// An interface box on a serial port. Words go to it as they stand, and what it reports are the
// changes. It is asked for a line now and then, so that one that is gone or mute is noticed; a port
// that can't be opened or has failed is tried again. The box's line can tell of the lines 0 to 9
// only.
class BoxExchange final : public Exchange {
 public:
  // Opens the port; nothing where that isn't possible.
  using OpenPort = std::function<std::unique_ptr<platform::Connection>()>;

  static constexpr platform::Milliseconds retry_after{2000};
  // The line is slow. A word that would go out later than this is passed over: by then nobody means
  // it any more.
  static constexpr platform::Milliseconds latest_word{3000};
  static constexpr platform::Milliseconds asked_every{5000};
  // So many questions without an answer, and the box is lost.
  static constexpr int missed_answers = 2;

  // The loop outlives the exchange.
  BoxExchange(platform::EventLoop& loop, int line_count, OpenPort open_port);
  ~BoxExchange() override;
  BoxExchange(const BoxExchange&) = delete;
  BoxExchange& operator=(const BoxExchange&) = delete;

  int line_count() const override { return static_cast<int>(letters_.size()); }
  char letter(int line) const override;
  bool is_reached() const override { return reached_; }
  bool has_told_all() const override;
  platform::Milliseconds backlog() const override;
  void obey(std::string_view word) override;
  // Position 0 is the box's first, position 1 its second; it has no more.
  void take_to_position(int line, int position) override;
  bool arrive(int, std::string) override { return false; }
  bool leave(int) override { return false; }

 private:
  void open();
  void send(std::string_view characters);
  void ask_for_all_lines();
  void ask_again();
  void hear(std::string_view bytes);
  bool is_report(StatusItem item) const;
  void take(StatusItem item);
  void lose();
  void set_reached(bool reached);
  void schedule(platform::Milliseconds delay, void (BoxExchange::*call)());

  platform::EventLoop& loop_;
  OpenPort open_port_;
  std::unique_ptr<platform::Connection> port_;
  SerialBuffer received_;
  std::string letters_;
  // When the line has carried everything.
  platform::Milliseconds line_free_{0};
  bool reached_ = false;
  // The lines of which the box has told since it was opened.
  std::set<int> told_;
  int unanswered_ = 0;
  platform::EventLoop::CallId next_call_ = 0;
};

}  // namespace lineweir::exchange

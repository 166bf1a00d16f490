#pragma once

#include <string>
#include <string_view>

#include "platform/event_loop.h"
#include "platform/serial_port.h"
#include "practice/practice_box.h"

namespace lineweir::practice {

// The serial port of a practice console: no device, but the box of the practice show in the same
// process, at the pace of a real line.
class PracticePort final : public platform::SerialPort {
 public:
  // The loop outlives the port.
  explicit PracticePort(platform::EventLoop& loop);
  ~PracticePort() override;
  PracticePort(const PracticePort&) = delete;
  PracticePort& operator=(const PracticePort&) = delete;

  void begin(const LevelRule& level, std::uint64_t seed);
  void end();
  const PracticeBox& box() const { return box_; }

  int comm_port() const override { return comm_port_; }
  void set_comm_port(int number) override;
  bool is_open() const override { return open_; }
  void open() override;
  void close() override;
  std::string input() override;
  void discard_input() override { received_.clear(); }
  void output(std::string_view characters) override;

 private:
  Moment now() const { return loop_.now() - made_; }
  void go_on();
  void schedule();
  // What has come is told from the loop.
  void wake();

  platform::EventLoop& loop_;
  Moment made_;
  PracticeBox box_;
  int comm_port_ = 1;
  bool open_ = false;
  std::string received_;
  platform::EventLoop::CallId next_ = 0;
};

}  // namespace lineweir::practice

#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/serial_port.h"

namespace lineweir::platform {

// How long the other end of a scripted port or socket takes to answer.
inline constexpr Milliseconds scripted_answer_time{20};

// A serial port whose line is a script.
class ScriptedSerialPort final : public SerialPort {
 public:
  // The loop outlives the port. The number is the one with which the port begins.
  explicit ScriptedSerialPort(EventLoop& loop, int comm_port = 1)
      : loop_(loop), first_comm_port_(comm_port), comm_port_(comm_port) {}

  int comm_port() const override { return comm_port_; }
  void set_comm_port(int number) override;
  bool is_open() const override { return open_; }
  void open() override;
  void close() override;
  std::string input() override;
  void discard_input() override { received_.clear(); }
  void output(std::string_view characters) override;

  // The characters arrive when the loop next runs what is due; on a closed port they are lost.
  void arrive(const std::string& characters) { arrive(characters, Milliseconds{0}); }
  // From now on each write of exactly `request` is answered; an empty answer is none.
  void reply(const std::string& request, const std::string& answer);
  // The next `count` openings are a Failure of this number.
  void fail_openings(int number, int count);

  // The device is pulled out of the open port.
  void vanish();

  // Each write since the last call.
  std::vector<std::string> take_writes();
  // Told of each write by the one at the other end, who hasn't an answer ready beforehand.
  std::function<void()> on_written;

  // The console that used the port has ended, and another may begin. What the script has arranged
  // stays.
  void restart();

 private:
  void arrive(const std::string& characters, Milliseconds delay);

  EventLoop& loop_;
  int first_comm_port_;
  int comm_port_;
  bool open_ = false;
  std::string received_;
  std::vector<std::string> writes_;
  std::map<std::string, std::string, std::less<>> replies_;
  int failure_ = 0;
  int openings_to_fail_ = 0;
};

}  // namespace lineweir::platform

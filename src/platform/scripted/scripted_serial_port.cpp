#include "platform/scripted/scripted_serial_port.h"

#include <utility>

#include "base/failure.h"

namespace lineweir::platform {

void ScriptedSerialPort::set_comm_port(int number) {
  if (open_) throw Failure(failure_number::port_already_open, "The port is open");
  if (number < 1 || number > 4) {
    throw Failure(failure_number::bad_port_number,
                  "There is no serial port " + std::to_string(number));
  }
  comm_port_ = number;
}

void ScriptedSerialPort::open() {
  if (open_) throw Failure(failure_number::port_already_open, "The port is already open");
  if (openings_to_fail_ > 0) {
    --openings_to_fail_;
    throw Failure(failure_, "Serial port " + std::to_string(comm_port_) + " can't be opened");
  }
  open_ = true;
}

void ScriptedSerialPort::close() {
  open_ = false;
  received_.clear();
}

std::string ScriptedSerialPort::input() { return std::exchange(received_, {}); }

void ScriptedSerialPort::output(std::string_view characters) {
  if (!open_) throw Failure(failure_number::port_not_open, "The port is not open");
  writes_.emplace_back(characters);
  if (on_written) on_written();
  const auto answer = replies_.find(characters);
  if (answer != replies_.end()) arrive(answer->second, scripted_answer_time);
}

void ScriptedSerialPort::reply(const std::string& request, const std::string& answer) {
  replies_[request] = answer;
}

void ScriptedSerialPort::fail_openings(int number, int count) {
  failure_ = number;
  openings_to_fail_ = count;
}

void ScriptedSerialPort::vanish() {
  if (!open_) return;
  close();
  on_lost("Serial port " + std::to_string(comm_port_) + " was lost");
}

std::vector<std::string> ScriptedSerialPort::take_writes() { return std::exchange(writes_, {}); }

void ScriptedSerialPort::restart() {
  on_comm.forget_handler();
  on_lost.forget_handler();
  close();
  comm_port_ = first_comm_port_;
}

void ScriptedSerialPort::arrive(const std::string& characters, Milliseconds delay) {
  if (characters.empty()) return;
  loop_.schedule(delay, [this, characters] {
    if (!open_) return;
    received_ += characters;
    on_comm(comm_event_receive);
  });
}

}  // namespace lineweir::platform

#include "boxlink/serial_port_control.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr std::string_view no_answer =
    "Error communicating with Brenvox Interface Box!  Check cables and settings!";
constexpr std::string_view line_monitor_request = "M";
constexpr platform::Milliseconds answer_limit{3000};
constexpr int settling_passes = 10000;

constexpr std::array port_failures = {
    failure_number::device_unavailable,    failure_number::bad_port_number,
    failure_number::port_already_open,     failure_number::bad_port_identifier,
    failure_number::port_hardware_missing, failure_number::port_not_open,
    failure_number::port_device_not_open,
};

constexpr int last_port = 4;

bool is_port_failure(const Failure& failure) {
  return std::ranges::find(port_failures, failure.number()) != port_failures.end();
}

// The start has a message of its own for a port that isn't open.
bool makes_start_search(const Failure& failure) {
  return is_port_failure(failure) && failure.number() != failure_number::port_not_open;
}

}  // namespace

SerialPortControl::SerialPortControl(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
  for (int number = 1; number <= last_port; ++number) {
    form.Com(number).on_click = [this, number] { Com_Click(number); };
  }
  form.PortOn.on_click = [this] { PortOn_Click(); };
  form.Off.on_click = [this] { Off_Click(); };
  console.services.comm1.on_lost = [this](const std::string& description) {
    port_lost(description);
  };
}

void SerialPortControl::Com_Click(int number) {
  const std::string procedure = "Com" + std::to_string(number) + "_Click";
  platform::SerialPort& comm = console_.services.comm1;
  attempt(
      [&] {
        console_.Lineweir.mouse_pointer = pointer_hourglass;
        other_way_.reset();
        if (console_.Lineweir.NetworkConnectionOption.checked) {
          console_.remote_session.NetworkDisconnect();
        }
        if (console_.services.winsock1.state() != platform::socket_closed) {
          console_.services.winsock1.close();
        }
        const bool was_open = comm.is_open();
        select(number);
        if (was_open || wanted_) want(number);
        if (was_open) close();
        comm.set_comm_port(number);
        if (was_open) probe(Opening::Plain);
        console_.Lineweir.mouse_pointer = pointer_default;
      },
      [&](const Failure& failure) { guard_port(procedure, failure); });
}

void SerialPortControl::PortOn_Click() {
  attempt(
      [&] {
        other_way_.reset();
        if (console_.services.comm1.is_open()) return;
        want(chosen_number());
        probe(Opening::Plain);
      },
      [&](const Failure& failure) { guard_port("PortOn_Click", failure); });
}

void SerialPortControl::Off_Click() {
  guard(console_, "Off_Click", [&] {
    other_way_.reset();
    wanted_.reset();
    close();
    show_switch(false);
  });
}

void SerialPortControl::open_at_start() {
  want(chosen_number());
  if (!console_.services.comm1.is_open()) probe(Opening::Searching);
}

void SerialPortControl::probe_at_start() {
  if (console_.services.comm1.is_open()) probe(Opening::AlreadyOpen);
}

void SerialPortControl::close() {
  ++closings_;
  console_.decoder.end_wait();
  console_.services.comm1.close();
  console_.link.review();
}

void SerialPortControl::box_answered() {
  if (awaiting_ == closings_) return;
  console_.messages.withdraw(no_answer);
  attempt([&] { complete_probe(Opening::Plain); },
          [&](const Failure& failure) { guard_port("PortOn_Click", failure); });
}

void SerialPortControl::box_reported() {
  if (given_up_ == closings_) box_answered();
}

void SerialPortControl::show_as_way() {
  select(console_.services.comm1.comm_port());
  if (console_.services.comm1.is_open()) return;
  if (console_.Lineweir.PortOn.checked) want(chosen_number());
  show_switch(false);
}

PortChoice SerialPortControl::choice() const {
  if (other_way_) return {*other_way_, false};
  return {wanted_.value_or(chosen_number()), wanted_ || console_.Lineweir.PortOn.checked};
}

void SerialPortControl::port_lost(const std::string& description) {
  guard(console_, "Lineweir_Comm1_Lost", [&] {
    want(chosen_number());
    close();
    console_.trace.WriteTrace(description);
    console_.messages.ShowMessage("This Com Port is not available at this time!");
    show_switch(false);
  });
}

int SerialPortControl::chosen_number() const {
  const int chosen = console_.Lineweir.chosen_com();
  return chosen != 0 ? chosen : console_.services.comm1.comm_port();
}

void SerialPortControl::show_switch(bool on) {
  console_.Lineweir.Off.checked = !on;
  console_.Lineweir.PortOn.checked = on;
}

void SerialPortControl::probe(Opening opening) {
  console_.decoder.LineMonitorWait = true;
  if (opening != Opening::AlreadyOpen) console_.decoder.begin_hearing();
  if (!open(opening)) return;
  console_.services.comm1.output(line_monitor_request);
  switch (await_box()) {
    case Answer::Given:
      return complete_probe(opening);
    case Answer::Missing:
      given_up_ = closings_;
      console_.messages.ShowMessage(no_answer);
      console_.Lineweir.mouse_pointer = pointer_default;
      return;
    case Answer::NoLongerAwaited:
      return;
  }
}

void SerialPortControl::complete_probe(Opening opening) {
  close();
  if (!open(opening == Opening::Plain ? Opening::Plain : Opening::Searching)) return;
  const unsigned opened = closings_;
  for (int pass = 0; pass < settling_passes && opened == closings_; ++pass) {
    console_.services.loop.run_pending();
  }
  if (opened != closings_) return;
  request_all_lines();
  wanted_.reset();
  show_switch(true);
}

bool SerialPortControl::open(Opening opening) {
  platform::SerialPort& comm = console_.services.comm1;
  if (opening == Opening::AlreadyOpen) return true;
  if (opening == Opening::Plain) {
    comm.open();
  } else if (!open_searching()) {
    return false;
  }
  comm.discard_input();
  console_.link.review();
  return true;
}

bool SerialPortControl::open_searching() {
  platform::SerialPort& comm = console_.services.comm1;
  bool opened = false;
  while (!opened && failures_at_start_ <= last_port) {
    opened =
        attempt([&] { comm.open(); },
                [&](const Failure& failure) {
                  if (!makes_start_search(failure)) throw failure;
                  report_failure(console_, "Lineweir_Form_Load", failure);
                  ++failures_at_start_;
                  if (failures_at_start_ > last_port) {
                    console_.messages.ShowMessage("No Com Port is available on this Computer!!");
                    return;
                  }
                  comm.set_comm_port(failures_at_start_);
                  select(failures_at_start_);
                });
  }
  return opened;
}

SerialPortControl::Answer SerialPortControl::await_box() {
  platform::EventLoop& loop = console_.services.loop;
  const auto start = loop.now();
  const unsigned opened = closings_;
  awaiting_ = opened;
  while (console_.decoder.LineMonitorWait && opened == closings_ &&
         loop.now() - start <= answer_limit) {
    loop.yield();
  }
  if (opened != closings_) return Answer::NoLongerAwaited;
  awaiting_.reset();
  return console_.decoder.LineMonitorWait ? Answer::Missing : Answer::Given;
}

void SerialPortControl::request_all_lines() {
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    console_.services.comm1.output("Q0" + std::to_string(line));
  }
}

void SerialPortControl::select(int number) {
  MainForm& form = console_.Lineweir;
  for (int other = 1; other <= last_port; ++other) form.Com(other).checked = other == number;
  form.NetworkConnectionOption.checked = false;
  form.WinsockMenu.checked = false;
}

void SerialPortControl::guard_port(std::string_view procedure, const Failure& failure) {
  report_failure(console_, procedure, failure);
  console_.Lineweir.mouse_pointer = pointer_default;
  if (is_port_failure(failure)) {
    close();
    console_.messages.ShowMessage("Could Not Open Port");
  }
  if (!console_.services.comm1.is_open()) show_switch(false);
}

}  // namespace lineweir

#include "boxlink/serial_port_control.h"

#include <algorithm>
#include <array>
#include <string>

#include "boxlink/serial_link.h"
#include "boxlink/status_decoder.h"
#include "link/link_watch.h"
#include "link/links.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

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

constexpr auto port_on = "PortOn_Click";
constexpr auto form_load = "Lineweir_Form_Load";

bool is_port_failure(const Failure& failure) {
  return std::ranges::find(port_failures, failure.number()) != port_failures.end();
}

// The start has a message of its own for a port that isn't open.
bool makes_start_search(const Failure& failure) {
  return is_port_failure(failure) && failure.number() != failure_number::port_not_open;
}

}  // namespace

SerialPortControl::SerialPortControl(ConsoleState& state, const Links& links,
                                     SerialLink& serial_link, LinkWatch& link,
                                     StatusDecoder& decoder)
    : state_(state), links_(links), serial_link_(serial_link), link_(link), decoder_(decoder) {
  decoder.on_line_monitor = [this] { box_answered(); };
  decoder.on_first_report = [this] { box_answered(); };
  MainForm& form = state.Lineweir;
  const auto show_failure = [this](const Failure& failure) { port_failed(failure); };
  for (int number = 1; number <= last_port; ++number) {
    wire(
        form.Com(number).on_click, state_.trace, "Com" + std::to_string(number) + "_Click",
        [this, number] { Com_Click(number); }, show_failure);
  }
  wire(
      form.PortOn.on_click, state_.trace, port_on, [this] { PortOn_Click(); }, show_failure);
  wire(form.Off.on_click, state_.trace, "Off_Click", [this] { Off_Click(); });
  wire(state.services.comm1.on_lost, state_.trace, "Lineweir_Comm1_Lost",
       [this](const std::string& description) { port_lost(description); });
}

void SerialPortControl::Com_Click(int number) {
  platform::SerialPort& comm = state_.services.comm1;
  state_.Lineweir.mouse_pointer = pointer_hourglass;
  other_way_.reset();
  links_.give_way_to_serial();
  const bool was_open = comm.is_open();
  select(number);
  if (was_open || wanted_) want(number);
  if (was_open) close();
  comm.set_comm_port(number);
  if (was_open) probe(Opening::Plain, "Com" + std::to_string(number) + "_Click");
  state_.Lineweir.mouse_pointer = pointer_default;
}

void SerialPortControl::PortOn_Click() {
  other_way_.reset();
  if (state_.services.comm1.is_open()) return;
  const bool no_way_is_checked = state_.Lineweir.chosen_com() == 0 && links_.serial_is_in_use();
  if (no_way_is_checked) select(state_.services.comm1.comm_port());
  want(chosen_number());
  probe(Opening::Plain, port_on);
}

void SerialPortControl::Off_Click() {
  other_way_.reset();
  wanted_.reset();
  close();
  show_switch(false);
}

void SerialPortControl::open_at_start() {
  want(chosen_number());
  if (!state_.services.comm1.is_open()) probe(Opening::Searching, form_load);
}

void SerialPortControl::probe_at_start() {
  if (state_.services.comm1.is_open()) probe(Opening::AlreadyOpen, form_load);
}

void SerialPortControl::close() {
  ++closings_;
  decoder_.end_wait();
  state_.services.comm1.close();
  link_.review();
}

void SerialPortControl::box_answered() {
  if (given_up_at_start_ != closings_) return;
  state_.messages.withdraw(no_answer);
  attempt([&] { complete_probe(Opening::Plain, port_on); },
          [&](const Failure& failure) {
            report_failure(state_.trace, port_on, failure);
            port_failed(failure);
          });
}

void SerialPortControl::show_as_way() {
  select(state_.services.comm1.comm_port());
  if (state_.services.comm1.is_open()) return;
  if (state_.Lineweir.PortOn.checked) want(chosen_number());
  show_switch(false);
}

PortChoice SerialPortControl::choice() const {
  if (other_way_) return {*other_way_, false};
  return {wanted_.value_or(chosen_number()), wanted_ || state_.Lineweir.PortOn.checked};
}

void SerialPortControl::port_lost(const std::string& description) {
  want(chosen_number());
  close();
  state_.trace.WriteTrace(description);
  state_.messages.ShowMessage("This Com Port is not available at this time!");
  show_switch(false);
}

int SerialPortControl::chosen_number() const {
  const int chosen = state_.Lineweir.chosen_com();
  return chosen != 0 ? chosen : state_.services.comm1.comm_port();
}

void SerialPortControl::show_switch(bool on) {
  state_.Lineweir.Off.checked = !on;
  state_.Lineweir.PortOn.checked = on;
}

void SerialPortControl::probe(Opening opening, std::string_view handler) {
  decoder_.LineMonitorWait = true;
  if (opening != Opening::AlreadyOpen) serial_link_.begin_hearing();
  if (!open(opening, handler)) return;
  state_.services.comm1.output(line_monitor_request);
  switch (await_box()) {
    case Answer::Given:
      return complete_probe(opening, handler);
    case Answer::Missing:
      if (opening != Opening::Plain) given_up_at_start_ = closings_;
      state_.messages.ShowMessage(no_answer);
      state_.Lineweir.mouse_pointer = pointer_default;
      return;
    case Answer::NoLongerAwaited:
      return;
  }
}

void SerialPortControl::complete_probe(Opening opening, std::string_view handler) {
  close();
  if (!open(opening == Opening::Plain ? Opening::Plain : Opening::Searching, handler)) return;
  const unsigned opened = closings_;
  for (int pass = 0; pass < settling_passes && opened == closings_; ++pass) {
    state_.services.loop.run_pending();
  }
  if (opened != closings_) return;
  request_all_lines();
  wanted_.reset();
  show_switch(true);
}

bool SerialPortControl::open(Opening opening, std::string_view handler) {
  platform::SerialPort& comm = state_.services.comm1;
  if (opening == Opening::AlreadyOpen) return true;
  if (opening == Opening::Plain) {
    attempt([&] { comm.open(); },
            [&](const Failure& failure) {
              if (is_port_failure(failure)) throw failure;
              report_failure(state_.trace, handler, failure);
            });
  } else if (!open_searching()) {
    return false;
  }
  comm.discard_input();
  link_.review();
  return true;
}

bool SerialPortControl::open_searching() {
  platform::SerialPort& comm = state_.services.comm1;
  bool opened = false;
  while (!opened && failures_at_start_ <= last_port) {
    opened = attempt([&] { comm.open(); },
                     [&](const Failure& failure) {
                       if (!makes_start_search(failure)) throw failure;
                       report_failure(state_.trace, form_load, failure);
                       ++failures_at_start_;
                       if (failures_at_start_ > last_port) {
                         state_.messages.ShowMessage("No Com Port is available on this Computer!!");
                         return;
                       }
                       comm.set_comm_port(failures_at_start_);
                       select(failures_at_start_);
                     });
  }
  return opened;
}

SerialPortControl::Answer SerialPortControl::await_box() {
  platform::EventLoop& loop = state_.services.loop;
  const auto start = loop.now();
  const unsigned opened = closings_;
  while (decoder_.LineMonitorWait && opened == closings_ && loop.now() - start <= answer_limit) {
    loop.yield();
  }
  if (opened != closings_) return Answer::NoLongerAwaited;
  return decoder_.LineMonitorWait ? Answer::Missing : Answer::Given;
}

void SerialPortControl::request_all_lines() {
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    state_.services.comm1.output("Q0" + std::to_string(line));
  }
}

void SerialPortControl::select(int number) {
  MainForm& form = state_.Lineweir;
  for (int other = 1; other <= last_port; ++other) form.Com(other).checked = other == number;
  links_.uncheck_ways();
}

void SerialPortControl::port_failed(const Failure& failure) {
  state_.Lineweir.mouse_pointer = pointer_default;
  if (is_port_failure(failure)) {
    close();
    state_.messages.ShowMessage("Could Not Open Port");
  }
  if (!state_.services.comm1.is_open()) show_switch(false);
}

}  // namespace lineweir

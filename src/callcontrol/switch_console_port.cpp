#include "callcontrol/switch_console_port.h"

#include <algorithm>
#include <array>
#include <string>

#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::string_view port_message = "Could Not Open Switch Console Port";

constexpr std::array port_failures = {
    failure_number::device_unavailable,    failure_number::bad_port_number,
    failure_number::port_already_open,     failure_number::bad_port_identifier,
    failure_number::port_hardware_missing, failure_number::port_settings_refused,
    failure_number::port_device_not_open,
};

}  // namespace

SwitchConsolePort::SwitchConsolePort(ConsoleState& state) : state_(state) {
  MainForm& form = state.Lineweir;
  const auto show_failure = [this](const Failure& failure) { show(failure); };
  for (int number = 1; number <= 4; ++number) {
    wire(
        form.RemoteCom(number).on_click, state_.trace,
        "Lineweir_RemoteCom" + std::to_string(number) + "_Click",
        [this, number] { RemoteCom_Click(number); }, show_failure);
  }
  wire(
      form.RemoteOn.on_click, state_.trace, "Lineweir_RemoteOn_Click", [this] { RemoteOn_Click(); },
      show_failure);
  wire(form.RemoteOff.on_click, state_.trace, "Lineweir_RemoteOff_Click",
       [this] { RemoteOff_Click(); });
  wire(state.services.comm2.on_lost, state_.trace, "Lineweir_Comm2_Lost",
       [this](const std::string& description) { port_lost(description); });
}

void SwitchConsolePort::RemoteCom_Click(int number) {
  for (int other = 1; other <= 4; ++other) {
    state_.Lineweir.RemoteCom(other).checked = other == number;
  }
  platform::SerialPort& comm = state_.services.comm2;
  const bool wanted = comm.is_open() || missed_;
  comm.close();
  comm.set_comm_port(number);
  missed_ = wanted;
  if (wanted) comm.open();
  missed_ = false;
}

void SwitchConsolePort::RemoteOn_Click() {
  switched_on_ = true;
  if (!state_.services.comm2.is_open()) state_.services.comm2.open();
  state_.Lineweir.RemoteOff.checked = false;
  state_.Lineweir.RemoteOn.checked = true;
  state_.Lineweir.SwitchConsoleTimer.enabled = true;
  missed_ = false;
}

void SwitchConsolePort::RemoteOff_Click() {
  switched_on_ = false;
  state_.services.comm2.close();
  state_.Lineweir.RemoteOff.checked = true;
  state_.Lineweir.RemoteOn.checked = false;
  state_.Lineweir.SwitchConsoleTimer.enabled = false;
  missed_ = false;
}

bool SwitchConsolePort::wanted() const { return switched_on_ || state_.Lineweir.RemoteOn.checked; }

void SwitchConsolePort::reopen(std::string_view procedure) {
  attempt([&] { state_.services.comm2.open(); },
          [&](const Failure& failure) {
            missed_ = true;
            report_failure(state_.trace, procedure, failure);
            show(failure);
          });
}

void SwitchConsolePort::port_lost(const std::string& description) {
  missed_ = true;
  state_.trace.WriteTrace(description);
  state_.messages.ShowMessage(port_message);
}

void SwitchConsolePort::show(const Failure& failure) {
  const bool of_port = std::ranges::find(port_failures, failure.number()) != port_failures.end();
  if (of_port) state_.messages.ShowMessage(port_message);
}

}  // namespace lineweir

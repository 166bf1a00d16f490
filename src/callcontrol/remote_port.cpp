#include "callcontrol/remote_port.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr std::array port_failures = {
    failure_number::device_unavailable,    failure_number::bad_port_number,
    failure_number::port_already_open,     failure_number::bad_port_identifier,
    failure_number::port_hardware_missing, failure_number::port_settings_refused,
    failure_number::port_device_not_open,
};

}  // namespace

RemotePortControl::RemotePortControl(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
  for (int number = 1; number <= 4; ++number) {
    form.RemoteCom(number).on_click = [this, number] { RemoteCom_Click(number); };
  }
  form.RemoteOn.on_click = [this] { RemoteOn_Click(); };
  form.RemoteOff.on_click = [this] { RemoteOff_Click(); };
}

void RemotePortControl::RemoteCom_Click(int number) {
  const std::string procedure = "Lineweir_RemoteCom" + std::to_string(number) + "_Click";
  attempt(
      [&] {
        for (int other = 1; other <= 4; ++other) {
          console_.Lineweir.RemoteCom(other).checked = other == number;
        }
        platform::SerialPort& comm = console_.services.comm2;
        const bool was_open = comm.is_open();
        comm.close();
        comm.set_comm_port(number);
        if (was_open) comm.open();
      },
      [&](const Failure& failure) { report(procedure, failure); });
}

void RemotePortControl::RemoteOn_Click() {
  attempt(
      [&] {
        if (!console_.services.comm2.is_open()) console_.services.comm2.open();
        console_.Lineweir.RemoteOff.checked = false;
        console_.Lineweir.RemoteOn.checked = true;
        console_.Lineweir.SwitchConsoleTimer.enabled = true;
      },
      [&](const Failure& failure) { report("Lineweir_RemoteOn_Click", failure); });
}

void RemotePortControl::RemoteOff_Click() {
  guard(console_, "Lineweir_RemoteOff_Click", [&] {
    console_.services.comm2.close();
    console_.Lineweir.RemoteOff.checked = true;
    console_.Lineweir.RemoteOn.checked = false;
    console_.Lineweir.SwitchConsoleTimer.enabled = false;
  });
}

void RemotePortControl::report(std::string_view procedure, const Failure& failure) {
  if (std::ranges::find(port_failures, failure.number()) == port_failures.end()) {
    report_failure(console_, procedure, failure);
    return;
  }
  console_.messages.ShowMessage("Could Not Open Switch Console Port");
}

}  // namespace lineweir

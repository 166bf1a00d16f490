#include "callcontrol/remote_port.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/console.h"
#include "core/guard.h"

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

RemotePortControl::RemotePortControl(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
  for (int number = 1; number <= 4; ++number) {
    form.RemoteCom(number).on_click = [this, number] { RemoteCom_Click(number); };
  }
  form.RemoteOn.on_click = [this] { RemoteOn_Click(); };
  form.RemoteOff.on_click = [this] { RemoteOff_Click(); };
  console.services.comm2.on_lost = [this](const std::string& description) {
    port_lost(description);
  };
}

void RemotePortControl::RemoteCom_Click(int number) {
  const std::string procedure = "Lineweir_RemoteCom" + std::to_string(number) + "_Click";
  attempt(
      [&] {
        for (int other = 1; other <= 4; ++other) {
          console_.Lineweir.RemoteCom(other).checked = other == number;
        }
        platform::SerialPort& comm = console_.services.comm2;
        const bool wanted = comm.is_open() || missed_;
        comm.close();
        comm.set_comm_port(number);
        missed_ = wanted;
        if (wanted) comm.open();
        missed_ = false;
      },
      [&](const Failure& failure) { report(procedure, failure); });
}

void RemotePortControl::RemoteOn_Click() {
  attempt(
      [&] {
        switched_on_ = true;
        if (!console_.services.comm2.is_open()) console_.services.comm2.open();
        console_.Lineweir.RemoteOff.checked = false;
        console_.Lineweir.RemoteOn.checked = true;
        console_.Lineweir.SwitchConsoleTimer.enabled = true;
        missed_ = false;
      },
      [&](const Failure& failure) { report("Lineweir_RemoteOn_Click", failure); });
}

void RemotePortControl::RemoteOff_Click() {
  guard(console_, "Lineweir_RemoteOff_Click", [&] {
    switched_on_ = false;
    console_.services.comm2.close();
    console_.Lineweir.RemoteOff.checked = true;
    console_.Lineweir.RemoteOn.checked = false;
    console_.Lineweir.SwitchConsoleTimer.enabled = false;
    missed_ = false;
  });
}

bool RemotePortControl::wanted() const {
  return switched_on_ || console_.Lineweir.RemoteOn.checked;
}

void RemotePortControl::reopen(std::string_view procedure) {
  attempt([&] { console_.services.comm2.open(); },
          [&](const Failure& failure) {
            missed_ = true;
            report(procedure, failure);
          });
}

void RemotePortControl::port_lost(const std::string& description) {
  guard(console_, "Lineweir_Comm2_Lost", [&] {
    missed_ = true;
    console_.trace.WriteTrace(description);
    console_.messages.ShowMessage(port_message);
  });
}

void RemotePortControl::report(std::string_view procedure, const Failure& failure) {
  report_failure(console_, procedure, failure);
  const bool of_port = std::ranges::find(port_failures, failure.number()) != port_failures.end();
  if (of_port) console_.messages.ShowMessage(port_message);
}

}  // namespace lineweir

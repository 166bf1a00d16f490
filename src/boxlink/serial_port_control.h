#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

class LinkWatch;
class Links;
class SerialLink;
class StatusDecoder;
struct ConsoleState;
class Failure;

// The user's choice in the menu "Port", as far as the menu doesn't show it as checked: the serial
// port, or another way that came to nothing.
struct PortChoice {
  // As the settings number it.
  int number;
  bool on;
};

// The menu "Port" as far as the serial line goes: which port, open or closed, and the probe that
// wakes the interface box.
//
// The probe waits while the loop runs on, so that anything may happen meanwhile, a click on the
// same menu too. Whatever closes the port ends the probe: it goes no further, and says nothing.
class SerialPortControl {
 public:
  SerialPortControl(ConsoleState& state, const Links& links, SerialLink& serial_link,
                    LinkWatch& link, StatusDecoder& decoder);

  // PortOn_Click as the start runs it: a port that can't be opened makes it try the ports 1 to 4
  // in turn. Failures that aren't for the search pass through.
  void open_at_start();

  // Probes the port, if it is open already.
  void probe_at_start();

  // Closes the port for another way to the equipment, or for good.
  void close();

  // Another way, by its number in the settings, has come to nothing, and is what the user wants all
  // the same.
  void want_other_way(int connection) { other_way_ = connection; }

  // The menu shows the port, which is the way that is left.
  void show_as_way();

  // What the settings keep. A failure shows in the menu, but it is no choice of the user's.
  PortChoice choice() const;

 private:
  void PortOn_Click();
  // Com1_Click to Com4_Click: moves an open link to another port; on a closed one it only selects.
  void Com_Click(int number);
  void Off_Click();

  // The box has answered, or reported lines. Where the start's probe has given it up it is only
  // slow, and the probe is completed now.
  void box_answered();

  enum class Opening { Plain, Searching, AlreadyOpen };
  enum class Answer { Given, Missing, NoLongerAwaited };

  // Opens the port and waits for the box; asks for all lines once it has answered. When it doesn't
  // answer within 3 seconds the message is shown, and the port stays open.
  // A failure of the opening that is none of a port's is reported under the handler's name.
  void probe(Opening opening, std::string_view handler);
  void complete_probe(Opening opening, std::string_view handler);
  bool open(Opening opening, std::string_view handler);
  bool open_searching();
  Answer await_box();
  void request_all_lines();
  void select(int number);
  void show_switch(bool on);
  // Remembers that the user wants this port open.
  void want(int number) { wanted_ = number; }
  int chosen_number() const;
  // An open port has vanished: the user is told, and finds the switch off.
  void port_lost(const std::string& description);
  // The one handler of the procedures of this class.
  void port_failed(const Failure& failure);

  ConsoleState& state_;
  const Links& links_;
  SerialLink& serial_link_;
  LinkWatch& link_;
  StatusDecoder& decoder_;
  // The port failures of the start so far; each selects the next port.
  int failures_at_start_ = 0;
  // How often the port was closed: who finds another number behind a wait has lost the port.
  unsigned closings_ = 0;
  // The number at which the start's probe was given up.
  std::optional<unsigned> given_up_at_start_;
  // The port that the user wants open, while the menu can't show it so.
  std::optional<int> wanted_;
  std::optional<int> other_way_;
};

}  // namespace lineweir

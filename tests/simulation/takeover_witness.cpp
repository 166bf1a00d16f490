#include "simulation/takeover_witness.h"

#include "simulation/studio_told.h"
#include "wire/server_packet_codec.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr Milliseconds rounding = 2s;
const std::string none = "none";

std::string fields_of(const ServerPacket& packet) {
  const auto data = decode_caller_data(packet.Buffer);
  if (!data) return {};
  std::string text;
  for (const std::string& field : data->fields) text += field + '|';
  // A form that was saved empty is as none.
  return text.find_first_not_of('|') == std::string::npos ? std::string() : text;
}

}  // namespace

TakeoverWitness::TakeoverWitness(const ExchangeLedger& ledger, const platform::EventLoop& world,
                                 Milliseconds tolerance)
    : ledger_(ledger), world_(world), tolerance_(tolerance) {}

void TakeoverWitness::sent(const ServerMachine& machine, const ServerPacket& packet) {
  ++frames_;
  if (machine.epoch() < highest_) {
    fault(machine.name() + " sends in epoch " + std::to_string(machine.epoch()) +
          ", and another one has sent in epoch " + std::to_string(highest_));
  }
  highest_ = std::max(highest_, machine.epoch());
  switch (static_cast<ServerCommand>(packet.CMD)) {
    case ServerCommand::SrvCallerData: {
      const int line = packet.LineNo;
      // Of a line without a caller nothing need be kept.
      const auto ground = [this, line](const std::string&) {
        const auto call = ledger_.call_on(line);
        return call ? std::to_string(*call) : std::string();
      };
      return tell("caller of line " + std::to_string(line + 1),
                  data_.at(static_cast<std::size_t>(line)), machine, fields_of(packet), ground);
    }
    case ServerCommand::SrvNextCall: {
      const std::string line = packet.LineNo == no_value ? none : std::to_string(packet.LineNo);
      return tell("next call", next_call_, machine, line, [this](const std::string& text) {
        return text == none ? none : std::to_string(ledger_.changes_of(std::stoi(text)));
      });
    }
    case ServerCommand::SrvFlashMessage:
      return tell("message", message_, machine, packet.Buffer,
                  [](const std::string&) { return std::string("there"); });
    case ServerCommand::SrvTimes:
      return look_at_clocks(machine, packet);
    default:
      return;
  }
}

void TakeoverWitness::received(const ServerPacket& packet) {
  const auto by_hand = [](std::optional<Kept>& kept) {
    if (kept) kept->changed_by_hand = true;
  };
  switch (static_cast<ClientCommand>(packet.CMD)) {
    case ClientCommand::CmdCallerData:
      if (packet.LineNo < lines) by_hand(data_[packet.LineNo]);
      return;
    case ClientCommand::CmdSetNextCall:
      return by_hand(next_call_);
    case ClientCommand::CmdFlashMessage:
      return by_hand(message_);
    default:
      return;
  }
}

void TakeoverWitness::tell(const std::string& what, std::optional<Kept>& kept,
                           const ServerMachine& machine, const std::string& text,
                           const Ground& ground) {
  const bool is_first_of_lead = !kept || kept->epoch != machine.epoch();
  // It doesn't know the lines yet.
  if (is_first_of_lead && !machine.serves_well()) return;
  const bool is_same = kept && kept->text == text && ground(text) == kept->ground;
  const bool still_holds = kept && !kept->changed_by_hand && !kept->ground.empty() &&
                           ground(kept->text) == kept->ground && ledger_.was_kept(kept->at);
  if (is_first_of_lead && still_holds) {
    ++compared_;
    if (!is_same) {
      fault("the " + what + " was told as \"" + kept->text + "\" in epoch " +
            std::to_string(kept->epoch) + " and is told as \"" + text + "\" in epoch " +
            std::to_string(machine.epoch()));
    }
  }
  const bool stays = is_same && !kept->changed_by_hand;
  kept = Kept{text, machine.epoch(), stays ? kept->at : world_.now(), ground(text), false};
}

void TakeoverWitness::look_at_clocks(const ServerMachine& machine, const ServerPacket& packet) {
  if (!machine.serves_well()) return;
  const auto clocks = clocks_of(packet);
  for (std::size_t line = 0; line < clocks.size(); ++line) {
    const auto truth = ledger_.clock_of(static_cast<int>(line));
    if (!truth) continue;
    ++compared_;
    const std::string of_line = "the clock of line " + std::to_string(line + 1);
    if ((truth->count() != 0) != clocks[line].has_value()) {
      fault(of_line + (clocks[line] ? " runs" : " doesn't run"));
      continue;
    }
    if (!clocks[line]) continue;
    const Milliseconds told = std::chrono::seconds(*clocks[line]);
    const Milliseconds wrong = std::chrono::abs(told - (world_.now() - *truth));
    if (wrong > rounding + tolerance_) {
      fault(of_line + " is told to have run for " + std::to_string(*clocks[line]) +
            " s, and has for " + std::to_string((world_.now() - *truth).count()) + " ms");
    }
  }
}

void TakeoverWitness::fault(const std::string& what) {
  faults_.push_back(exchange::format_seconds(world_.now()) + ' ' + what);
}

}  // namespace lineweir::simulation

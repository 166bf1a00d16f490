#include "simulation/studio_told.h"

#include <nlohmann/json.hpp>

#include "adminlink/admin_request.h"
#include "base/text.h"
#include "base/time_text.h"
#include "lines/status_letters.h"
#include "messages/conversation.h"
#include "server/server_room.h"
#include "wire/studio_texts.h"

namespace lineweir::simulation {

StudioTold ask_studio(platform::VirtualEventLoop& loop, server::Server& server,
                      const std::string& user, const std::string& password, int group) {
  server::FrameConsole probe(loop, server, "probe");
  probe.group = group;
  probe.log_in(user, password);
  probe.join(group);
  StudioTold told;
  for (const ServerPacket& packet : probe.take()) {
    switch (static_cast<ServerCommand>(packet.CMD)) {
      case ServerCommand::SrvFullStatus:
        for (std::size_t i = 0; i < packet.Buffer.size(); i += 3) told.letters += packet.Buffer[i];
        break;
      case ServerCommand::SrvCallerData:
        told.data.at(packet.LineNo) = decode_caller_data(packet.Buffer);
        break;
      case ServerCommand::SrvNextCall:
        told.next_call = packet.LineNo == no_value ? no_line : packet.LineNo;
        break;
      case ServerCommand::SrvFlashMessage:
        told.message = decode_text_message(packet.Buffer).value().text;
        break;
      case ServerCommand::SrvTimes:
        told.clocks = clocks_of(packet);
        break;
      default:
        break;
    }
  }
  return told;
}

std::vector<std::optional<int>> clocks_of(const ServerPacket& times) {
  std::vector<std::optional<int>> clocks;
  const auto told = decode_call_times(times.Buffer);
  if (!told) return clocks;
  const int now = required_time_of_day(told->server_now);
  for (const std::string& began : told->began) {
    clocks.emplace_back();
    if (!clock_runs(began)) continue;
    clocks.back() = (now - required_time_of_day(began) + seconds_per_day) % seconds_per_day;
  }
  return clocks;
}

std::vector<std::string> workers_told(platform::VirtualEventLoop& loop, server::Server& server,
                                      int group) {
  const auto wire = std::make_shared<server::LineState>(loop);
  server.accept_admin(std::make_unique<server::ServerEnd>(wire, "local"));
  admin::Request request{.command = admin::Command::Lines};
  request.values[admin::Field::Group] = std::int64_t{group};
  wire->server_end->on_bytes(admin::line_of(request) + '\n');
  loop.advance(std::chrono::milliseconds(100));
  std::vector<std::string> workers;
  const auto answer = nlohmann::json::parse(wire->to_console);
  for (const auto& row : answer.at("rows")) workers.push_back(row.at("user"));
  if (wire->server_end != nullptr) wire->server_end->on_end(platform::ConnectionEnd::Gone);
  loop.advance(std::chrono::milliseconds(1));
  return workers;
}

std::vector<std::string> differences(Seat& seat, const StudioTold& told, long& rows_compared) {
  std::vector<std::string> found;
  const auto expect = [&](const std::string& what, const std::string& shown,
                          const std::string& truth) {
    if (shown == truth) return;
    found.push_back(seat.name() + ": the " + what + " is \"" + shown + "\" and was told as \"" +
                    truth + '"');
  };
  Console& console = seat.console();
  for (int line = 0; line < static_cast<int>(told.letters.size()); ++line) {
    const auto place = static_cast<std::size_t>(line);
    const std::string row = " of row " + std::to_string(line + 1);
    ++rows_compared;
    const char letter = console.lines.StatusLetter(line);
    const char truth = told.letters[place];
    expect("letter" + row, std::string(1, letter == ' ' ? 'F' : letter), std::string(1, truth));
    if (truth == 'F') continue;
    // Of a caller of whom nothing is told only the name is taken off the row.
    const CallerDetails data = told.data[place].value_or(CallerDetails{});
    expect("name" + row, std::string(trimmed(console.Lineweir.LineName(line).caption.get())),
           data.fields[0]);
    if (!told.data[place]) continue;
    expect("number" + row,
           std::string(
               trimmed(console.Lineweir.labels_of(CallerField::PhoneNumber)(line).caption.get())),
           data.fields[5]);
  }
  expect("next call", std::to_string(console.lines.TheNextCall), std::to_string(told.next_call));
  // A message of its own that didn't go out stands there until the next one comes.
  const bool has_unsent = console.Lineweir.Text1.tool_tip.get().ends_with("not sent");
  if (!told.message.empty() && !has_unsent) {
    expect("message", console.Lineweir.Text1.text, last_lines(shown_message(told.message)));
  }
  return found;
}

}  // namespace lineweir::simulation

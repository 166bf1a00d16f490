#include "simulation/equipment_room.h"

#include <algorithm>

namespace lineweir::simulation {
namespace {

constexpr int only_port = 1;

// Ten bits a character, rounded up.
Milliseconds time_on_line(std::size_t characters) {
  return Milliseconds((characters * 25 + 2) / 3);
}

}  // namespace

EquipmentRoom::EquipmentRoom(platform::VirtualEventLoop& loop, Transcript& transcript,
                             const studio::BoxedExchangeOptions& options)
    : loop_(loop),
      transcript_(transcript),
      exchange_(options),
      lines_(static_cast<std::size_t>(options.boxes)) {
  serve();
}

void EquipmentRoom::plug_in(int box, platform::ScriptedSerialPort& port) {
  line_at(box).port = &port;
  port.on_written = [this, box] { carry_to_box(box); };
}

Milliseconds EquipmentRoom::silence(int box) const {
  const SerialLine& line = lines_[static_cast<std::size_t>(box)];
  if (!exchange_.is_silent(box) || line.busy_until > loop_.now()) return Milliseconds{0};
  return loop_.now() - line.busy_until;
}

char EquipmentRoom::expected_letter(int line) const {
  const char letter = exchange_.letter(line);
  return letter == 'F' || letter == 'B' ? ' ' : letter;
}

void EquipmentRoom::carry_to_box(int box) {
  SerialLine& line = line_at(box);
  for (const std::string& words : line.port->take_writes()) {
    if (line.port->comm_port() != only_port) continue;
    line.busy_until = std::max(line.busy_until, loop_.now()) + time_on_line(words.size());
    loop_.schedule(line.busy_until - loop_.now(), [this, box, words] {
      exchange_.receive(words, loop_.now(), box);
      serve();
    });
  }
}

// Lets the exchange do what is due, hands over what has come through, and comes again when more is
// due.
void EquipmentRoom::serve() {
  exchange_.advance(loop_.now());
  for (int box = 0; box < static_cast<int>(lines_.size()); ++box) {
    const std::string said = exchange_.take_output(box);
    SerialLine& line = line_at(box);
    if (said.empty() || line.port == nullptr) continue;
    line.busy_until = std::max(line.busy_until, loop_.now());
    if (line.port->comm_port() == only_port) line.port->arrive(said);
  }
  for (const studio::Record& record : exchange_.take_records()) {
    const std::string text = studio::format_record(record);
    transcript_.add("exchange", text.substr(text.find(' ') + 1));
  }
  loop_.cancel(next_serving_);
  const exchange::Moment due = exchange_.next_due();
  if (due == exchange::never) return;
  next_serving_ = loop_.schedule(due - loop_.now(), [this] { serve(); });
}

}  // namespace lineweir::simulation

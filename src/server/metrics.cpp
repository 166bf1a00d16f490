#include "server/metrics.h"

#include <string_view>

#include "wire/server_packet_commands.h"

namespace lineweir::server {
namespace {

class Text {
 public:
  void head(std::string_view name, std::string_view kind, std::string_view help) {
    name_ = name;
    text_ += "# HELP lineweir_" + name_ + ' ' + std::string(help) + "\n# TYPE lineweir_" + name_ +
             ' ' + std::string(kind) + '\n';
  }
  // `labels` such as `code="4"`; may be empty.
  void value(const std::string& labels, double number) {
    text_ += "lineweir_" + name_ + (labels.empty() ? "" : '{' + labels + '}') + ' ';
    const auto whole = static_cast<long long>(number);
    text_ += static_cast<double>(whole) == number ? std::to_string(whole) : std::to_string(number);
    text_ += '\n';
  }
  void one(std::string_view name, std::string_view kind, std::string_view help, double number) {
    head(name, kind, help);
    value({}, number);
  }
  std::string take() { return std::move(text_); }

 private:
  std::string name_;
  std::string text_;
};

double seconds(platform::Milliseconds span) { return static_cast<double>(span.count()) / 1000; }

template <class Rows>
void frames(Text& text, const Rows& rows, const std::array<std::uint64_t, 256>& counts) {
  for (const auto& row : rows) {
    const auto code = static_cast<std::uint8_t>(row.command);
    text.value("code=\"" + std::to_string(code) + "\",name=\"" + std::string(row.name) + '"',
               static_cast<double>(counts[code]));
  }
}

}  // namespace

std::string metrics_text(const Context& context, const SeatBook& seats, const Groups& groups,
                         const LoginDesk& logins, const QueueFigures& queues) {
  const Figures& figures = context.figures;
  Text text;
  text.head("seats", "gauge", "Seats that are registered in a group.");
  for (const auto& [number, group] : groups) {
    text.value("group=\"" + std::to_string(number) + '"',
               static_cast<double>(group->seats().seats().size()));
  }
  text.one("seats_let_in", "gauge", "Seats that are let in.",
           static_cast<double>(seats.all().size()));
  text.one("connections", "gauge", "Connections of consoles.",
           static_cast<double>(queues.connections));
  text.one("connections_total", "counter", "Connections of consoles since the start.",
           static_cast<double>(figures.connections));
  text.one("logins_total", "counter", "Accepted logins.", static_cast<double>(figures.logins));
  text.head("frames_in_total", "counter", "Frames from consoles.");
  frames(text, client_commands, figures.frames_in);
  text.head("frames_out_total", "counter", "Frames to consoles.");
  frames(text, server_commands, figures.frames_out);
  text.head("refusals_total", "counter", "What was not done, by reason.");
  for (const RefusalName& row : refusal_names) {
    text.value("reason=\"" + std::string(row.name) + '"',
               static_cast<double>(figures.refusals[static_cast<std::size_t>(row.refusal)]));
  }
  text.head("seats_dropped_total", "counter", "Seats that were dropped.");
  text.value("reason=\"slow\"", static_cast<double>(figures.dropped_slow));
  text.value("reason=\"silent\"", static_cast<double>(figures.dropped_silent));
  text.one("line_changes_total", "counter", "Changes of lines.",
           static_cast<double>(figures.line_changes));
  text.one("calls", "gauge", "Calls that stand.", static_cast<double>(context.calls.standing()));
  text.head("exchange_reached", "gauge", "1 while the exchange of a group can be reached.");
  for (const auto& [number, group] : groups) {
    text.value("group=\"" + std::to_string(number) + '"',
               group->lines().exchange().is_reached() ? 1 : 0);
  }
  text.one("queued_bytes", "gauge", "Bytes that wait for consoles.",
           static_cast<double>(queues.queued_bytes));
  text.one("longest_queue_bytes", "gauge", "Bytes that wait for the slowest console.",
           static_cast<double>(queues.longest_queue));
  text.one("logins_waiting", "gauge", "Passwords that are being looked at.",
           static_cast<double>(logins.waiting()));
  text.one("loop_late_seconds", "gauge", "How late the loop last ran what was due.",
           seconds(figures.late));
  text.one("loop_worst_late_seconds", "gauge", "How late the loop has been at worst.",
           seconds(figures.worst_late));
  text.one("store_waiting", "gauge", "Records that wait for the store.",
           static_cast<double>(context.outbox.waiting()));
  text.one("store_lost_total", "counter", "Records that the store could not take in time.",
           static_cast<double>(context.outbox.lost()));
  text.one("store_reached", "gauge", "1 while the store can be written.",
           context.outbox.store_is_away() ? 0 : 1);
  return text.take();
}

}  // namespace lineweir::server

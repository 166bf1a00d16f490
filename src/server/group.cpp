#include "server/group.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "base/time_text.h"
#include "lines/equipment_kinds.h"
#include "server/caller_text.h"
#include "wire/caller_known.h"
#include "wire/studio_texts.h"

namespace lineweir::server {
namespace {

constexpr std::size_t line_name_length = 10;
constexpr std::size_t longest_show_text = 255;
constexpr std::size_t unnamed_phones = 8;

}  // namespace

Group::Group(const Context& context, GroupOptions options,
             std::unique_ptr<exchange::Exchange> exchange, const platform::GroupMemory* memory)
    : context_(context),
      options_(std::move(options)),
      lines_(context, options_, relay_, std::move(exchange)),
      next_call_(context, options_, relay_, lines_),
      caller_data_(context, options_, relay_, lines_),
      known_callers_(context, options_, relay_, lines_) {
  caller_data_.on_number = [this](int line, const std::string& number) {
    known_callers_.look_up(line, number);
  };
  lines_.on_call_ended = [this](int line) { caller_data_.call_ended(line); };
  lines_.on_call_begun = [this](int line, const std::string& number) {
    caller_data_.call_begun(line, number);
  };
  lines_.on_letter = [this](int line, char letter) {
    const int next = next_call_.line();
    next_call_.letter_changed(line, letter);
    if (next != next_call_.line()) remember();
  };
  const bool next_had_caller =
      memory != nullptr && context_.calls.remembers(options_.number, memory->next_call);
  lines_.take_over();
  if (memory == nullptr) return;
  next_call_.remember(memory->next_call, next_had_caller);
  message_ = clean_message(memory->message).value_or("");
  show_times_ = memory->show_times;
  // Otherwise the next server would find again what is over.
  if (next_call_.line() != memory->next_call) remember();
}

void Group::change(const GroupOptions& options) {
  options_.name = options.name;
  options_.line_names = options.line_names;
  lines_.leave_out(options.missing_lines);
  for (const int number : options.missing_lines) forget_line(number - 1);
  const std::vector<int> missing = std::exchange(options_.missing_lines, options.missing_lines);
  options_.hybrids = options.hybrids;
  options_.positions = options.positions;
  options_.phone_names = options.phone_names;
  relay_.tell(studio_status());
  relay_.tell(line_numbers());
  if (server_decides(options_.kind)) relay_.tell(phone_names());
  for (const int number : missing) lines_.take_letter(number - 1);
}

void Group::end() {
  std::vector<int> all;
  for (int number = 1; number <= lines_.count(); ++number) all.push_back(number);
  lines_.leave_out(all);
  close_forgotten();
}

platform::GroupMemory Group::memory() const {
  return {options_.number, next_call_.line(), message_, show_times_};
}

void Group::take_restored(const platform::GroupMemory& memory) {
  message_ = clean_message(memory.message).value_or("");
  show_times_ = memory.show_times;
  if (!message_.empty()) relay_.tell(packet(ServerCommand::SrvFlashMessage, message_));
  relay_.tell(show_times());
  // The backup's next call is over, as all its calls are.
  remember();
}

std::string Group::exchange_is_away() const {
  return "The telephone equipment of " + options_.name +
         " does not answer. The lines show what was last known of them.";
}

void Group::letters_known() {
  lines_.take_letters();
  close_forgotten();
}

void Group::close_forgotten() {
  context_.calls.close_forgotten(options_.number);
  const int next = next_call_.line();
  next_call_.letters_known();
  if (next != next_call_.line()) remember();
}

// What was told of it while nobody was on it goes too.
void Group::forget_line(int line) {
  if (!lines_.exists(line)) return;
  caller_data_.call_ended(line);
  next_call_.letter_changed(line, 'F');
}

void Group::join(Seat& seat) {
  relay_.join(seat);
  seat.group = options_.number;
  seat.told_status = false;
  seat.tell(Telling(phone_kind()));
  if (!message_.empty()) seat.tell(Telling(packet(ServerCommand::SrvFlashMessage, message_)));
  seat.tell(Telling(show_times()));
  if (!lines_.exchange().is_reached()) seat.tell_person(exchange_is_away());
}

void Group::tell_callers(Seat& seat) const {
  caller_data_.tell_all_lines(seat);
  known_callers_.tell_all_lines(seat);
  next_call_.tell(seat);
}

bool Group::take_message(std::string_view buffer) {
  auto message = clean_message(buffer);
  if (!message) return false;
  message_ = std::move(*message);
  relay_.tell(packet(ServerCommand::SrvFlashMessage, message_));
  remember();
  return true;
}

void Group::tell_persons(const std::string& text) const {
  for (Seat* seat : relay_.seats()) seat->tell_person(text);
}

void Group::set_show_times(const std::array<std::string, 3>& times) {
  show_times_ = times;
  relay_.tell(show_times());
  remember();
}

void Group::choose_next(Seat& seat, int line) {
  if (const auto refusal = next_call_.choose(line)) {
    context_.figures.refuse(*refusal);
    next_call_.tell(seat);
  } else {
    remember();
  }
}

ServerPacket Group::studio_status() const {
  StudioParts parts;
  parts.parts = {options_.hybrids[0], options_.hybrids[1], options_.positions[0],
                 options_.positions[1]};
  for (int line = 0; line < lines_.count(); ++line) parts.lines.push_back(lines_.exists(line));
  return packet(ServerCommand::SrvStudioStatus, encode_studio_parts(parts));
}

ServerPacket Group::times() const {
  CallTimes times;
  const auto time_text = [this](platform::Moment moment) {
    return clock_text(seconds_of_day(context_.clock.local(moment)));
  };
  const platform::Moment now = context_.clock.now();
  for (int line = 0; line < lines_.count(); ++line) {
    const platform::Moment clock = lines_.line(line).clock;
    // Somebody may have set the clock back since.
    times.began.push_back(clock.count() == 0 ? std::string() : time_text(std::min(clock, now)));
  }
  times.server_now = time_text(now);
  return packet(ServerCommand::SrvTimes, encode_call_times(times));
}

ServerPacket Group::line_numbers() const {
  std::string names;
  for (int line = 0; line < lines_.count(); ++line) {
    const auto place = static_cast<std::size_t>(line);
    std::string name = place < options_.line_names.size() ? in_letters(options_.line_names[place])
                                                          : std::to_string(line + 1);
    name.resize(line_name_length, ' ');
    names += name;
  }
  return packet(ServerCommand::SrvLineNumbers, names);
}

ServerPacket Group::phone_kind() const {
  ServerPacket told = packet(ServerCommand::SrvPhoneType, std::to_string(options_.kind));
  told.Bank = has_caller_memory;
  return told;
}

ServerPacket Group::phone_names() const {
  std::vector<std::string> names;
  if (server_decides(options_.kind)) {
    for (const std::string& name : options_.phone_names) names.push_back(in_letters(name));
    while (options_.phone_names.empty() && names.size() < unnamed_phones) {
      names.push_back("Phone " + std::to_string(names.size() + 1));
    }
  }
  return packet(ServerCommand::SrvPhoneNames, encode_list(names));
}

void Group::remember() const { context_.outbox.put(memory()); }

std::string Group::in_letters(const std::string& utf8) const {
  return clean_name(context_.letters.from_utf8(utf8), longest_show_text);
}

ServerPacket Group::show_times() const {
  std::vector<std::string> texts;
  for (const std::string& text : show_times_) texts.push_back(in_letters(text));
  return packet(ServerCommand::SrvShowTimes, encode_list(texts));
}

ServerPacket Group::packet(ServerCommand command, std::string buffer) const {
  return server_packet(command, options_.number, std::move(buffer));
}

}  // namespace lineweir::server

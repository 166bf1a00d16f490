#include "server/caller_data.h"

#include <algorithm>

#include "lines/caller_fields.h"

namespace lineweir::server {
namespace {

constexpr std::size_t phone_number_place = []() -> std::size_t {
  for (std::size_t place = 0; place < entry_field_count; ++place) {
    if (entry_fields[place].field == CallerField::PhoneNumber) return place;
  }
  return entry_field_count;
}();
static_assert(phone_number_place < entry_field_count);

constexpr std::size_t longest_shown_number = 30;

CallBook::Fields utf8_fields(const CallerDetails& data, const Letters& letters) {
  CallBook::Fields fields;
  for (std::size_t i = 0; i < fields.size(); ++i) fields[i] = letters.to_utf8(data.fields[i]);
  return fields;
}

}  // namespace

CallerData::CallerData(const Context& context, const GroupOptions& options, Relay& relay,
                       GroupLines& lines)
    : context_(context),
      options_(options),
      relay_(relay),
      lines_(lines),
      data_(static_cast<std::size_t>(options.lines)) {}

void CallerData::take(Seat& seat, int line, std::string_view buffer) {
  if (buffer.empty()) {
    if (lines_.has_call(line)) {
      tell(seat, line);
    } else {
      clear(line);
    }
    return;
  }
  const CallerDetails& told = at(line).emplace(clean_caller_data(buffer));
  seat.own_names.add(told.sender);
  context_.calls.tell_data(options_.number, line, context_.letters.to_utf8(told.sender),
                           utf8_fields(told, context_.letters), seat.user);
  context_.audit.note(seat.user, "caller data",
                      options_.name + ", line " + std::to_string(line + 1));
  for (Seat* other : relay_.seats()) {
    if (other == &seat) {
      seat.tell(Telling(packet(line, encode_caller_data(told))));
    } else {
      tell(*other, line);
    }
  }
  on_number(line, told.fields[phone_number_place]);
}

void CallerData::call_ended(int line) {
  if (at(line)) clear(line);
}

void CallerData::call_begun(int line, const std::string& number) {
  const platform::CallRecord* call = context_.calls.find(options_.number, line);
  CallerDetails data;
  const bool was_told =
      call != nullptr && std::any_of(call->told.begin(), call->told.end(),
                                     [](const auto& text) { return !text.empty(); });
  if (was_told) {
    data.sender = context_.letters.from_utf8(call->told_by);
    for (std::size_t i = 0; i < data.fields.size(); ++i) {
      data.fields[i] = context_.letters.from_utf8(call->told[i]);
    }
    data = clean_caller_data(std::move(data));
  } else {
    const std::string known = call == nullptr ? number : context_.letters.from_utf8(call->number);
    if (known.empty()) {
      call_ended(line);
      return on_number(line, {});
    }
    data.fields[phone_number_place] = clean_name(known, longest_shown_number);
  }
  at(line) = std::move(data);
  for (Seat* seat : relay_.seats()) tell(*seat, line);
  on_number(line, at(line)->fields[phone_number_place]);
}

void CallerData::tell_all_lines(Seat& seat) const {
  for (int line = 0; line < lines_.count(); ++line) {
    if (lines_.exists(line)) tell(seat, line);
  }
}

void CallerData::clear(int line) {
  at(line).reset();
  relay_.tell(packet(line, {}));
  on_number(line, {});
}

void CallerData::tell(Seat& seat, int line) const {
  if (!data(line)) return seat.tell(Telling(packet(line, {})));
  CallerDetails told = *data(line);
  if (seems_own(seat, line)) told.sender.clear();
  seat.tell(Telling(packet(line, encode_caller_data(told))));
}

bool CallerData::seems_own(const Seat& seat, int line) const {
  return seat.own_names.contains(std::string(trimmed(data(line)->sender)));
}

ServerPacket CallerData::packet(int line, std::string buffer) const {
  ServerPacket told =
      server_packet(ServerCommand::SrvCallerData, options_.number, std::move(buffer));
  told.LineNo = field_byte(line);
  return told;
}

}  // namespace lineweir::server

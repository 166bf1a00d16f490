#include "wire/server_packet_codec.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "base/failure.h"
#include "base/text.h"
#include "wire/packet_text.h"
#include "wire/password_scramble.h"
#include "wire/server_packet_framing.h"

namespace lineweir {
namespace {

// The fields of the header in the order in which they stand.
constexpr std::array one_byte_fields = {&ServerPacket::CMD,     &ServerPacket::LineNo,
                                        &ServerPacket::GroupNo, &ServerPacket::AltInfo,
                                        &ServerPacket::Console, &ServerPacket::Bank};

// Takes the text up to the next end character off the front; nothing where there is none.
std::optional<std::string_view> take_ended(std::string_view& text, char end) {
  const auto place = text.find(end);
  if (place == std::string_view::npos) return std::nullopt;
  const auto taken = text.substr(0, place);
  text.remove_prefix(place + 1);
  return taken;
}

std::optional<int> take_color(std::string_view& text) {
  const auto field = take_ended(text, field_end);
  if (!field) return std::nullopt;
  const auto digits = trimmed(*field);
  int color = 0;
  const auto [rest, error] = std::from_chars(digits.data(), digits.data() + digits.size(), color);
  if (error != std::errc{} || rest != digits.data() + digits.size()) return std::nullopt;
  return color;
}

std::uint8_t field_by_rule(FieldRule rule, int group_number, int console_number) {
  switch (rule) {
    case FieldRule::None:
      return no_value;
    case FieldRule::GroupNumber:
      return field_byte(group_number);
    case FieldRule::ConsoleNumber:
      return field_byte(console_number);
    case FieldRule::Sender:
      break;
  }
  return 0;
}

}  // namespace

void ServerPacket::set_buffer(std::string text) {
  const auto longest = static_cast<std::size_t>(INT16_MAX) + 1;
  const std::string size = TextWrit_SizeEncode(static_cast<int>(std::min(text.size(), longest)));
  Size = {static_cast<std::uint8_t>(size[0]), static_cast<std::uint8_t>(size[1])};
  Buffer = std::move(text);
}

std::uint8_t field_byte(int value) {
  if (value < 0 || value > 255) {
    throw Failure(failure_number::invalid_argument, "Invalid procedure call or argument");
  }
  return static_cast<std::uint8_t>(value);
}

std::string body_of(const ServerPacket& packet) {
  std::string body;
  body.reserve(header_length + packet.Buffer.size());
  for (const auto field : one_byte_fields) body += static_cast<char>(packet.*field);
  for (const std::uint8_t byte : packet.Size) body += static_cast<char>(byte);
  body += packet.Buffer;
  return body;
}

ServerPacket packet_of(std::string_view body) {
  ServerPacket packet;
  const auto byte_at = [body](std::size_t place) {
    return place < body.size() ? static_cast<std::uint8_t>(body[place]) : std::uint8_t{0};
  };
  std::size_t place = 0;
  for (const auto field : one_byte_fields) packet.*field = byte_at(place++);
  for (std::uint8_t& byte : packet.Size) byte = byte_at(place++);
  if (body.size() > header_length) {
    body.remove_prefix(header_length);
    if (body.ends_with(pad_byte)) body.remove_suffix(1);
    packet.Buffer = body;
  }
  return packet;
}

ServerPacket client_packet(ClientCommand command, int group_number, int console_number) {
  const ClientCommandRow& row = row_of(command);
  const auto field = [&](FieldRule rule) {
    return field_by_rule(rule, group_number, console_number);
  };
  ServerPacket packet;
  packet.CMD = static_cast<std::uint8_t>(command);
  packet.LineNo = field(row.LineNo);
  packet.GroupNo = field(row.GroupNo);
  packet.AltInfo = field(row.AltInfo);
  packet.Console = field(row.Console);
  packet.Bank = field(row.Bank);
  return packet;
}

CallerDetails caller_data_of(std::string_view sender, const CallerRecord& record) {
  CallerDetails data;
  data.sender = trimmed(sender);
  for (std::size_t i = 0; i < data.fields.size(); ++i) {
    data.fields[i] = trimmed(record[entry_fields[i].field]);
  }
  return data;
}

std::string encode_caller_data(const CallerDetails& data) {
  std::string buffer = data.sender;
  buffer += field_end;
  for (const std::string& field : data.fields) {
    buffer += field;
    buffer += field_end;
  }
  return buffer;
}

std::optional<CallerDetails> decode_caller_data(std::string_view buffer) {
  CallerDetails data;
  const auto sender = take_ended(buffer, field_end);
  if (!sender) return std::nullopt;
  data.sender = *sender;
  for (std::string& field : data.fields) {
    const auto text = take_ended(buffer, field_end);
    if (!text) return std::nullopt;
    field = *text;
  }
  return data;
}

std::string encode_text_message(const TextMessage& message) {
  return std::to_string(message.back_color) + field_end + std::to_string(message.fore_color) +
         field_end + message.text;
}

std::optional<TextMessage> decode_text_message(std::string_view buffer) {
  const auto back_color = take_color(buffer);
  if (!back_color) return std::nullopt;
  const auto fore_color = take_color(buffer);
  if (!fore_color) return std::nullopt;
  return TextMessage{*back_color, *fore_color, std::string(buffer)};
}

std::string login_buffer(std::string_view scrambled_user, std::string_view scrambled_password) {
  std::string buffer(scrambled_user);
  buffer += item_end;
  buffer += scrambled_password;
  return buffer;
}

std::optional<Login> decode_login(std::string_view buffer) {
  const auto scrambled_user = take_ended(buffer, item_end);
  if (!scrambled_user) return std::nullopt;
  const auto user = pass_decode(*scrambled_user);
  const auto password = pass_decode(buffer);
  if (!user || !password) return std::nullopt;
  return Login{*user, *password};
}

std::vector<std::string> decode_list(std::string_view buffer) {
  std::vector<std::string> items;
  while (const auto item = take_ended(buffer, item_end)) items.emplace_back(*item);
  return items;
}

std::string encode_list(const std::vector<std::string>& items) {
  std::string buffer;
  for (const std::string& item : items) {
    buffer += item;
    buffer += item_end;
  }
  return buffer;
}

}  // namespace lineweir

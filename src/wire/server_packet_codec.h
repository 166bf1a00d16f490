#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lines/caller_record.h"
#include "wire/server_packet_commands.h"

namespace lineweir {

// In a one-byte field this means that the field carries nothing.
inline constexpr std::uint8_t no_value = 255;

// Inside a buffer these end a field of a record and an item of a list. Neither is escaped.
inline constexpr char field_end = '\2';
inline constexpr char item_end = '\3';

// One frame, without its markers. A field that nobody sets is byte 0.
struct ServerPacket {
  std::uint8_t CMD = 0;
  // A line counts from 0, a group from 1.
  std::uint8_t LineNo = 0;
  std::uint8_t GroupNo = 0;
  std::uint8_t AltInfo = 0;
  std::uint8_t Console = 0;
  std::uint8_t Bank = 0;
  // The length of the buffer without the pad, the high byte first. Receivers don't read it.
  std::array<std::uint8_t, 2> Size{};
  std::string Buffer;

  // Sets Buffer and Size. More than 32767 bytes are a Failure of number 6, and nothing is set.
  void set_buffer(std::string text);

  friend bool operator==(const ServerPacket&, const ServerPacket&) = default;
};

// A number as a field; one outside 0 to 255 is a Failure of number 5.
std::uint8_t field_byte(int value);

// The body between the markers: CMD, LineNo, GroupNo, AltInfo, Console, Bank, the two bytes of
// Size, then the buffer as it stands.
std::string body_of(const ServerPacket& packet);

// The packet of a received body, whatever it holds. The buffer is what follows the header, without
// a last byte 255, which is taken for the pad; what a short body lacks of the header is byte 0.
ServerPacket packet_of(std::string_view body);

// A client's packet with the fields that its row of the table tells, and an empty buffer.
ServerPacket client_packet(ClientCommand command, int group_number, int console_number);

// The data of a caller as they pass between consoles: eleven texts, each ended by a char 2.
struct CallerDetails {
  // Who entered the data.
  std::string sender;
  // The fields of a CallerRecord that people enter, in their order, trimmed.
  std::array<std::string, entry_field_count> fields;

  friend bool operator==(const CallerDetails&, const CallerDetails&) = default;
};

CallerDetails caller_data_of(std::string_view sender, const CallerRecord& record);
std::string encode_caller_data(const CallerDetails& data);
// Nothing where fewer than eleven texts are ended; what follows the eleventh is passed over.
std::optional<CallerDetails> decode_caller_data(std::string_view buffer);

// A message with the colours in which it is shown, red in the low byte: the back colour in decimal,
// char 2, the fore colour in decimal, char 2, the text.
struct TextMessage {
  int back_color = 0;
  int fore_color = 0;
  std::string text;

  friend bool operator==(const TextMessage&, const TextMessage&) = default;
};

std::string encode_text_message(const TextMessage& message);
// Nothing where a colour is missing or no number of 32 signed bits.
std::optional<TextMessage> decode_text_message(std::string_view buffer);

struct Login {
  std::string user;
  std::string password;

  friend bool operator==(const Login&, const Login&) = default;
};

// The scrambled name, char 3, the scrambled password.
std::string login_buffer(std::string_view scrambled_user, std::string_view scrambled_password);
// Nothing where the char 3 is missing or a half is no scrambled text.
std::optional<Login> decode_login(std::string_view buffer);

// A list: each item is ended by a char 3, and what follows the last one is no item.
std::vector<std::string> decode_list(std::string_view buffer);
std::string encode_list(const std::vector<std::string>& items);

}  // namespace lineweir

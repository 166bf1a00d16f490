#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/caller_flag.h"

namespace lineweir {

// Bank of a server's SrvPhoneType: it has a caller memory, so that a console may ask it. It stands
// there so that nothing more is sent to consoles that know nothing of it.
inline constexpr std::uint8_t has_caller_memory = 'M';

// What the server's caller memory tells of a caller (SrvCallerKnown): AltInfo and the buffer.
struct CallerKnown {
  CallerFlag flag = CallerFlag::None;
  std::string number;
  int calls = 0;
  int on_air = 0;
  // When the caller was last on air, "2026-12-31 20:15"; empty if never.
  std::string last_on_air;
  std::string name;
  std::string city;
  // Of the flag: why, the last day on which it holds ("2026-12-31", empty for no end), by whom.
  std::string reason;
  std::string until;
  std::string flagged_by;

  friend bool operator==(const CallerKnown&, const CallerKnown&) = default;
};

// The nine fields of the buffer, parted by char 3. Control characters in a text become blanks.
std::string encode_caller_known(const CallerKnown& known);

// Nothing where a field is missing, a count is no number, a date none of the calendar or the flag
// none that is known. Texts are trimmed; what stands behind the ninth field is passed over.
std::optional<CallerKnown> decode_caller_known(std::uint8_t alt_info, std::string_view buffer);

// Most characters of a flag's reason.
inline constexpr std::size_t flag_reason_length = 100;

// A flag that a console wants noted (CmdFlagCaller): AltInfo and the buffer, three fields.
struct CallerFlagging {
  CallerFlag flag = CallerFlag::None;
  std::string number;
  std::string reason;
  std::string until;

  friend bool operator==(const CallerFlagging&, const CallerFlagging&) = default;
};

// A reason is cut to flag_reason_length.
std::string encode_caller_flagging(const CallerFlagging& flagging);

// Nothing for what encode_caller_flagging makes of no flagging: as above, and without a number or
// with too long a reason.
std::optional<CallerFlagging> decode_caller_flagging(std::uint8_t alt_info,
                                                     std::string_view buffer);

}  // namespace lineweir

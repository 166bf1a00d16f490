#pragma once

#include <sdbus-c++/Message.h>

#include <optional>
#include <string_view>

#include "letters/letters.h"
#include "platform/remote_service.h"

namespace lineweir::platform {

// No text of a call has more characters.
inline constexpr std::size_t longest_remote_text = 32767;

// The arguments of a call that has the types of `signature`; nothing where a text is too long.
std::optional<RemoteArguments> arguments_of(sdbus::Message& message, std::string_view signature,
                                            const Letters& letters);

// Texts lose code 0, which the bus doesn't carry.
void append(sdbus::Message& message, const RemoteArgument& argument, const Letters& letters);

// The type that an argument has on the bus.
char type_of(const RemoteArgument& argument);

// About how much room a call takes while it waits.
std::size_t room_of(const RemoteArguments& arguments);

}  // namespace lineweir::platform

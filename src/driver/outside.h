#pragma once

#include <optional>

#include "driver/session.h"
#include "driver/values.h"
#include "driver/words.h"

// The commands to the world outside the console: ports, socket, remote objects, the call log's
// disk, dialogs and the computer's clock. They work whether or not a console is running.
namespace lineweir::driver {

// What a command answers, and that of one that only does something.
using Result = std::optional<Json>;
inline constexpr std::nullopt_t done = std::nullopt;

using OutsideCommand = Result(Session& session, const Arguments& arguments);

OutsideCommand serial_in, serial_reply, serial_out, serial_fail;
OutsideCommand socket_accept, socket_refuse, socket_in, socket_reply, socket_out, socket_drop;
OutsideCommand remote_present, remote_absent, remote_result, remote_calls, remote_callback;
OutsideCommand log_lock, log_full, log_free, log_delete, journal_full, journal_free;
OutsideCommand answer_file, answer_input, answer_question, answer_font, dialogs;
OutsideCommand clock_settings;

// These two put a running console into the state that a connection leaves.
OutsideCommand socket_open, remote_open;

}  // namespace lineweir::driver

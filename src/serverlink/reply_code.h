#pragma once

namespace lineweir {

// What LastReplyCode holds: which of the server's answers came last. A login exchange clears it and
// waits for its own; each frame of these kinds sets it.
enum ReplyCode : int {
  reply_none = 0,
  reply_password_accepted = 1,
  reply_caller_data = 2,
  reply_studio_parts = 3,
  reply_group_names = 4,
  reply_call_times = 5,
  reply_full_status = 6,
  reply_phone_type = 7,
  reply_line_names = 8,
  reply_password_rejected = 20,
  reply_check_accepted = 21,
  reply_check_rejected = 22,
};

}  // namespace lineweir

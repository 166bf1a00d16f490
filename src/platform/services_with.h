#pragma once

#include <optional>

#include "platform/services.h"

namespace lineweir::platform {

// What stands in for parts of a workstation; what is null is the workstation's own.
struct Replaced {
  EventLoop* loop = nullptr;
  SystemClock* clock = nullptr;
  RandomNumbers* random = nullptr;
  UserFiles* user_files = nullptr;
  SerialPort* comm1 = nullptr;
  SerialPort* comm2 = nullptr;
  ClientSocket* winsock1 = nullptr;
  RemoteObjects* remote_objects = nullptr;
  std::optional<int> process_number = {};
};

// The services of a console of which some parts are others. Both outlive the console.
inline Services services_with(const Services& all, const Replaced& parts) {
  const auto chosen = [](auto* part, auto& own) -> auto& { return part != nullptr ? *part : own; };
  return {.loop = chosen(parts.loop, all.loop),
          .clock = chosen(parts.clock, all.clock),
          .random = chosen(parts.random, all.random),
          .files = all.files,
          .user_files = chosen(parts.user_files, all.user_files),
          .dialogs = all.dialogs,
          .databases = all.databases,
          .journal = all.journal,
          .printer = all.printer,
          .attention_sound = all.attention_sound,
          .letters = all.letters,
          .comm1 = chosen(parts.comm1, all.comm1),
          .comm2 = chosen(parts.comm2, all.comm2),
          .winsock1 = chosen(parts.winsock1, all.winsock1),
          .remote_objects = chosen(parts.remote_objects, all.remote_objects),
          .process_number = parts.process_number.value_or(all.process_number),
          .end_program = all.end_program};
}

}  // namespace lineweir::platform

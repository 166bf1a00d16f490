#include "serverd/log_sink.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string_view>

namespace lineweir::serverd {

namespace {

using server::LogLevel;

struct LevelName {
  std::string_view word;
  // As the system's log counts.
  char priority;
};

LevelName name_of(LogLevel level) {
  switch (level) {
    case LogLevel::Error:
      return {"error", '3'};
    case LogLevel::Warning:
      return {"warning", '4'};
    case LogLevel::Notice:
      return {"notice", '5'};
    case LogLevel::Info:
      return {"info", '6'};
    case LogLevel::Debug:
      return {"debug", '7'};
  }
  return {"error", '3'};
}

bool is_control_code(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

// Whether a byte begins a code point.
bool begins(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

}  // namespace

std::string log_line(LogForm form, LogLevel level, const std::string& text) {
  const LevelName name = name_of(level);
  std::string line = form == LogForm::Journal ? std::string("<") + name.priority + ">"
                                              : std::string(name.word) + ": ";
  line += text;
  std::ranges::replace_if(line, is_control_code, ' ');
  if (line.size() >= PIPE_BUF) {
    std::size_t end = PIPE_BUF - 1;
    while (end > 0 && !begins(line[end])) --end;
    line.resize(end);
  }
  return line + '\n';
}

void LogSink::write(LogLevel level, const std::string& text) {
  if (level > least_) return;
  if (lost_ > 0 && put(log_line(form_, LogLevel::Warning,
                                std::to_string(lost_) + " lines of this log were lost"))) {
    lost_ = 0;
  }
  if (!put(log_line(form_, level, text))) ++lost_;
}

// A pipe that can be written to takes as much as a line has; a socket is told not to wait.
bool LogSink::put(const std::string& line) const {
  pollfd ready{descriptor_, POLLOUT, 0};
  if (::poll(&ready, 1, 0) != 1 || ready.revents != POLLOUT) return false;
  ssize_t count = ::send(descriptor_, line.data(), line.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  if (count < 0 && errno == ENOTSOCK) count = ::write(descriptor_, line.data(), line.size());
  return count > 0;
}

LogForm form_of_standard_error() {
  const char* const journal = std::getenv("JOURNAL_STREAM");
  struct stat found {};
  if (journal == nullptr || ::fstat(STDERR_FILENO, &found) != 0) return LogForm::Words;
  const std::string here = std::to_string(found.st_dev) + ":" + std::to_string(found.st_ino);
  return here == journal ? LogForm::Journal : LogForm::Words;
}

}  // namespace lineweir::serverd

#pragma once

#include <string>

#include "server/server_log.h"

namespace lineweir::serverd {

enum class LogForm {
  // "warning: text", for a person.
  Words,
  // "<4>text", as the journal takes it.
  Journal,
};

// A line of a log with its end. Control characters in it become spaces, and what is too long for
// one write is cut.
std::string log_line(LogForm form, server::LogLevel level, const std::string& text);

// Writes lines to a descriptor and never waits: lines that its reader doesn't take are lost, and
// counted in the next one.
class LogSink {
 public:
  LogSink(int descriptor, LogForm form, server::LogLevel least)
      : descriptor_(descriptor), form_(form), least_(least) {}

  void write(server::LogLevel level, const std::string& text);

 private:
  bool put(const std::string& line) const;

  int descriptor_;
  LogForm form_;
  server::LogLevel least_;
  int lost_ = 0;
};

// By whether the journal itself reads the standard error.
LogForm form_of_standard_error();

}  // namespace lineweir::serverd

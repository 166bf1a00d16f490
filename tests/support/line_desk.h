#pragma once

#include <string>
#include <vector>

#include "support/call_log_file.h"
#include "support/entry_form.h"

namespace lineweir::test {

// The line on which most of it happens.
inline constexpr int line = 3;

inline constexpr const char* hung_up = "The caller has hung up";

// Column positions of the log.
inline constexpr std::size_t log_name = 0;
inline constexpr std::size_t log_city = 2;
inline constexpr std::size_t log_comments = 6;
inline constexpr std::size_t log_date = 9;
inline constexpr std::size_t log_placed_on_air = 11;
inline constexpr std::size_t log_on_air = 12;

// A console with a log, on whose line callers come and go while Form4 is open.
struct LineDesk : EntryForm {
  LineDesk() { choose_log(*this); }

  void server_sends(const std::string& status_text) {
    console.line_events.apply_soon(status_text);
    platform.loop.advance(platform::Milliseconds(20));
  }
  // The server's report of the line, with all others idle.
  void server_reports(char letter, int at = line) {
    std::string text;
    for (int i = 0; i < 10; ++i) text += std::string(1, i == at ? letter : 'F') + "00";
    server_sends(text);
  }

  bool tells(const std::string& text) {
    return form().NoticeLabel.visible &&
           form().NoticeLabel.caption.get().find(text) != std::string::npos;
  }

  std::vector<std::vector<std::string>> rows() {
    platform.loop.run_pending();
    return logged_rows(*this);
  }
};

}  // namespace lineweir::test

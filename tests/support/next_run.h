#pragma once

#include <string>

#include "callerdata/caller_data.h"
#include "callerdata/draft_file.h"
#include "support/line_desk.h"

namespace lineweir::test {

inline std::string draft_file(LineDesk& desk) {
  return desk.platform.files.read(std::string(draft_file_name)).value_or("");
}

// Another run of the program, which finds this file of drafts.
struct NextRun : LineDesk {
  explicit NextRun(const std::string& file) {
    platform.files.replace(std::string(draft_file_name), file);
    console.caller_data.restore_drafts();
  }
};

inline void save_as(LineDesk& desk, const std::string& name) {
  desk.connect_socket();
  desk.open(line);
  desk.type(1, name);
  desk.type(3, "Bath");
  desk.save();
}

inline void save_ann(LineDesk& desk) { save_as(desk, "Ann"); }

inline void wait(LineDesk& desk, int seconds) {
  desk.platform.loop.advance(platform::Milliseconds(seconds * 1000));
}

// What a console leaves that is killed while Ann is on air and her data are saved.
inline std::string left_with_ann_on_air() {
  LineDesk desk;
  desk.box_sends("N03");
  save_ann(desk);
  return draft_file(desk);
}

// A minute later.
struct LaterRun : NextRun {
  explicit LaterRun(const std::string& file) : NextRun(file) { wait(*this, 60); }
};

// A session has begun, and the server has told from when on the call on the line lasts.
inline void report_same_call(LineDesk& desk, const std::string& began = "09:59:00",
                             char letter = 'N') {
  desk.console.lines.FreshConnect = true;
  desk.console.lines.ClockBase(line) = began;
  desk.server_reports(letter);
}

}  // namespace lineweir::test

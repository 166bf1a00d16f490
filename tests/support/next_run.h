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

}  // namespace lineweir::test

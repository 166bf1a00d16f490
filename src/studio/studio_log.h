#pragma once

#include <fstream>
#include <iosfwd>
#include <string>

#include "studio/record.h"

namespace lineweir::studio {

// Writes the transcript, one flushed line a record, so that a reader that follows it misses
// nothing and a killed studio leaves all of it.
class StudioLog {
 public:
  // An empty path is no log, "-" the standard output that is passed in, which must outlive this; a
  // file is begun anew. Throws std::runtime_error if it can't be.
  StudioLog(const std::string& path, std::ostream& standard_output);

  void write(const Record& record);

 private:
  std::ofstream file_;
  std::ostream* out_ = nullptr;
};

}  // namespace lineweir::studio

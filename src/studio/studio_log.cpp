#include "studio/studio_log.h"

#include <ostream>
#include <stdexcept>

namespace lineweir::studio {

StudioLog::StudioLog(const std::string& path, std::ostream& standard_output) {
  if (path.empty()) return;
  if (path == "-") {
    out_ = &standard_output;
    return;
  }
  file_.open(path, std::ios::trunc);
  if (!file_) throw std::runtime_error(path + ": can't be written");
  out_ = &file_;
}

void StudioLog::write(const Record& record) {
  if (out_ != nullptr) *out_ << format_record(record) << '\n' << std::flush;
}

}  // namespace lineweir::studio

#include "desktop/line_report_file.h"

#include <QSaveFile>

#include "desktop/line_report.h"

namespace lineweir {
namespace {

constexpr int milliseconds_between_looks = 50;

}  // namespace

LineReportFile::LineReportFile(Console& console)
    : console_(console), path_(qEnvironmentVariable("LINEWEIR_LINES")) {
  if (path_.isEmpty()) return;
  QObject::connect(&look_, &QTimer::timeout, &look_, [this] { write_changed(); });
  look_.start(milliseconds_between_looks);
}

void LineReportFile::write_changed() {
  std::string report = line_report(console_);
  if (report == written_) return;
  QSaveFile file(path_);
  if (!file.open(QIODevice::WriteOnly)) return;
  file.write(report.data(), static_cast<qint64>(report.size()));
  if (file.commit()) written_ = std::move(report);
}

}  // namespace lineweir

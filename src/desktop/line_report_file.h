#pragma once

#include <QTimer>
#include <string>

namespace lineweir {

struct Console;

// For scripts that wait for what the window shows: where the environment variable LINEWEIR_LINES
// names a file, the line report stands there, written anew, as a whole, whenever it has changed.
class LineReportFile {
 public:
  // The console outlives it.
  explicit LineReportFile(Console& console);

 private:
  void write_changed();

  Console& console_;
  QString path_;
  std::string written_;
  QTimer look_;
};

}  // namespace lineweir

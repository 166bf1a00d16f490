#include <QApplication>

#include "desktop/program.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("lineweir"));
  QApplication::setApplicationDisplayName(QString());
  lineweir::dress_application();
  const QStringList arguments = QApplication::arguments();
  return lineweir::run_program(arguments.size() > 1 ? arguments[1].toStdString() : std::string());
}

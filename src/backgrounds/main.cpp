// Draws the pictures behind the main form into a folder: lineweir-backgrounds FOLDER

#include <QCoreApplication>
#include <cstdio>

#include "backgrounds/background_folder.h"

int main(int argc, char** argv) {
  // Where the picture formats are found.
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 2) {
    std::fputs("usage: lineweir-backgrounds FOLDER\n", stderr);
    return 2;
  }
  const auto failed = lineweir::fill_background_folder(arguments[1]);
  if (!failed) return 0;
  std::fprintf(stderr, "lineweir-backgrounds: can't write %s\n", qPrintable(*failed));
  return 1;
}

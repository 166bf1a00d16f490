#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <QApplication>

#include "desktop/program.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  lineweir::dress_application();
  return doctest::Context(argc, argv).run();
}

#include <iostream>

#include "admin/admin_program.h"

int main(int argc, char** argv) {
  return lineweir::admin::run({argv + 1, argv + argc}, std::cout, std::cerr);
}

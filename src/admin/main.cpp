#include <iostream>

#include "admin/admin_program.h"
#include "platform/process/memory_dump.h"

int main(int argc, char** argv) {
  lineweir::platform::keep_memory_out_of_dumps();
  return lineweir::admin::run({argv + 1, argv + argc}, std::cout, std::cerr);
}

#include <exception>
#include <iostream>

#include "desk/desk_program.h"
#include "desk/options.h"

int main(int argc, char** argv) {
  using namespace lineweir::desk;
  try {
    const ParsedOptions parsed = parse_options(argc, argv, std::cout, std::cerr);
    if (!parsed.options) return parsed.exit_code;
    run_desk(*parsed.options, std::cout);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "lineweir-desk: " << error.what() << '\n';
    return 1;
  }
}

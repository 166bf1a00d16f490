#include <exception>
#include <iostream>

#include "studio/options.h"
#include "studio/studio_program.h"

int main(int argc, char** argv) {
  using namespace lineweir::studio;
  try {
    const ParsedOptions parsed = parse_options(argc, argv, std::cout, std::cerr);
    if (!parsed.options) return parsed.exit_code;
    run_studio(*parsed.options, std::cout);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "lineweir-studio: " << error.what() << '\n';
    return 1;
  }
}

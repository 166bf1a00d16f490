#include "simulation/transcript.h"

#include "studio/record.h"

namespace lineweir::simulation {

void Transcript::add(std::string_view who, std::string_view what) {
  text_ += exchange::format_seconds(loop_.now());
  text_ += ' ';
  text_ += who;
  text_ += ": ";
  text_ += studio::printable(what);
  text_ += '\n';
}

}  // namespace lineweir::simulation

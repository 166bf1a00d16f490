#include "studio/output.h"

namespace lineweir::studio {

void pass_output(BoxedExchange& exchange, PseudoTerminal& terminal, StudioLog& log, Moment now) {
  for (const Record& record : exchange.take_records()) log.write(record);
  const std::string output = exchange.take_output();
  if (output.empty()) return;
  const std::size_t lost = terminal.write(output);
  if (lost == 0) return;
  log.write({now, Record::Kind::Note,
             "nobody reads the device, " + std::to_string(lost) + " characters lost"});
}

}  // namespace lineweir::studio

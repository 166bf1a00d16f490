#pragma once

#include "studio/boxed_exchange.h"
#include "studio/pseudo_terminal.h"
#include "studio/studio_log.h"

namespace lineweir::studio {

// Hands what the exchange has ready to the device and its records to the log, with a note when
// characters are lost because nobody reads. Never waits for a reader.
void pass_output(BoxedExchange& exchange, PseudoTerminal& terminal, StudioLog& log, Moment now);

}  // namespace lineweir::studio

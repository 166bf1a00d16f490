#pragma once

#include "exchange/moment.h"

// The studio speaks of lines, words, events and moments as the exchange does.
namespace lineweir::studio {
using namespace exchange;
}

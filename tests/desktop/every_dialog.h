#pragma once

#include <doctest/doctest.h>

#include <vector>

#include "core/console.h"

namespace lineweir::test {

// Every form but the main one.
inline std::vector<Form*> dialogs_of(Console& console) {
  std::vector<Form*> dialogs = console.forms();
  std::erase(dialogs, &console.Lineweir);
  CHECK(dialogs.size() == 16);
  return dialogs;
}

}  // namespace lineweir::test

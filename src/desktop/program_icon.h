#pragma once

#include <QIcon>

namespace lineweir {

// Of all windows of the program, in the sizes that title bars and lists of windows show.
QIcon program_icon();

}  // namespace lineweir

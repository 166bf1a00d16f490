#pragma once

#include <vector>

#include "elements/data_grid.h"
#include "platform/database.h"

namespace lineweir {

// The columns of a log's table in the order in which people read a call, each under a heading in
// plain words: first when it was, who it was and what about, last where the caller lives. The
// user's own field has the name that it has in the file. Columns that this release doesn't know
// come last, as they are.
std::vector<DataGridColumn> columns_as_read(const std::vector<platform::DatabaseColumn>& columns);

}  // namespace lineweir

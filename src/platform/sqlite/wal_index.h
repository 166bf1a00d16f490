#pragma once

#include <sqlite3.h>

namespace lineweir::platform {

// What SQLite knows of a file's length and of the write-ahead log beside it lies in memory that all
// connections of all programs share. It isn't looked at anew while one of them lives, so that a
// file which was written over by other means, such as a copying program, looks damaged to all of
// them, and is overwritten in parts with what the former content had.
//
// Makes all of them look anew where the write-ahead log is empty, and so the file is the whole
// truth. A copy that was made without a write-ahead log is marked as having one, since those who
// have the file open go on with theirs. Nothing happens to another kind of database. False while
// another program writes. The connection must have read the file, or have failed to.
bool renew_wal_index(sqlite3* connection);

}  // namespace lineweir::platform

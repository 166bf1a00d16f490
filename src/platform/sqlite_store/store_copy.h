#pragma once

#include <sqlite3.h>

#include <filesystem>

#include "platform/sqlite/connection.h"

namespace lineweir::platform {

// Makes a file of that name which holds all that the database holds now. It gets its name when it
// is whole and on the disk. A Failure where that can't be, also where the name is taken; then
// nothing is left.
void copy_to_new_file(sqlite3* connection, const std::filesystem::path& file);

// Takes over a file that copy_to_new_file() has made, at any version of the tables up to the
// present one, in place of all that the database holds: all of it, or nothing and a Failure.
void take_over_copy(sqlite3* connection, const std::filesystem::path& file);

// Opens a file that holds a store, of any version up to the present one, for reading: one that is
// whole and not empty, with all that the present version has. A Failure where it isn't. What has
// earlier tables gets the present ones in a copy, which is gone with its connection; the file isn't
// changed.
Connection open_copy(const std::filesystem::path& file);

}  // namespace lineweir::platform

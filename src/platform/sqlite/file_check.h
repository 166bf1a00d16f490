#pragma once

#include <filesystem>

namespace lineweir::platform {

// Both look at a file by its name alone and never open it: closing another handle of a database
// that is open would end this process's locks on it.

// A file that doesn't exist is a Failure of number 3024, and a folder or a device one of its own.
void check_database_file(const std::filesystem::path& file);

// A file that can't be written to for want of rights to it or to its folder, beside which the
// engine keeps files of its own, is a Failure of number 3027. One that isn't there lacks no rights.
void require_rights(const std::filesystem::path& file);

}  // namespace lineweir::platform

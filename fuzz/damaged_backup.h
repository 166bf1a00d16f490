#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace lineweir::fuzz {

// Writes a backup with something in every table, of an earlier version too, after somebody has had
// it: values of any kind in any column, tables that are gone or something else, bytes changed, an
// end cut off. The bytes decide it all.
void write_damaged_backup(const std::filesystem::path& file, std::span<const std::uint8_t> bytes);

}  // namespace lineweir::fuzz

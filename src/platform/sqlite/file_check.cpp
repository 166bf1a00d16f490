#include "platform/sqlite/file_check.h"

#include <array>
#include <fstream>
#include <string>
#include <string_view>

#include "elements/failure.h"
#include "platform/sqlite/sqlite_failure.h"

namespace lineweir::platform {
namespace {

constexpr std::string_view older_header("\x00\x01\x00\x00Standard Jet DB", 19);

std::string leading_bytes(const std::filesystem::path& file) {
  std::array<char, older_header.size()> bytes{};
  std::ifstream stream(file, std::ios::binary);
  stream.read(bytes.data(), bytes.size());
  return {bytes.data(), static_cast<std::size_t>(stream.gcount())};
}

}  // namespace

void check_database_file(const std::filesystem::path& file) {
  const std::string name = shown_name(file);
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) {
    throw Failure(failure_number::database_not_found, "Couldn't find file " + name + ".");
  }
  if (!std::filesystem::is_regular_file(status)) {
    throw Failure(failure_number::not_a_database, name + " is not a file.");
  }
  if (leading_bytes(file) == older_header) {
    throw Failure(failure_number::older_database_kind,
                  "The file " + name + " is a database of the older Access kind.");
  }
}

}  // namespace lineweir::platform

#pragma once

#include <filesystem>

#include "platform/database.h"

namespace lineweir::platform {

// Databases in SQLite files, whatever the files' extensions. Several programs may use a file at the
// same time. Paths may be relative to a working directory that never changes, and their letters of
// any case.
class SqliteDatabases final : public DatabaseEngine {
 public:
  explicit SqliteDatabases(const std::filesystem::path& working_directory);

  std::unique_ptr<Database> open(const std::string& path) override;
  std::unique_ptr<Database> create(const std::string& path) override;

 private:
  std::filesystem::path locate(const std::string& path) const;

  std::filesystem::path working_directory_;
};

}  // namespace lineweir::platform

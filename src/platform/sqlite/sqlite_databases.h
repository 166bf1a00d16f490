#pragma once

#include <filesystem>

#include "letters/letters.h"
#include "platform/database.h"

namespace lineweir::platform {

// Databases in SQLite files, whatever the files' extensions. Several programs may use a file at the
// same time. Paths may be relative to a working directory that never changes, and their letters of
// any case.
class SqliteDatabases final : public DatabaseEngine {
 public:
  // Paths are texts in the letters, which must outlive this object.
  explicit SqliteDatabases(const std::filesystem::path& working_directory,
                           const Letters& letters = utf8_letters());

  std::unique_ptr<Database> open(const std::string& path) override;
  std::unique_ptr<Database> create(const std::string& path) override;

 private:
  std::filesystem::path locate(const std::string& path) const;

  std::filesystem::path working_directory_;
  const Letters& letters_;
};

}  // namespace lineweir::platform

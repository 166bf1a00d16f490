#pragma once

#include "elements/failure.h"
#include "platform/database.h"

namespace lineweir {

// The database engine of a console that has none: there is no database file.
class NoDatabaseEngine final : public platform::DatabaseEngine {
 public:
  std::unique_ptr<platform::Database> open(const std::string& path) override { refuse(path); }
  std::unique_ptr<platform::Database> create(const std::string& path) override { refuse(path); }

 private:
  [[noreturn]] static void refuse(const std::string& path) {
    throw Failure(failure_number::database_not_found, "Couldn't find file '" + path + "'.");
  }
};

}  // namespace lineweir

#pragma once

#include <optional>

#include "base/failure.h"
#include "platform/database.h"

namespace lineweir::platform {

// The databases of an engine, which no file of can be opened or written to while a script says so.
// What is open can still be read.
class FailingDatabases final : public DatabaseEngine {
 public:
  // The engine must outlive this object.
  explicit FailingDatabases(DatabaseEngine& engine) : engine_(&engine) {}

  // Another engine from now on.
  void use(DatabaseEngine& engine) { engine_ = &engine; }

  // From now on each opening and each step of writing is a Failure of this number; 0 for none.
  void fail(int number) { failure_ = number; }

  std::unique_ptr<Database> open(const std::string& path) override;
  std::unique_ptr<Database> create(const std::string& path) override;
  bool is_database(const std::string& path) override { return engine_->is_database(path); }

  // The failure that the script says, if any; `path` is the file that is told.
  std::optional<Failure> refusal(const std::string& path) const;
  // Fails with it.
  void require_service(const std::string& path) const;

 private:
  DatabaseEngine* engine_;
  int failure_ = 0;
};

}  // namespace lineweir::platform

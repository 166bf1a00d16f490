#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/system_clock.h"
#include "platform/user_files.h"
#include "practice/own_folder.h"

namespace lineweir::practice {

// The services of a practice console: those of the workstation, but for what would change anything
// outside of the console's own folder, which fails. What they stand before outlives them.

class KeptFiles final : public platform::Files {
 public:
  KeptFiles(platform::Files& files, const OwnFolder& folder) : files_(files), folder_(folder) {}

  std::optional<std::string> read(const std::string& path) const override;
  std::optional<std::string> read_short(const std::string& path,
                                        std::size_t longest) const override;
  std::optional<std::string> why_unreadable(const std::string& path) const override;
  void replace(const std::string& path, std::string_view content) override;
  void append(const std::string& path, std::string_view content) override;
  bool exists(const std::string& path) const override;
  std::string current_directory() const override;
  std::unique_ptr<platform::ConsoleFile> console_file(const std::string& name) override;

 private:
  platform::Files& files_;
  const OwnFolder& folder_;
};

// Files anywhere may be read, such as one that is imported.
class KeptUserFiles final : public platform::UserFiles {
 public:
  KeptUserFiles(platform::UserFiles& files, const OwnFolder& folder)
      : files_(files), folder_(folder) {}

  std::unique_ptr<platform::FileSource> read(const std::string& path) override;
  std::unique_ptr<platform::FileTarget> write(const std::string& path,
                                              platform::SparedFiles spared) override;

 private:
  platform::UserFiles& files_;
  const OwnFolder& folder_;
};

class KeptDatabases final : public platform::DatabaseEngine {
 public:
  KeptDatabases(platform::DatabaseEngine& databases, const OwnFolder& folder)
      : databases_(databases), folder_(folder) {}

  std::unique_ptr<platform::Database> open(const std::string& path) override;
  std::unique_ptr<platform::Database> create(const std::string& path) override;
  bool is_database(const std::string& path) override { return databases_.is_database(path); }

 private:
  platform::DatabaseEngine& databases_;
  const OwnFolder& folder_;
};

// The computer's clock, which practice doesn't set.
class ReadClock final : public platform::SystemClock {
 public:
  explicit ReadClock(const platform::SystemClock& clock) : clock_(clock) {}

  platform::DateTime now() const override { return clock_.now(); }
  void set(const platform::DateTime& moment) override;

 private:
  const platform::SystemClock& clock_;
};

}  // namespace lineweir::practice

#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace lineweir::test {

// A PostgreSQL of the tests' own: in a folder of its own, reached by a socket there and by no
// network, and gone with the program that made it, in whatever way that ends. Made when it is first
// asked for.
class PostgresCluster {
 public:
  // Whether PostgreSQL's programs are on this machine.
  static bool can_be_made();
  static PostgresCluster& the();

  ~PostgresCluster();
  PostgresCluster(const PostgresCluster&) = delete;
  PostgresCluster& operator=(const PostgresCluster&) = delete;

  // The URL of a new and empty database; more may be told, as "ENCODING …" of CREATE DATABASE.
  std::string new_database(const std::string& options = {});
  // The URL of one without a store, which takes less time; to be given back when nobody uses it.
  std::string borrow();
  void give_back(const std::string& url);
  // The URL of a database, whether it is there or not.
  std::string url(const std::string& database) const;
  std::filesystem::path folder() const { return folder_; }

  // Runs statements as another program would; the values of the rows, those of a row with bars
  // between them.
  static std::string run(const std::string& url, const std::string& sql);

  // As by "kill -9"; then it isn't there until it is started again.
  void kill();
  void start();
  // All its processes stand still, and go on.
  void stand_still();
  void go_on();

 private:
  PostgresCluster();
  std::vector<pid_t> processes() const;

  std::filesystem::path folder_;
  pid_t server_ = -1;
  int guardian_ = -1;
  pid_t guardian_process_ = -1;
  int databases_ = 0;
  std::vector<std::string> free_;
};

}  // namespace lineweir::test

#include "platform/postgres/postgres_cluster.h"

#include <fcntl.h>
#include <libpq-fe.h>
#include <pwd.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <thread>

namespace lineweir::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// Debian keeps the server's programs out of the usual path, one folder a version.
fs::path programs() {
  std::error_code ignored;
  for (const auto& version : fs::directory_iterator("/usr/lib/postgresql", ignored)) {
    const fs::path folder = version.path() / "bin";
    if (fs::exists(folder / "initdb") && fs::exists(folder / "postgres")) return folder;
  }
  return {};
}

// PostgreSQL refuses to run as root.
const passwd* unprivileged_user() {
  if (::geteuid() != 0) return nullptr;
  const passwd* user = ::getpwnam("postgres");
  return user != nullptr ? user : ::getpwnam("nobody");
}

void become_unprivileged() {
  const passwd* const user = unprivileged_user();
  if (user == nullptr) return;
  if (::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0) ::_exit(126);
}

pid_t start_program(std::vector<std::string> words, const fs::path& log) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const pid_t process = ::fork();
  if (process != 0) return process;
  become_unprivileged();
  ::prctl(PR_SET_PDEATHSIG, SIGQUIT);
  const int output = ::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  ::dup2(output, STDOUT_FILENO);
  ::dup2(output, STDERR_FILENO);
  // Nothing of the test's own stays open in it.
  constexpr int most = 1024;
  for (int descriptor = STDERR_FILENO + 1; descriptor < most; ++descriptor) ::close(descriptor);
  static_cast<void>(!::chdir("/"));
  ::execv(arguments[0], arguments.data());
  ::_exit(127);
}

std::vector<pid_t> children_of(pid_t process) {
  std::ifstream list("/proc/" + std::to_string(process) + "/task/" + std::to_string(process) +
                     "/children");
  std::vector<pid_t> children;
  for (pid_t child = 0; list >> child;) children.push_back(child);
  return children;
}

pid_t server_of(const fs::path& folder) {
  std::ifstream file(folder / "data" / "postmaster.pid");
  pid_t process = -1;
  return file >> process ? process : -1;
}

// Waits for the end of the test's program and clears up behind it.
void guard(int program, const fs::path& folder) {
  ::setsid();
  char any = 0;
  while (::read(program, &any, 1) > 0) {
  }
  if (const pid_t server = server_of(folder); server > 0) {
    for (const pid_t child : children_of(server)) ::kill(child, SIGCONT);
    ::kill(server, SIGCONT);
    ::kill(server, SIGQUIT);
    for (int i = 0; i < 100 && ::kill(server, 0) == 0; ++i) std::this_thread::sleep_for(20ms);
  }
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  ::_exit(0);
}

}  // namespace

bool PostgresCluster::can_be_made() { return !programs().empty(); }

PostgresCluster& PostgresCluster::the() {
  static PostgresCluster cluster;
  return cluster;
}

PostgresCluster::PostgresCluster() {
  // A socket's name may be no longer than about 100 letters.
  std::string name = "/tmp/lineweir-postgres-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder");
  folder_ = name;
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  guardian_process_ = ::fork();
  if (guardian_process_ == 0) {
    ::close(ends[1]);
    guard(ends[0], folder_);
  }
  ::close(ends[0]);
  guardian_ = ends[1];
  if (const passwd* const user = unprivileged_user()) {
    static_cast<void>(!::chown(name.c_str(), user->pw_uid, user->pw_gid));
  }
  const pid_t making = start_program(
      {programs() / "initdb", "--pgdata=" + name + "/data", "--username=lineweir", "--auth=trust",
       "--encoding=UTF8", "--locale=C", "--no-sync", "--no-instructions"},
      folder_ / "log");
  int status = 0;
  ::waitpid(making, &status, 0);
  if (status != 0) throw std::runtime_error("initdb has failed");
  start();
}

// The guardian does it all.
PostgresCluster::~PostgresCluster() {
  ::close(guardian_);
  ::waitpid(guardian_process_, nullptr, 0);
}

void PostgresCluster::start() {
  const auto setting = [](const std::string& text) { return "--" + text; };
  const auto limit = std::chrono::steady_clock::now() + 20s;
  while (std::chrono::steady_clock::now() < limit) {
    server_ = start_program(
        {programs() / "postgres", "-D", (folder_ / "data").string(), setting("listen_addresses="),
         setting("unix_socket_directories=" + folder_.string()), setting("fsync=off"),
         setting("full_page_writes=off"), setting("autovacuum=off"), setting("shared_buffers=16MB"),
         setting("max_connections=40"), setting("max_wal_senders=0"), setting("wal_level=minimal"),
         setting("dynamic_shared_memory_type=mmap"), setting("max_prepared_transactions=0")},
        folder_ / "log");
    // One that was killed may hold on to what the next one needs for a moment.
    while (::waitpid(server_, nullptr, WNOHANG) == 0) {
      if (PQping(url("postgres").c_str()) == PQPING_OK) return;
      if (std::chrono::steady_clock::now() > limit) break;
      std::this_thread::sleep_for(10ms);
    }
  }
  throw std::runtime_error("PostgreSQL doesn't start");
}

void PostgresCluster::kill() {
  ::kill(server_, SIGKILL);
  ::waitpid(server_, nullptr, 0);
}

std::vector<pid_t> PostgresCluster::processes() const {
  std::vector<pid_t> all = children_of(server_);
  all.insert(all.begin(), server_);
  return all;
}

void PostgresCluster::stand_still() {
  for (const pid_t process : processes()) ::kill(process, SIGSTOP);
}

void PostgresCluster::go_on() {
  for (const pid_t process : processes()) ::kill(process, SIGCONT);
}

std::string PostgresCluster::url(const std::string& database) const {
  return "postgresql://lineweir@/" + database + "?host=" + folder_.string();
}

std::string PostgresCluster::new_database(const std::string& options) {
  const std::string name = "store" + std::to_string(++databases_);
  run(url("postgres"), "CREATE DATABASE " + name + " " + options);
  return url(name);
}

std::string PostgresCluster::borrow() {
  if (free_.empty()) return new_database();
  const std::string url = free_.back();
  free_.pop_back();
  run(url, "DROP SCHEMA IF EXISTS lineweir CASCADE");
  return url;
}

void PostgresCluster::give_back(const std::string& url) { free_.push_back(url); }

std::string PostgresCluster::run(const std::string& url, const std::string& sql) {
  const std::unique_ptr<PGconn, decltype(&PQfinish)> session(PQconnectdb(url.c_str()), PQfinish);
  PQsetNoticeProcessor(
      session.get(), [](void*, const char*) {}, nullptr);
  const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(session.get(), sql.c_str()),
                                                             PQclear);
  if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR || !result) {
    throw std::runtime_error(PQerrorMessage(session.get()));
  }
  std::string text;
  for (int row = 0; row < PQntuples(result.get()); ++row) {
    for (int column = 0; column < PQnfields(result.get()); ++column) {
      const bool is_nothing = PQgetisnull(result.get(), row, column) != 0;
      text += is_nothing ? "NULL" : PQgetvalue(result.get(), row, column);
      text += column + 1 < PQnfields(result.get()) ? '|' : '\n';
    }
  }
  return text;
}

}  // namespace lineweir::test

// A backup that anybody has had, restored into a server's new store. Either the store holds what
// the backup holds, works on and is found again by the next start; or the restore has failed, and
// the store holds what it held. A server that begins with what came serves its consoles.

#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <optional>
#include <string>

#include "base/failure.h"
#include "damaged_backup.h"
#include "platform/sqlite_store/account_rows.h"
#include "platform/sqlite_store/audit_rows.h"
#include "platform/sqlite_store/call_rows.h"
#include "platform/sqlite_store/caller_rows.h"
#include "platform/sqlite_store/store_copy.h"
#include "platform/sqlite_store/store_file.h"
#include "platform/sqlite_store/store_rows.h"
#include "platform/sqlite_store/whole_store_file.h"
#include "platform/transfer/store_transfer.h"
#include "restored_server.h"
#include "server/rights_templates.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::chrono::milliseconds no_wait{0};

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::abort();
}

// Why it failed; empty where it didn't.
template <class Work>
std::string failure_of(const Work& work) {
  try {
    work();
    return {};
  } catch (const Failure& failure) {
    return failure.what();
  }
}

// One for each process, so that several fuzzers can run.
const std::filesystem::path& folder() {
  static const std::filesystem::path made = [] {
    auto path =
        std::filesystem::temp_directory_path() / ("backup_fuzz." + std::to_string(::getpid()));
    std::filesystem::create_directories(path);
    return path;
  }();
  return made;
}

std::filesystem::path new_file(const char* name) {
  const std::filesystem::path file = folder() / name;
  for (const char* end : {"", "-wal", "-shm", "-journal"}) {
    std::filesystem::remove(file.string() + end);
  }
  return file;
}

std::string bytes_of(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

struct Content {
  StorePortion records;
  AuditEnd audit_end;

  bool operator==(const Content&) const = default;
};

Content content_of(WholeStore& store) {
  return {{.accounts = store.accounts(),
           .groups = store.groups(),
           .flagged_callers = store.flagged_callers(),
           .calls = store.calls_behind(least, no_limit),
           .entries = store.entries_behind(least, no_limit)},
          store.audit_end()};
}

Content content_of(sqlite3* store) {
  return {{.accounts = read_accounts(store),
           .groups = read_groups(store),
           .flagged_callers = read_flagged_callers(store),
           .calls = read_calls_behind(store, least, no_limit),
           .entries = read_audit(store, {.after = least, .limit = no_limit})},
          read_audit_end(store)};
}

std::optional<Content> content_of_backup(const std::filesystem::path& file) {
  std::optional<Content> content;
  failure_of([&] {
    WholeStoreFile store(file);
    content = content_of(store);
  });
  return content;
}

Account account(const std::string& name) {
  return {.name = name,
          .password_hash = "none",
          .rights = {{0, server::rights_of(server::RightsTemplate::Host)}},
          .profile = {},
          .locked = false,
          .last_seen = Moment{0}};
}

// As a server's first start leaves it.
void write_new_store(const std::filesystem::path& file) {
  static std::string bytes;
  if (bytes.empty()) {
    {
      StoreFile store(file, no_wait);
      write_change(store.ready(), account("first"));
      write_change(store.ready(), AuditEvent{"begin", Moment{1}, "", "user added", "first"});
    }
    bytes = bytes_of(file);
  }
  std::ofstream(file, std::ios::binary) << bytes;
}

std::string id_of(const AuditEntry& entry) { return entry.event.id; }

void work_on(sqlite3* store) {
  const Account later = account("later");
  CallRecord call;
  call.id = 42;
  call.steps = {{.at = Moment{1}, .user = "later", .action = "ring"}};
  const FlaggedCaller caller{"555", "555", CallerFlag::Barred, "", "", "later", Moment{1}};
  const std::string failed = failure_of([&] {
    write_change(store, later);
    write_change(store, call);
    write_change(store, GroupMemory{2, 3, "later", {}});
    write_change(store, caller);
    write_change(store, AuditEvent{"later", Moment{1}, "later", "login", ""});
  });
  require(failed.empty(), failed.c_str());
  const Content after = content_of(store);
  require(std::ranges::count(after.records.accounts, later) == 1, "an account");
  require(std::ranges::count(after.records.calls, call) == 1, "a call");
  require(std::ranges::count(after.records.flagged_callers, caller) == 1, "a flag");
  require(std::ranges::count(after.records.entries, "later", id_of) == 1, "an entry");
  check_audit(store);
  read_caller_history(store, "5550101");
}

void look_at_copy(const std::filesystem::path& backup, const std::optional<Content>& content) {
  const std::filesystem::path file = new_file("copy");
  const std::string failed = failure_of([&] {
    WholeStoreFile from(backup);
    NewStoreFile to(file);
    transfer_store(from, to);
  });
  require(failed.empty() == std::filesystem::exists(file), "half a copy");
  if (failed.empty()) require(content && content_of_backup(file) == content, "a copy");
}

void restore(const std::filesystem::path& backup) {
  const std::string bytes = bytes_of(backup);
  const std::optional<Content> content = content_of_backup(backup);
  const std::filesystem::path file = new_file("store");
  write_new_store(file);
  Content held;
  {
    StoreFile store(file, no_wait);
    const Content before = content_of(store.ready());
    const std::string failed = failure_of([&] { take_over_copy(store.ready(), backup); });
    require(failed.empty() || content_of(store.ready()) == before, "half a restore");
    if (failed.empty()) require(content && content_of(store.ready()) == *content, "a restore");
    work_on(store.ready());
    held = content_of(store.ready());
    require(bytes_of(backup) == bytes, "a backup was changed");
    if (failed.empty()) fuzz::serve_restored(content->records);
  }
  StoreFile again(file, no_wait);
  require(content_of(again.ready()) == held, "the next start finds something else");
  look_at_copy(backup, content);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::filesystem::path backup = new_file("backup");
  fuzz::write_damaged_backup(backup, {data, size});
  restore(backup);
  return 0;
}

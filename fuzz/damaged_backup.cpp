#include "damaged_backup.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "base/failure.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite_store/store_rows.h"
#include "platform/sqlite_store/store_schema.h"
#include "server/rights_templates.h"
#include "wire/server_packet_codec.h"

namespace lineweir::fuzz {
namespace {

using platform::Connection;
using platform::Moment;
using platform::Statement;

constexpr const char* tables[] = {"accounts",     "rights",          "calls", "call_steps",
                                  "group_memory", "flagged_callers", "audit", "audit_end"};

constexpr const char* deeds[] = {
    "DROP TABLE flagged_callers",
    "DROP TABLE rights",
    "DROP TABLE audit",
    "DROP TABLE audit_end",
    "DROP VIEW call_list",
    "DROP INDEX calls_by_caller",
    "ALTER TABLE calls DROP COLUMN comments",
    "ALTER TABLE accounts RENAME COLUMN locked TO shut",
    "ALTER TABLE group_memory ADD COLUMN more TEXT",
    "ALTER TABLE calls RENAME TO former; CREATE VIEW calls AS SELECT * FROM former",
    "CREATE TABLE notes (a)",
    "DELETE FROM audit WHERE number = 1",
    "DELETE FROM audit_end",
    "DELETE FROM accounts",
    "UPDATE calls SET ended = NULL",
    "PRAGMA user_version = 0",
    "PRAGMA user_version = 1",
    "PRAGMA user_version = 2",
    "PRAGMA user_version = -1",
    "PRAGMA application_id = 0",
    "PRAGMA journal_mode = WAL",
    "PRAGMA page_size = 1024; VACUUM",
    "PRAGMA writable_schema = 1; DELETE FROM sqlite_schema WHERE name = 'calls'",
    "PRAGMA writable_schema = 1; UPDATE sqlite_schema SET rootpage = 3 WHERE name = 'audit'",
};

constexpr std::int64_t numbers[] = {0,
                                    1,
                                    2,
                                    -1,
                                    10,
                                    1'767'607'200'000,
                                    std::numeric_limits<int>::max(),
                                    std::numeric_limits<int>::min(),
                                    std::numeric_limits<std::int64_t>::max(),
                                    std::numeric_limits<std::int64_t>::max() - 999,
                                    std::numeric_limits<std::int64_t>::min()};

Connection open(const std::filesystem::path& file) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(file.c_str(), &opened);
  Connection connection(opened);
  if (result != SQLITE_OK) throw Failure(failure_number::file_access, "the fuzzer's folder");
  platform::execute(opened, "PRAGMA synchronous = OFF");
  return connection;
}

platform::CallRecord call(std::int64_t id, Moment ended) {
  const Moment began{1'767'607'200'000};
  platform::CallRecord made{.id = id * 1000,
                            .group = 1,
                            .line = static_cast<int>(id),
                            .number = "555010" + std::to_string(id),
                            .began = began,
                            .answered = began + Moment{5000},
                            .aired = Moment{0},
                            .ended = ended,
                            .told_by = "host",
                            .told = {},
                            .steps = {{.at = began, .user = "", .action = "ring"},
                                      {.at = began, .user = "host", .action = "answer"}}};
  made.told[platform::told_name] = "Ann";
  return made;
}

std::vector<platform::StoreChange> content() {
  const Moment at{1'767'607'200'000};
  const std::string message = encode_text_message({255, 0, "Weather at ten"});
  const std::string rights = server::rights_of(server::RightsTemplate::Host);
  return {platform::Account{"host", "none", {{0, rights}, {2, rights}}, "profile", false, at},
          platform::Account{"screener", "none", {{1, rights}}, "", true, Moment{0}},
          platform::GroupMemory{1, 1, message, {"10:00", "10:30", "Ann"}},
          platform::GroupMemory{2, -1, "", {}},
          call(1, Moment{0}),
          call(2, Moment{0}),
          call(3, at + Moment{60'000}),
          platform::FlaggedCaller{"5550101", "555 0101", CallerFlag::Careful, "loud", "2026-12-31",
                                  "host", at},
          platform::AuditEvent{"event-1", at, "host", "login", "10.0.0.1"},
          platform::AuditEvent{"event-2", at, "host", "on air", "line 2"}};
}

void make_backup(const std::filesystem::path& file, unsigned kind) {
  const Connection connection = open(file);
  sqlite3* const made = connection.get();
  if (kind == 2) platform::execute(made, "PRAGMA encoding = 'UTF-16le'");
  platform::bring_up_to_date(made);
  for (const auto& change : content()) platform::write_change(made, change);
  if (kind != 1) return;
  platform::execute(made,
                    "DROP INDEX calls_by_caller; ALTER TABLE calls DROP COLUMN caller; "
                    "DROP TABLE flagged_callers; PRAGMA user_version = 1");
}

std::string bytes_of(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class Hand {
 public:
  Hand(const std::filesystem::path& file, std::span<const std::uint8_t> bytes)
      : file_(file), bytes_(bytes) {}

  void work() {
    write_sound_backup();
    while (!bytes_.empty()) take_step();
  }

 private:
  std::uint8_t next() {
    if (bytes_.empty()) return 0;
    const std::uint8_t byte = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return byte;
  }

  // Made once of each kind, as making one takes longer than all the rest.
  void write_sound_backup() {
    static std::array<std::string, 3> kinds;
    const unsigned kind = next() % kinds.size();
    if (kinds[kind].empty()) {
      make_backup(file_, kind);
      kinds[kind] = bytes_of(file_);
    }
    std::ofstream(file_, std::ios::binary) << kinds[kind];
  }

  void take_step() {
    const std::uint8_t step = next();
    switch (step % 8) {
      case 0:
        return change_byte();
      case 1:
        return std::filesystem::resize_file(file_,
                                            std::filesystem::file_size(file_) * next() / 255);
      case 2:
      case 3:
        return use([](sqlite3* made, const char* deed) { platform::execute(made, deed); },
                   deeds[next() % std::size(deeds)]);
      default:
        return use([this](sqlite3* made, const char* table) { change_column(made, table); },
                   tables[next() % std::size(tables)]);
    }
  }

  template <class Work>
  void use(const Work& work, const char* what) {
    try {
      const Connection connection = open(file_);
      work(connection.get(), what);
    } catch (const Failure&) {
      // It is damaged too much already, or the table isn't there.
    }
  }

  void change_byte() {
    std::fstream file(file_, std::ios::in | std::ios::out | std::ios::binary);
    const unsigned page = next();
    const unsigned offset = page * 512U + next() * 2U + next() % 2U;
    file.seekp(offset % std::max<std::uintmax_t>(std::filesystem::file_size(file_), 1));
    file.put(static_cast<char>(next()));
  }

  void change_column(sqlite3* made, const std::string& table) {
    Statement names(made, "SELECT name FROM pragma_table_info('" + table + "')");
    std::vector<std::string> found;
    while (names.step()) found.emplace_back(names.text(0));
    if (found.empty()) return;
    names.reset();
    const std::string& chosen = found[next() % found.size()];
    Statement change(made, "UPDATE OR IGNORE " + table + " SET " + chosen + " = ?");
    bind_value(change);
    change.run();
  }

  // The text that was bound has to last as long as the statement.
  void bind_value(Statement& change) {
    const std::uint8_t kind = next();
    switch (kind % 4) {
      case 0:
        change.bind(1, numbers[next() % std::size(numbers)]);
        return;
      case 1:
        text_ = std::string(kind >= 128 ? 70'000 : 300, 'x');
        break;
      case 2:
        text_ = kind >= 128 ? "host" : "2026-13-32";
        break;
      default:
        text_.clear();
        while (text_.size() < kind / 4U && !bytes_.empty()) text_ += static_cast<char>(next());
    }
    if (kind >= 192) {
      change.bind_bytes(1, text_);
    } else {
      change.bind(1, std::string_view(text_));
    }
  }

  const std::filesystem::path& file_;
  std::span<const std::uint8_t> bytes_;
  std::string text_;
};

}  // namespace

void write_damaged_backup(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) {
  Hand(file, bytes).work();
}

}  // namespace lineweir::fuzz

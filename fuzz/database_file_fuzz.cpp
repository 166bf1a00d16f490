// A file of any bytes that a user chooses as call log or as hot list. It is refused as the engine
// refuses it, or read, searched and written to; nothing crashes, hangs or is left locked.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>

#include "base/failure.h"
#include "forms/call_log_columns.h"
#include "letters/letters.h"
#include "messages/hot_list_file.h"
#include "platform/sqlite/sqlite_engine.h"

namespace {

using namespace lineweir;

// One for each process, so that several fuzzers can run.
const std::filesystem::path& folder() {
  static const std::filesystem::path made = [] {
    auto path = std::filesystem::temp_directory_path() /
                ("database_file_fuzz." + std::to_string(::getpid()));
    std::filesystem::create_directories(path);
    return path;
  }();
  return made;
}

void read_table(platform::SqliteEngine& engine, const std::string& file, const char* table) {
  const auto database = engine.open(file);
  const auto columns = database->table_columns(table);
  const auto rows = database->open_recordset(table);
  rows->refresh();
  rows->count();
  std::vector<int> all(rows->fields().size());
  std::iota(all.begin(), all.end(), 0);
  rows->scan({false, {}, 100, all}, [](platform::RowId, auto) {});
  for (int column = 0; column < static_cast<int>(columns.size()) && column < 3; ++column) {
    rows->find_number(column, "5550100", 10, all, [](platform::RowId, auto) {});
  }
  rows->add_new();
  rows->set_field(0, "Ann");
  rows->remove(rows->update());
}

template <class Work>
void survive(const Work& work) {
  try {
    work();
  } catch (const Failure&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::filesystem::path path = folder() / "file.db";
  for (const char* end : {"", "-wal", "-shm", "-journal"}) {
    std::filesystem::remove(path.string() + end);
  }
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  platform::SqliteEngine engine(folder());
  engine.is_database("file.db");
  survive([&] { read_table(engine, "file.db", std::string(call_log_table).c_str()); });
  survive([&] { read_table(engine, "file.db", "Messages"); });
  survive([&] {
    HotListFile list(engine, utf8_letters());
    list.open("file.db");
    list.follow();
    list.add("Weather at ten");
    list.remove(0);
    if (list.entries().size() > 1) list.move(0, 1);
  });
  return 0;
}

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "letters/letters.h"
#include "platform/database.h"

namespace lineweir {

// The longest entry of a hot list; a longer text is cut.
inline constexpr std::size_t longest_hot_list_entry = 254;

// A hot list: a database with the table "Messages", whose column "Message" holds the entries in the
// order of the rows. Other programs may use it at the same time. What fails is a Failure with a
// sentence for the user, and what is known of the entries stays.
class HotListFile {
 public:
  HotListFile(platform::DatabaseEngine& databases, const Letters& letters)
      : databases_(databases), letters_(letters) {}

  // A new file without entries; one that exists is a Failure of number 3204,
  // but for a database without a table.
  void create(const std::string& path);

  // Takes the file's entries in place of those before. A file that isn't there is a Failure of
  // number 3024.
  void open(const std::string& path);
  void close();
  bool is_open() const { return recordset_ != nullptr; }

  // The entries when they were last read, in the console's letters.
  const std::vector<std::string>& entries() const { return texts_; }

  // Reads the entries again where another program has changed them; returns whether it did.
  bool follow();

  void add(std::string_view text);
  // Removes a row that holds the text of the entry; false where none does any more.
  bool remove(std::size_t place);
  // Moves an entry to another place; false, and only reads, where another program has changed the
  // entries.
  bool move(std::size_t from, std::size_t to);

 private:
  struct Row {
    platform::RowId id;
    std::string text;

    friend bool operator==(const Row&, const Row&) = default;
  };

  std::vector<Row> read_rows();
  void take(std::vector<Row> rows);
  // Runs the change on the rows that there are, which other writers leave alone meanwhile, and
  // takes over what has become of them. A copy of the file holds the change.
  void change(const std::function<void(const std::vector<Row>& rows)>& body);

  platform::DatabaseEngine& databases_;
  const Letters& letters_;
  std::string path_;
  std::unique_ptr<platform::Database> database_;
  std::unique_ptr<platform::Recordset> recordset_;
  int column_ = 0;
  std::int64_t stamp_ = 0;
  std::vector<Row> rows_;
  std::vector<std::string> texts_;
};

}  // namespace lineweir

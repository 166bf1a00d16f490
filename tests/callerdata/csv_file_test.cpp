#include "callerdata/csv_file.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "letters/code_page_letters.h"
#include "platform/scripted/memory_databases.h"
#include "platform/scripted/memory_files.h"
#include "platform/scripted/scripted_user_files.h"
#include "support/failure_number.h"

namespace lineweir::test {
namespace {

using namespace std::string_literals;
using Fields = std::vector<std::string>;

std::vector<Fields> table_of(const std::string& content,
                             const CodePage& page = default_code_page()) {
  const CodePageLetters letters(page);
  platform::MemoryFiles files;
  files.replace("old.csv", content);
  platform::MemoryDatabases databases;
  platform::ScriptedUserFiles user_files(files, databases);
  CsvFile file(user_files, "old.csv", letters);
  std::vector<Fields> table;
  while (!file.at_end()) {
    file.work();
    while (const auto record = file.next()) table.push_back(record->fields);
  }
  return table;
}

std::string utf16(std::string_view ascii, bool little) {
  std::string bytes;
  for (const char c : ascii) {
    if (!little) bytes += '\0';
    bytes += c;
    if (little) bytes += '\0';
  }
  return bytes;
}

TEST_SUITE("callerdata/csv file") {
  TEST_CASE("text of all usual encodings is read") {
    const std::vector<Fields> expected = {{"Name", "City"}, {"Ann", "Salem"}};
    const std::string_view text = "Name,City\r\nAnn,Salem\r\n";
    CHECK(table_of(std::string(text)) == expected);
    CHECK(table_of("\xEF\xBB\xBF" + std::string(text)) == expected);
    for (const bool little : {false, true}) {
      CHECK(table_of(utf16(text, little)) == expected);
      CHECK(table_of((little ? "\xFF\xFE" : "\xFE\xFF") + utf16(text, little)) == expected);
    }
    CHECK(table_of("Jos\xE9") == std::vector<Fields>{{"José"}});
    CHECK(table_of("Jos\xC3\xA9") == std::vector<Fields>{{"José"}});
    CHECK(table_of("cut \xC3") == std::vector<Fields>{{"cut Ã"}});
    CHECK(table_of("\xA3\xF3"
                   "d\x9F",
                   *find_code_page("1250")) == std::vector<Fields>{{"Łódź"}});
  }

  TEST_CASE("fields may be parted by semicolons and tabs") {
    const std::vector<Fields> expected = {{"Name", "City"}, {"Ann", "Salem, MA"}};
    CHECK(table_of("Name;City\nAnn;Salem, MA\n") == expected);
    CHECK(table_of("Name\tCity\nAnn\tSalem, MA\n") == expected);
  }

  TEST_CASE("a long file comes in pieces, whatever stands last in it") {
    std::string content = "Name\r\n";
    for (int i = 0; i < 100000; ++i) content += "caller " + std::to_string(i) + "\r\n";
    CHECK(table_of(content).size() == 100001);
    content += "Jos\xE9\r\n";
    const auto table = table_of(content);
    CHECK(table.size() == 100002);
    CHECK(table.back() == Fields{"José"});
  }

  TEST_CASE("how far a file is read goes from nothing to all of it") {
    const CodePageLetters letters;
    platform::MemoryFiles files;
    std::string content = "Name\r\n";
    while (content.size() < 1'000'000) content += "a caller\r\n";
    files.replace("old.csv", content);
    platform::MemoryDatabases databases;
    platform::ScriptedUserFiles user_files(files, databases);
    CsvFile file(user_files, "old.csv", letters);
    std::vector<int> told;
    while (!file.at_end()) {
      CHECK(file.work());
      if (told.empty() || file.percent() != told.back()) told.push_back(file.percent());
    }
    CHECK(told.front() == 0);
    CHECK(told.size() > 3);
    CHECK(std::ranges::is_sorted(told));
    CHECK(told.back() == 100);
    CHECK(file.work());
    // In the middle of the file about half of it.
    CHECK(std::ranges::any_of(told, [](int percent) { return percent > 40 && percent < 60; }));
  }

  TEST_CASE("an empty file has no records, and one that isn't there is a failure") {
    CHECK(table_of("").empty());
    CHECK(table_of("\xEF\xBB\xBF").empty());
    const CodePageLetters letters;
    platform::MemoryFiles files;
    platform::MemoryDatabases databases;
    platform::ScriptedUserFiles user_files(files, databases);
    CHECK(failure_number_of([&] { CsvFile(user_files, "gone.csv", letters).work(); }) == 75);
  }

  TEST_CASE("how far a file was read is told in percent") {
    const CodePageLetters letters;
    platform::MemoryFiles files;
    std::string content = "Name\r\n";
    while (content.size() < 1'000'000) content += "Ann\r\n";
    files.replace("old.csv", content);
    platform::MemoryDatabases databases;
    platform::ScriptedUserFiles user_files(files, databases);
    CsvFile file(user_files, "old.csv", letters);
    std::vector<int> percents;
    while (!file.at_end()) {
      percents.push_back(file.percent());
      file.work();
      while (file.next()) {
      }
    }
    CHECK(percents.front() == 0);
    CHECK(std::ranges::is_sorted(percents));
    CHECK(percents.back() == 100);
    const auto middle = std::ranges::find_if(percents, [](int percent) { return percent >= 45; });
    CHECK(*middle <= 60);
    CHECK(file.percent() == 100);
  }
}

}  // namespace
}  // namespace lineweir::test

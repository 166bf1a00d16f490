#pragma once

#include <memory>
#include <optional>
#include <string>

#include "callerdata/csv.h"
#include "letters/text_decoder.h"
#include "platform/user_files.h"

namespace lineweir {

// A CSV file of any length, read a piece at a time: UTF-8, UTF-16 or text of one byte a character,
// its fields parted by commas, semicolons or tabs. The file is read once to know its letters, and
// once more for its records.
class CsvFile {
 public:
  // Text of one byte a character is in the letters. Files and letters must outlive this object.
  CsvFile(platform::UserFiles& files, std::string path, const Letters& letters);

  // Takes in the next piece of the file; false where none has come. Where the file can't be read a
  // Failure says so.
  bool work();
  bool at_end() const { return stage_ == Stage::Done; }
  int percent() const;

  // The next record of what was read; nothing where there is none yet.
  std::optional<CsvRecord> next();

 private:
  enum class Stage { Letters, Records, Done };

  void begin(Stage stage);
  void check_letters(std::string_view piece);
  void add_records(std::string_view piece);

  platform::UserFiles& files_;
  std::string path_;
  const Letters& letters_;
  Stage stage_ = Stage::Letters;
  TextEncoding encoding_ = TextEncoding::Utf8;
  std::unique_ptr<platform::FileSource> input_;
  std::uint64_t read_ = 0;
  std::optional<TextDecoder> decoder_;
  std::string text_;
  std::optional<CsvReader> records_;
};

}  // namespace lineweir

#include "callerdata/csv_file.h"

#include <algorithm>

#include "base/failure.h"
#include "letters/path_text.h"

namespace lineweir {

CsvFile::CsvFile(platform::UserFiles& files, std::string path, const Letters& letters)
    : files_(files), path_(std::move(path)), letters_(letters) {
  begin(Stage::Letters);
}

void CsvFile::begin(Stage stage) {
  stage_ = stage;
  input_ = files_.read(path_);
  read_ = 0;
  decoder_.reset();
}

bool CsvFile::work() {
  if (stage_ == Stage::Done) return true;
  const std::optional<std::string> piece = input_->take();
  if (input_->unreadable()) {
    throw Failure(failure_number::file_access,
                  "The file " + file_name(letters_, path_) + " can't be read.");
  }
  if (!piece) return false;
  read_ += piece->size();
  if (stage_ == Stage::Letters) {
    check_letters(*piece);
  } else {
    add_records(*piece);
  }
  return true;
}

void CsvFile::check_letters(std::string_view piece) {
  if (!decoder_) decoder_.emplace(encoding_ = encoding_of(piece), letters_);
  text_.clear();
  const bool sound = decoder_->decode(piece, text_) && (!piece.empty() || decoder_->end());
  if (!sound) encoding_ = TextEncoding::OneByte;
  // Only UTF-8 has to be read to its end to be known.
  if (!sound || piece.empty() || encoding_ != TextEncoding::Utf8) begin(Stage::Records);
}

void CsvFile::add_records(std::string_view piece) {
  if (!decoder_) decoder_.emplace(encoding_, letters_);
  text_.clear();
  decoder_->decode(piece, text_);
  if (!records_) records_.emplace(csv_separator(text_));
  records_->add(text_);
  if (!piece.empty()) return;
  records_->end();
  stage_ = Stage::Done;
}

int CsvFile::percent() const {
  const std::uint64_t size = std::max<std::uint64_t>(input_->size(), 1);
  return stage_ == Stage::Letters
             ? 0
             : static_cast<int>(std::min<std::uint64_t>(read_ * 100 / size, 100));
}

std::optional<CsvRecord> CsvFile::next() { return records_ ? records_->next() : std::nullopt; }

}  // namespace lineweir

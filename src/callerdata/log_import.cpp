#include "callerdata/log_import.h"

#include "callerdata/log_text.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"
#include "letters/path_text.h"

namespace lineweir {
namespace {

constexpr int records_a_slice = 500;
constexpr std::size_t most_previewed = 200;
constexpr std::size_t most_told = 500;
constexpr std::size_t largest_file = 100 << 20;

}  // namespace

LogImport::LogImport(Console& console) : console_(console) {
  ImportPreviewForm& form = console.ImportPreview;
  console.DatabaseViewer.ImportButton.on_click = [this] { ImportButton_Click(); };
  form.ReadTimer.on_timer = [this] { ReadTimer_Timer(); };
  form.StoreTimer.on_timer = [this] { StoreTimer_Timer(); };
  form.ImportOk.on_click = [this] { ImportOk_Click(); };
  form.ImportCancel.on_click = [this] { ImportCancel_Click(); };
  form.on_unload = [this] { Form_Unload(); };
  form.PreviewGrid.row_texts = [this](int row) {
    const bool there = row >= 1 && static_cast<std::size_t>(row) <= preview_.size();
    return there ? preview_[static_cast<std::size_t>(row) - 1] : std::vector<std::string>();
  };
}

void LogImport::ImportButton_Click() {
  const auto body = [&] {
    platform::FileQuestion question;
    question.title = "Import";
    question.filter = "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*";
    const auto file = console_.services.dialogs.ask_file(question);
    if (!file || trimmed(*file).empty() || !console_.log_viewer.open()) return;
    begin(*file);
  };
  attempt(body, [&](const Failure& failure) {
    report_failure(console_, "DatabaseViewer_ImportButton_Click", failure);
    console_.messages.ShowMessage(description_of(console_, failure));
  });
}

void LogImport::begin(const std::string& file) {
  ImportPreviewForm& form = console_.ImportPreview;
  const Letters& letters = console_.services.letters;
  const std::string name = file_name(letters, file);
  const auto content = console_.services.files.read(file);
  if (!content) throw Failure(failure_number::file_access, "The file " + name + " can't be read.");
  if (content->size() > largest_file) {
    throw Failure(failure_number::file_access,
                  "The file is larger than 100 MB. Import it in parts.");
  }
  std::string text = csv_text(*content, letters);
  form.unload();
  text_ = std::move(text);
  reader_.emplace(text_);
  log_columns_ = console_.log_viewer.recordset().fields();
  form.FileLabel.caption = name;
  form.ImportOk.enabled = false;
  read_header();
  form.show();
  form.focus(&form.ImportCancel);
  read_slice();
}

void LogImport::read_header() {
  ImportPreviewForm& form = console_.ImportPreview;
  std::vector<std::string> headings;
  for (const auto& column : log_columns_) headings.push_back(column.name);
  form.PreviewGrid.headings = headings;
  const auto header = reader_->next();
  if (!header) throw Failure(failure_number::invalid_argument, "The file is empty.");
  columns_ = match_columns(header->fields, log_columns_);
  if (!header->problem.empty()) columns_.problems.push_back(header->problem);
  for (const std::string& problem : columns_.problems) tell(header->line, problem);
  problems_ += columns_.problems.size();
  for (const std::string& remark : columns_.remarks) tell(header->line, remark);
  // Without the columns nothing fits.
  if (!columns_.problems.empty()) reader_.reset();
}

void LogImport::ReadTimer_Timer() {
  const bool done = guard(console_, "ImportPreview_ReadTimer_Timer", [&] { read_slice(); });
  if (!done) console_.ImportPreview.ReadTimer.enabled = false;
}

void LogImport::read_slice() {
  ImportPreviewForm& form = console_.ImportPreview;
  const std::size_t previewed = preview_.size();
  for (int i = 0; reader_ && i < records_a_slice; ++i) {
    if (const auto record = reader_->next()) {
      take(*record);
    } else {
      reader_.reset();
    }
  }
  if (preview_.size() > previewed) {
    form.PreviewGrid.put_in(static_cast<int>(previewed) + 1,
                            static_cast<int>(preview_.size() - previewed));
  }
  form.ProblemList.list = told_;
  form.ReadTimer.enabled = reader_.has_value();
  show_result();
}

void LogImport::take(const CsvRecord& record) {
  auto values = row_values(record, columns_, log_columns_.size());
  if (!values) {
    ++problems_;
    return tell(record.line, record_problem(record, columns_));
  }
  ++calls_;
  for (const std::string& sentence : cut_values(*values, log_columns_)) tell(record.line, sentence);
  if (preview_.size() < most_previewed) preview_.push_back(*values);
}

void LogImport::tell(std::int64_t line, const std::string& sentence) {
  if (told_.size() > most_told) return;
  told_.push_back(told_.size() == most_told ? "There are more lines like these."
                                            : "Line " + grouped_number(line) + ": " + sentence);
}

void LogImport::show_result() {
  ImportPreviewForm& form = console_.ImportPreview;
  if (reader_) {
    form.ResultLabel.caption =
        "Reading, " + std::to_string(reader_->position() * 100 / text_.size()) + " %";
    return;
  }
  const bool too_many = calls_ > most_calls;
  std::string result;
  if (problems_ > 0) {
    result = (problems_ == 1
                  ? std::string("1 line doesn't fit")
                  : grouped_number(static_cast<std::int64_t>(problems_)) + " lines don't fit") +
             ". Nothing can be imported until all do.";
  } else if (too_many) {
    result =
        "At most " + calls_text(most_calls) + " are imported at once. Import the file in parts.";
  } else {
    result = calls_text(static_cast<std::int64_t>(calls_)) + " can be imported.";
  }
  form.ResultLabel.caption = result;
  form.ImportOk.enabled = problems_ == 0 && calls_ > 0 && !too_many;
  if (form.ImportOk.enabled) form.focus(&form.ImportOk);
}

void LogImport::ImportOk_Click() {
  guard(console_, "ImportPreview_ImportOk_Click", [&] {
    ImportPreviewForm& form = console_.ImportPreview;
    if (!form.ImportOk.enabled || form.StoreTimer.enabled) return;
    form.ImportOk.enabled = false;
    form.mouse_pointer = pointer_hourglass;
    form.ResultLabel.caption = "Storing " + calls_text(static_cast<std::int64_t>(calls_));
    // The words are on the screen before the console is busy.
    form.StoreTimer.enabled = true;
  });
}

void LogImport::StoreTimer_Timer() {
  ImportPreviewForm& form = console_.ImportPreview;
  form.StoreTimer.enabled = false;
  form.mouse_pointer = pointer_default;
  const bool stored = attempt(
      [&] { store(); },
      [&](const Failure& failure) {
        report_failure(console_, "ImportPreview_StoreTimer_Timer", failure);
        console_.messages.ShowMessage(description_of(console_, failure) + " Nothing was imported.");
      });
  if (!stored) return show_result();
  const std::string result = "Imported " + calls_text(static_cast<std::int64_t>(calls_)) + ".";
  form.unload();
  guard(console_, "ImportPreview_StoreTimer_Timer", [&] {
    console_.log_viewer.look_again();
    console_.messages.ShowMessage(result);
  });
}

void LogImport::store() {
  if (!console_.log_viewer.open()) {
    throw Failure(failure_number::object_not_set, "The log is not open any more.");
  }
  platform::Recordset& rows = console_.log_viewer.recordset();
  console_.log_viewer.database().in_transaction([&] {
    CsvReader reader(text_);
    reader.next();
    while (const auto record = reader.next()) {
      const auto values = row_values(*record, columns_, log_columns_.size());
      if (!values) continue;
      rows.add_new();
      for (std::size_t i = 0; i < values->size(); ++i) {
        if (!(*values)[i].empty()) rows.set_field(static_cast<int>(i), (*values)[i]);
      }
      rows.update();
    }
  });
}

void LogImport::ImportCancel_Click() {
  guard(console_, "ImportPreview_ImportCancel_Click", [&] { console_.ImportPreview.unload(); });
}

void LogImport::Form_Unload() {
  ImportPreviewForm& form = console_.ImportPreview;
  form.ReadTimer.enabled = false;
  form.StoreTimer.enabled = false;
  form.mouse_pointer = pointer_default;
  reader_.reset();
  text_.clear();
  text_.shrink_to_fit();
  preview_.clear();
  told_.clear();
  calls_ = 0;
  problems_ = 0;
  form.PreviewGrid.show_other_rows(0);
}

}  // namespace lineweir

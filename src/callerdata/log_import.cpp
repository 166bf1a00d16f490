#include "callerdata/log_import.h"

#include "base/text.h"
#include "callerdata/log_places.h"
#include "callerdata/log_reading.h"
#include "callerdata/log_text.h"
#include "callerdata/log_viewer.h"
#include "forms/call_log_columns.h"
#include "letters/path_text.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

using Stage = platform::RowBatch::Stage;

// The log and the file take three slices each at the least.
constexpr int slices_at_once = 6;
constexpr std::size_t most_previewed = 200;
constexpr std::size_t most_told = 500;
// Beyond these the file is read no faster than its calls are collected.
constexpr std::size_t most_waiting = 20000;

std::string lines_text(std::int64_t lines) {
  return lines == 1 ? "1 line doesn't fit" : grouped_number(lines) + " lines don't fit";
}

std::string line_text(std::int64_t line) { return "Line " + grouped_number(line) + ": "; }

std::string percent_text(const std::string& doing, std::int64_t percent) {
  return doing + ", " + std::to_string(percent) + " %";
}

}  // namespace

LogImport::LogImport(ConsoleState& state, LogViewer& log_viewer)
    : state_(state), log_viewer_(log_viewer) {
  ImportPreviewForm& form = state.ImportPreview;
  wire(
      state.DatabaseViewer.ImportButton.on_click, state_.trace, "DatabaseViewer_ImportButton_Click",
      [this] { ImportButton_Click(); },
      [this](const Failure& failure) { state_.messages.tell(failure); });
  wire(form.ReadTimer.on_timer, state_.trace, "ImportPreview_ReadTimer_Timer",
       [this] { ReadTimer_Timer(); });
  wire(form.StoreTimer.on_timer, state_.trace, "ImportPreview_StoreTimer_Timer",
       [this] { StoreTimer_Timer(); });
  wire(form.HeldCheck.on_click, state_.trace, "ImportPreview_HeldCheck_Click",
       [this] { HeldCheck_Click(); });
  wire(form.ImportOk.on_click, state_.trace, "ImportPreview_ImportOk_Click",
       [this] { ImportOk_Click(); });
  wire(form.ImportCancel.on_click, state_.trace, "ImportPreview_ImportCancel_Click",
       [this] { ImportCancel_Click(); });
  wire(form.on_close, state_.trace, "ImportPreview_ImportCancel_Click",
       [this] { ImportCancel_Click(); });
  wire(form.on_unload, state_.trace, "ImportPreview_Form_Unload", [this] { Form_Unload(); });
  form.PreviewGrid.row_texts = [this](int row) {
    const bool there = row >= 1 && static_cast<std::size_t>(row) <= preview_.size();
    return there ? preview_[static_cast<std::size_t>(row) - 1] : std::vector<std::string>();
  };
}

void LogImport::ImportButton_Click() {
  platform::FileQuestion question;
  question.title = "Import";
  question.filter = "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*";
  question.shown_title = "Import calls from a CSV file";
  question.shown_filter = "CSV files (*.csv)|*.csv|Text files (*.txt)|*.txt|All files (*.*)|*.*";
  const auto file = state_.services.dialogs.ask_file(question);
  if (!file || trimmed(*file).empty() || !state_.DatabaseViewer.loaded()) return;
  // The log may be another one by now.
  log_viewer_.keep_up();
  if (log_viewer_.open()) return begin(*file);
  state_.messages.ShowMessage(
      state_.services.letters.from_utf8(state_.DatabaseViewer.CountLabel.caption.get()));
}

void LogImport::begin(const std::string& file) {
  ImportPreviewForm& form = state_.ImportPreview;
  const Letters& letters = state_.services.letters;
  form.unload();
  platform::Recordset& log = log_viewer_.recordset();
  log_columns_ = log.fields();
  held_.begin(log);
  batch_ = log_viewer_.database().collect_rows(std::string(call_log_table));
  file_.emplace(state_.services.user_files, file, letters);
  std::vector<std::string> headings;
  for (const auto& column : log_columns_) headings.push_back(column.name);
  form.PreviewGrid.shown_columns = columns_as_read(log_columns_);
  form.PreviewGrid.column_widths = log_grid_widths(log_columns_);
  form.PreviewGrid.headings = headings;
  form.FileLabel.caption = file_name(letters, file);
  form.HeldCheck.visible = false;
  form.HeldCheck.enabled = true;
  form.HeldCheck.value = 0;
  form.ImportOk.enabled = false;
  form.ImportCancel.enabled = true;
  form.ReadTimer.enabled = true;
  form.show();
  form.focus(&form.ImportCancel);
  // A short file is read and shown at once.
  for (int i = 0; i < slices_at_once && form.ReadTimer.enabled; ++i) ReadTimer_Timer();
}

void LogImport::ReadTimer_Timer() {
  if (!batch_) return;
  attempt([&] { read_slice(); },
          [&](const Failure& failure) {
            // A log that is in use for now is looked at at the next tick.
            if (held_.working() && failure.number() == failure_number::database_in_use) return;
            report_failure(state_.trace, "ImportPreview_ReadTimer_Timer", failure);
            close_with(description_of(state_.services.letters, failure));
          });
}

void LogImport::read_slice() {
  if (const auto progress = batch_->progress(); progress.stage == Stage::Failed) {
    return finish(progress);
  }
  if (held_.working()) {
    held_.work();
  } else if (batch_->waiting() < most_waiting) {
    read_piece();
  }
  if (file_) return show_work();
  state_.ImportPreview.ReadTimer.enabled = false;
  show_result();
}

void LogImport::read_piece() {
  ImportPreviewForm& form = state_.ImportPreview;
  const std::size_t previewed = preview_.size();
  waits_ = wait_.lasts(state_.services.loop.now(), file_->work());
  while (const auto record = file_->next()) {
    columns_ ? take(*record) : take_header(*record);
    // Without the columns nothing fits.
    if (columns_ && !columns_->problems.empty()) break;
  }
  if (preview_.size() > previewed) {
    form.PreviewGrid.put_in(static_cast<int>(previewed) + 1,
                            static_cast<int>(preview_.size() - previewed));
  }
  form.ProblemList.list = told_;
  const bool no_columns = columns_ && !columns_->problems.empty();
  if (!file_->at_end() && !no_columns) return;
  if (!columns_) throw Failure(failure_number::invalid_argument, "The file is empty.");
  file_.reset();
}

void LogImport::take_header(const CsvRecord& record) {
  if (names_separator(record) || is_blank(record)) return;
  columns_ = match_columns(record.fields, log_columns_);
  if (record.problem) columns_->problems.insert(columns_->problems.begin(), *record.problem);
  for (const CsvProblem& problem : columns_->problems) tell_problem(record.line, problem);
  for (const std::string& remark : columns_->remarks) tell(line_text(record.line) + remark);
}

void LogImport::take(const CsvRecord& record) {
  if (is_blank(record)) return;
  if (const auto problem = record_problem(record, *columns_)) {
    return tell_problem(record.line, *problem);
  }
  auto values = row_values(record, *columns_, log_columns_.size());
  for (const std::string& sentence : cut_values(values, log_columns_)) {
    tell(line_text(record.line) + sentence);
  }
  const bool held = held_.take(values);
  ++calls_;
  if (held) ++held_calls_;
  if (preview_.size() < most_previewed) preview_.push_back(values);
  // What can't be stored in the end needn't be collected.
  if (problems_ == 0) batch_->add(std::move(values), held);
}

void LogImport::tell_problem(std::int64_t line, const CsvProblem& problem) {
  ++problems_;
  tell(problem_sentence(line, problem, *columns_));
}

void LogImport::tell(const std::string& sentence) {
  if (told_.size() > most_told) return;
  told_.push_back(told_.size() == most_told ? "There are more lines like these." : sentence);
}

void LogImport::show_work() {
  std::string work = percent_text("Reading", file_->percent());
  if (held_.working()) work = percent_text("Looking through the log", held_.percent());
  if (waits_) work = "Waiting for the file";
  state_.ImportPreview.ResultLabel.caption = work;
}

std::int64_t LogImport::to_import() const {
  return state_.ImportPreview.HeldCheck.value != 0 ? calls_ : calls_ - held_calls_;
}

void LogImport::show_result() {
  ImportPreviewForm& form = state_.ImportPreview;
  form.HeldCheck.visible = problems_ == 0 && held_calls_ > 0;
  std::string result;
  if (problems_ > 0) {
    result = lines_text(problems_) + ". Nothing can be imported until all do.";
  } else {
    result = calls_text(to_import()) + " can be imported.";
    if (to_import() < calls_) {
      result += " " + calls_text(held_calls_) + " that the log holds already will be left out.";
    }
  }
  form.ResultLabel.caption = result;
  form.ImportOk.enabled = problems_ == 0 && to_import() > 0;
  if (form.ImportOk.enabled && form.focused() == &form.ImportCancel) form.focus(&form.ImportOk);
}

void LogImport::HeldCheck_Click() { show_result(); }

void LogImport::ImportOk_Click() {
  ImportPreviewForm& form = state_.ImportPreview;
  if (!batch_ || !form.ImportOk.enabled) return;
  form.ImportOk.enabled = false;
  form.HeldCheck.enabled = false;
  form.focus(&form.ImportCancel);
  batch_->store(form.HeldCheck.value != 0);
  form.StoreTimer.enabled = true;
  form.ResultLabel.caption = "Storing " + calls_text(to_import());
}

void LogImport::StoreTimer_Timer() {
  if (!batch_) return;
  ImportPreviewForm& form = state_.ImportPreview;
  const platform::RowBatch::Progress progress = batch_->progress();
  const bool cancelling = !form.ImportCancel.enabled;
  switch (progress.stage) {
    case Stage::Stored:
    case Stage::Cancelled:
    case Stage::Failed:
      return finish(progress);
    case Stage::Waiting:
      if (!cancelling) {
        form.ResultLabel.caption = "Waiting for the log, which another program is writing to";
      }
      return;
    default:
      if (!cancelling) {
        form.ResultLabel.caption =
            percent_text("Storing " + calls_text(to_import()), progress.done * 100 / calls_);
      }
  }
}

void LogImport::finish(const platform::RowBatch::Progress& progress) {
  if (progress.stage == Stage::Failed) {
    const Failure& failure = *progress.failure;
    report_failure(state_.trace, "ImportPreview_StoreTimer_Timer", failure);
    return close_with(description_of(state_.services.letters, failure) + " Nothing was imported.");
  }
  if (progress.stage == Stage::Cancelled) return close_with("");
  std::string result = "Imported " + calls_text(to_import()) + ".";
  if (to_import() < calls_) {
    result += " " + calls_text(held_calls_) + " that the log held already " +
              (held_calls_ == 1 ? "was" : "were") + " left out.";
  }
  close_with(result);
  log_viewer_.look_again();
}

void LogImport::close_with(const std::string& message) {
  state_.ImportPreview.unload();
  if (!message.empty()) state_.messages.ShowMessage(message);
}

void LogImport::ImportCancel_Click() {
  ImportPreviewForm& form = state_.ImportPreview;
  if (!form.StoreTimer.enabled) return form.unload();
  batch_->cancel();
  form.ImportCancel.enabled = false;
  form.ResultLabel.caption = "Cancelling";
}

void LogImport::Form_Unload() {
  ImportPreviewForm& form = state_.ImportPreview;
  form.ReadTimer.enabled = false;
  form.StoreTimer.enabled = false;
  batch_.reset();
  file_.reset();
  wait_ = {};
  waits_ = false;
  held_.forget();
  columns_.reset();
  preview_.clear();
  told_.clear();
  calls_ = 0;
  held_calls_ = 0;
  problems_ = 0;
  form.ProblemList.list = told_;
  form.PreviewGrid.show_other_rows(0);
}

}  // namespace lineweir

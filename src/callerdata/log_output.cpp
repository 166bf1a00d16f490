#include "callerdata/log_output.h"

#include <algorithm>

#include "base/text.h"
#include "callerdata/csv.h"
#include "callerdata/log_places.h"
#include "callerdata/log_text.h"
#include "callerdata/log_viewer.h"
#include "callerdata/spared_files.h"
#include "letters/path_text.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// What fits into a slice of a few milliseconds.
constexpr std::size_t rows_a_slice = 200;

std::string file_name_of(const std::string& path) {
  const auto slash = path.find_last_of("/\\");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string with_extension(const std::string& path, const std::string& extension) {
  const auto name = path.size() - file_name_of(path).size();
  const auto point = path.rfind('.');
  const bool has_one = point != std::string::npos && point > name;
  return (has_one ? path.substr(0, point) : path) + extension;
}

std::vector<std::string> cells(std::vector<std::string> texts, bool raw) {
  if (raw) return texts;
  for (std::string& text : texts) text = guarded_cell(text);
  return texts;
}

}  // namespace

LogOutput::LogOutput(ConsoleState& state, const ShowPlanStore& show_plan, LogViewer& log_viewer)
    : state_(state), show_plan_(show_plan), log_viewer_(log_viewer) {
  log_viewer.on_closing = [this] { stop(); };
  DatabaseViewerForm& form = state.DatabaseViewer;
  const auto tell = [this](const Failure& failure) { state_.messages.tell(failure); };
  wire(
      form.ExportButton.on_click, state_.trace, "DatabaseViewer_ExportButton_Click",
      [this] { ExportButton_Click(); }, tell);
  wire(
      form.PrintButton.on_click, state_.trace, "DatabaseViewer_PrintButton_Click",
      [this] { PrintButton_Click(); }, tell);
  wire(form.CancelWork.on_click, state_.trace, "DatabaseViewer_CancelWork_Click",
       [this] { CancelWork_Click(); });
  wire(
      form.OutputTimer.on_timer, state_.trace, "DatabaseViewer_OutputTimer_Timer",
      [this] { slice(); },
      [this](const Failure& failure) {
        stop();
        show("");
        state_.messages.tell(failure);
      });
}

void LogOutput::ExportButton_Click() {
  const std::string file = ask_file({.title = "Export",
                                     .filter = "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*",
                                     .shown_title = "Export the calls shown to a CSV file"},
                                    ".csv");
  if (file.empty()) return;
  auto target = open_target(file);
  const bool raw = state_.DatabaseViewer.RawExport.value != 0;
  target->append(csv_record(cells(log_viewer_.column_names(), raw)));
  Job job{"Exporting", "Exported", file, std::move(target), log_viewer_.shown_rows(), {}, {}};
  job.row = [raw](const auto& texts) { return csv_record(cells(texts, raw)); };
  job.rest = [] { return std::string(); };
  start(std::move(job));
}

void LogOutput::PrintButton_Click() {
  const std::string file = ask_file({.title = "Print",
                                     .filter = "PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*",
                                     .shown_title = "Print the calls shown to a PDF file"},
                                    ".pdf");
  if (file.empty()) return;
  std::vector<platform::PrintedColumn> columns;
  const std::vector<platform::DatabaseColumn>& fields = log_viewer_.recordset().fields();
  const LogPlaces places = require_log_columns(fields);
  for (const platform::DatabaseColumn& field : fields) {
    const int place = static_cast<int>(columns.size());
    columns.push_back({field.name, places.column_at(place).page_share});
  }
  const std::string title =
      "Call log " + shown_file_name(state_.DatabaseViewer.Data1.database_name);
  const std::shared_ptr<platform::PrintedTable> output =
      state_.services.printer.begin(title, columns);
  Job job{"Printing", "Printed", file, open_target(file), log_viewer_.shown_rows(), {}, {}};
  job.row = [output](const auto& texts) {
    output->add_row(texts);
    return output->take();
  };
  job.rest = [output] {
    output->finish();
    return output->take();
  };
  start(std::move(job));
}

std::string LogOutput::ask_file(platform::FileQuestion question, const std::string& extension) {
  if (running() || !log_viewer_.open()) return {};
  question.for_saving = true;
  question.default_path = with_extension(state_.DatabaseViewer.Data1.database_name, extension);
  const auto file = state_.services.dialogs.ask_file(question);
  // The viewer may have been closed while the question stood.
  if (!file || trimmed(*file).empty() || !log_viewer_.open()) return {};
  return *file;
}

std::unique_ptr<platform::FileTarget> LogOutput::open_target(const std::string& file) const {
  auto target = state_.services.user_files.write(
      file, spared_files(state_, show_plan_, shown_file_name(file)));
  // Most files answer at once.
  target->ready();
  return target;
}

void LogOutput::start(Job job) {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  job_ = std::make_unique<Job>(std::move(job));
  form.ExportButton.enabled = false;
  form.PrintButton.enabled = false;
  form.ImportButton.enabled = false;
  form.CancelWork.visible = true;
  form.OutputTimer.enabled = true;
  show(job_->doing + ", 0 %");
}

void LogOutput::stop() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  job_.reset();
  form.OutputTimer.enabled = false;
  form.CancelWork.visible = false;
  const bool open = log_viewer_.open();
  form.ExportButton.enabled = open;
  form.PrintButton.enabled = open;
  form.ImportButton.enabled = open;
}

void LogOutput::CancelWork_Click() {
  if (!running()) return;
  const std::string doing = job_->doing;
  stop();
  show(doing + " was cancelled.");
}

void LogOutput::slice() {
  if (!running()) return;
  Job& job = *job_;
  const bool answered = job.all_given ? job.target->done() : job.target->ready();
  const bool waits = job.wait.lasts(state_.services.loop.now(), answered);
  if (waits) show(job.doing + ", waiting for the file");
  if (!answered) return;
  if (!job.all_given) {
    give_rows(job);
    if (!job.all_given) {
      return show(job.doing + ", " + std::to_string(job.next * 100 / job.rows.size()) + " %");
    }
    if (!job.target->done()) return;
  }
  const std::string result = job.done + " " +
                             calls_text(static_cast<std::int64_t>(job.rows.size())) + " to " +
                             shown_file_name(job.file);
  stop();
  show(result);
}

void LogOutput::give_rows(Job& job) {
  const std::size_t end = std::min(job.next + rows_a_slice, job.rows.size());
  for (; job.next < end; ++job.next) {
    const auto texts = log_viewer_.texts(job.rows[job.next]);
    // A call may have been removed by another program since.
    if (!texts.empty()) job.target->append(job.row(texts));
  }
  if (job.next < job.rows.size()) return;
  job.target->append(job.rest());
  job.target->finish();
  job.all_given = true;
}

std::string LogOutput::shown_file_name(const std::string& path) const {
  return file_name_of(file_name(state_.services.letters, path));
}

void LogOutput::show(const std::string& text) { state_.DatabaseViewer.WorkLabel.caption = text; }

}  // namespace lineweir

#include "callerdata/log_output.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "callerdata/csv.h"
#include "callerdata/draft_file.h"
#include "callerdata/log_places.h"
#include "callerdata/log_text.h"
#include "callerdata/log_viewer.h"
#include "clocks/show_plan_store.h"
#include "letters/path_text.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/settings_record.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// What fits into a slice of a few milliseconds.
constexpr std::size_t rows_a_slice = 200;

// The names of a log's files, behind its own name.
constexpr std::array<std::string_view, 1> log_itself = {""};
constexpr std::array<std::string_view, 3> files_beside_log = {"-wal", "-shm", "-journal"};

// What the console itself writes into its folder.
constexpr std::array own_files = {settings_file_name, trace_file_name};

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
  const std::string file =
      ask_file("Export", "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*", ".csv");
  if (file.empty()) return;
  std::shared_ptr<platform::FileInMaking> output = state_.services.files.begin_replace(file);
  const bool raw = state_.DatabaseViewer.RawExport.value != 0;
  output->append(csv_record(cells(log_viewer_.column_names(), raw)));
  Job job{"Exporting", "Exported", file, log_viewer_.shown_rows(), 0, {}, {}};
  job.add_row = [output, raw](const auto& texts) { output->append(csv_record(cells(texts, raw))); };
  job.finish = [output] { output->finish(); };
  start(std::move(job));
}

void LogOutput::PrintButton_Click() {
  const std::string file = ask_file("Print", "PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*", ".pdf");
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
  std::shared_ptr<platform::PrintedTable> output =
      state_.services.printer.begin(file, title, columns);
  Job job{"Printing", "Printed", file, log_viewer_.shown_rows(), 0, {}, {}};
  job.add_row = [output](const auto& texts) { output->add_row(texts); };
  job.finish = [output] { output->finish(); };
  start(std::move(job));
}

std::string LogOutput::ask_file(const std::string& title, const std::string& filter,
                                const std::string& extension) {
  if (running() || !log_viewer_.open()) return {};
  platform::FileQuestion question;
  question.title = title;
  question.filter = filter;
  question.for_saving = true;
  question.default_path = with_extension(state_.DatabaseViewer.Data1.database_name, extension);
  const auto file = state_.services.dialogs.ask_file(question);
  // The viewer may have been closed while the question stood.
  if (!file || trimmed(*file).empty() || !log_viewer_.open()) return {};
  const std::string reason = why_not(*file);
  if (reason.empty()) return *file;
  const Failure refusal(failure_number::file_access,
                        "The file '" + shown_file_name(*file) + "' " + reason +
                            " and is not overwritten. Choose another name.");
  report_failure(state_.trace, "DatabaseViewer", refusal);
  state_.messages.tell(refusal);
  return {};
}

std::string LogOutput::why_not(const std::string& file) {
  if (is_own_file(file)) return "belongs to Lineweir";
  // Asked first: what the engine keeps beside a log is no file to open as a database.
  if (is_log_file(file, files_beside_log)) return "belongs to the call log";
  const bool database =
      is_log_file(file, log_itself) || state_.services.databases.is_database(file);
  return database ? "is a database" : "";
}

bool LogOutput::is_own_file(const std::string& file) const {
  const auto is = [&](const std::string& own) {
    return !own.empty() && state_.services.files.same_file(file, own);
  };
  return std::ranges::any_of(own_files,
                             [&](std::string_view own) { return is(std::string(own)); }) ||
         is(show_plan_.TheDataFileName) || is(state_.program.MessageFile) || is_draft_file(file);
}

// Those of other consoles in the folder count too.
bool LogOutput::is_draft_file(const std::string& file) const {
  for (int number = 1; number <= platform::most_console_files; ++number) {
    const std::string name = platform::console_file_name(draft_file_name, number);
    if (state_.services.files.same_file(file, name)) return true;
  }
  return false;
}

bool LogOutput::is_log_file(const std::string& file, std::span<const std::string_view> endings) {
  const auto is_of = [&](const std::string& log) {
    return !log.empty() && std::ranges::any_of(endings, [&](std::string_view ending) {
      return state_.services.files.same_file(file, log + std::string(ending));
    });
  };
  return is_of(state_.DatabaseViewer.Data1.database_name) ||
         is_of(state_.Lineweir.Data1.database_name);
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
  const std::size_t end = std::min(job.next + rows_a_slice, job.rows.size());
  for (; job.next < end; ++job.next) {
    const auto texts = log_viewer_.texts(job.rows[job.next]);
    // A call may have been removed by another program since.
    if (!texts.empty()) job.add_row(texts);
  }
  if (job.next < job.rows.size()) {
    return show(job.doing + ", " + std::to_string(job.next * 100 / job.rows.size()) + " %");
  }
  job.finish();
  const std::string result = job.done + " " +
                             calls_text(static_cast<std::int64_t>(job.rows.size())) + " to " +
                             shown_file_name(job.file);
  stop();
  show(result);
}

std::string LogOutput::shown_file_name(const std::string& path) const {
  return file_name_of(file_name(state_.services.letters, path));
}

void LogOutput::show(const std::string& text) { state_.DatabaseViewer.WorkLabel.caption = text; }

}  // namespace lineweir

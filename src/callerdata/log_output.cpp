#include "callerdata/log_output.h"

#include <algorithm>
#include <array>

#include "callerdata/call_log_columns.h"
#include "callerdata/csv.h"
#include "callerdata/draft_file.h"
#include "callerdata/log_text.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"
#include "letters/path_text.h"

namespace lineweir {
namespace {

// What fits into a slice of a few milliseconds.
constexpr std::size_t rows_a_slice = 200;

// Shares of the page's width by column of the table.
constexpr std::array<int, call_log_columns.size()> page_widths = {13, 14, 9, 5, 6, 10, 20,
                                                                  7,  6,  8, 8, 9, 8,  11};

// The names of a log's files, behind its own name.
constexpr std::array<std::string_view, 1> log_itself = {""};
constexpr std::array<std::string_view, 3> files_beside_log = {"-wal", "-shm", "-journal"};

// What the console itself writes into its folder.
constexpr std::array own_files = {settings_file_name, draft_file_name, trace_file_name};

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

LogOutput::LogOutput(Console& console) : console_(console) {
  DatabaseViewerForm& form = console.DatabaseViewer;
  form.ExportButton.on_click = [this] { ExportButton_Click(); };
  form.PrintButton.on_click = [this] { PrintButton_Click(); };
  form.CancelWork.on_click = [this] { CancelWork_Click(); };
  form.OutputTimer.on_timer = [this] { OutputTimer_Timer(); };
}

void LogOutput::ExportButton_Click() {
  const auto body = [&] {
    const std::string file =
        ask_file("Export", "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*", ".csv");
    if (file.empty()) return;
    std::shared_ptr<platform::FileInMaking> output = console_.services.files.begin_replace(file);
    const bool raw = console_.DatabaseViewer.RawExport.value != 0;
    output->append(csv_record(cells(console_.log_viewer.column_names(), raw)));
    Job job{"Exporting", "Exported", file, console_.log_viewer.shown_rows(), 0, {}, {}};
    job.add_row = [output, raw](const auto& texts) {
      output->append(csv_record(cells(texts, raw)));
    };
    job.finish = [output] { output->finish(); };
    start(std::move(job));
  };
  attempt(body, [&](const Failure& failure) {
    refuse("DatabaseViewer_ExportButton_Click", failure.what());
  });
}

void LogOutput::PrintButton_Click() {
  const auto body = [&] {
    const std::string file =
        ask_file("Print", "PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*", ".pdf");
    if (file.empty()) return;
    std::vector<platform::PrintedColumn> columns;
    for (const std::string& name : console_.log_viewer.column_names()) {
      const std::size_t place = std::min(columns.size(), page_widths.size() - 1);
      columns.push_back({name, page_widths[place]});
    }
    const std::string title =
        "Call log " + shown_file_name(console_.DatabaseViewer.Data1.database_name);
    std::shared_ptr<platform::PrintedTable> output =
        console_.services.printer.begin(file, title, columns);
    Job job{"Printing", "Printed", file, console_.log_viewer.shown_rows(), 0, {}, {}};
    job.add_row = [output](const auto& texts) { output->add_row(texts); };
    job.finish = [output] { output->finish(); };
    start(std::move(job));
  };
  attempt(body, [&](const Failure& failure) {
    refuse("DatabaseViewer_PrintButton_Click", failure.what());
  });
}

std::string LogOutput::ask_file(const std::string& title, const std::string& filter,
                                const std::string& extension) {
  if (running() || !console_.log_viewer.open()) return {};
  platform::FileQuestion question;
  question.title = title;
  question.filter = filter;
  question.for_saving = true;
  question.default_path = with_extension(console_.DatabaseViewer.Data1.database_name, extension);
  const auto file = console_.services.dialogs.ask_file(question);
  // The viewer may have been closed while the question stood.
  if (!file || trimmed(*file).empty() || !console_.log_viewer.open()) return {};
  const std::string reason = why_not(*file);
  if (reason.empty()) return *file;
  refuse("DatabaseViewer", "The file '" + shown_file_name(*file) + "' " + reason +
                               " and is not overwritten. Choose another name.");
  return {};
}

std::string LogOutput::why_not(const std::string& file) {
  if (is_own_file(file)) return "belongs to Lineweir";
  // Asked first: what the engine keeps beside a log is no file to open as a database.
  if (is_log_file(file, files_beside_log)) return "belongs to the call log";
  const bool database =
      is_log_file(file, log_itself) || console_.services.databases.is_database(file);
  return database ? "is a database" : "";
}

bool LogOutput::is_own_file(const std::string& file) const {
  const auto is = [&](const std::string& own) {
    return !own.empty() && console_.services.files.same_file(file, own);
  };
  return std::ranges::any_of(own_files,
                             [&](std::string_view own) { return is(std::string(own)); }) ||
         is(console_.show_plan.TheDataFileName) || is(console_.program.MessageFile);
}

bool LogOutput::is_log_file(const std::string& file, std::span<const std::string_view> endings) {
  const auto is_of = [&](const std::string& log) {
    return !log.empty() && std::ranges::any_of(endings, [&](std::string_view ending) {
      return console_.services.files.same_file(file, log + std::string(ending));
    });
  };
  return is_of(console_.DatabaseViewer.Data1.database_name) ||
         is_of(console_.Lineweir.Data1.database_name);
}

void LogOutput::start(Job job) {
  DatabaseViewerForm& form = console_.DatabaseViewer;
  job_ = std::make_unique<Job>(std::move(job));
  form.ExportButton.enabled = false;
  form.PrintButton.enabled = false;
  form.ImportButton.enabled = false;
  form.CancelWork.visible = true;
  form.OutputTimer.enabled = true;
  show(job_->doing + ", 0 %");
}

void LogOutput::stop() {
  DatabaseViewerForm& form = console_.DatabaseViewer;
  job_.reset();
  form.OutputTimer.enabled = false;
  form.CancelWork.visible = false;
  const bool open = console_.log_viewer.open();
  form.ExportButton.enabled = open;
  form.PrintButton.enabled = open;
  form.ImportButton.enabled = open;
}

void LogOutput::CancelWork_Click() {
  guard(console_, "DatabaseViewer_CancelWork_Click", [&] {
    if (!running()) return;
    const std::string doing = job_->doing;
    stop();
    show(doing + " was cancelled.");
  });
}

void LogOutput::OutputTimer_Timer() {
  attempt([&] { slice(); },
          [&](const Failure& failure) {
            stop();
            show("");
            refuse("DatabaseViewer_OutputTimer_Timer", failure.what());
          });
}

void LogOutput::slice() {
  if (!running()) return;
  Job& job = *job_;
  const std::size_t end = std::min(job.next + rows_a_slice, job.rows.size());
  for (; job.next < end; ++job.next) {
    const auto texts = console_.log_viewer.texts(job.rows[job.next]);
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
  return file_name_of(file_name(console_.services.letters, path));
}

void LogOutput::show(const std::string& text) { console_.DatabaseViewer.WorkLabel.caption = text; }

void LogOutput::refuse(const std::string& handler, const std::string& sentence) {
  const Failure failure(failure_number::file_access, sentence);
  report_failure(console_, handler, failure);
  console_.messages.ShowMessage(description_of(console_, failure));
}

}  // namespace lineweir

#include "callerdata/log_viewer.h"

#include <algorithm>

#include "base/text.h"
#include "callerdata/call_log.h"
#include "callerdata/log_places.h"
#include "callerdata/log_reading.h"
#include "forms/call_log_columns.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr int down_arrow_code = 40;

constexpr std::string_view no_log =
    "No call log is chosen. Choose or create one with Options, Database Path.";

}  // namespace

LogViewer::LogViewer(ConsoleState& state, CallLog& call_log) : state_(state), call_log_(call_log) {
  call_log.on_chosen = [this] { keep_up(); };
  DatabaseViewerForm& form = state.DatabaseViewer;
  wire(state.Lineweir.ShowDatabaseMenuItem.on_click, state_.trace,
       "Lineweir_ShowDatabaseMenuItem_Click", [this] { ShowDatabaseMenuItem_Click(); });
  wire(form.on_load, state_.trace, "DatabaseViewer_Form_Load", [this] { Form_Load(); });
  wire(form.on_unload, state_.trace, "DatabaseViewer_Form_Unload", [this] { Form_Unload(); });
  wire(form.SearchText.on_change, state_.trace, "DatabaseViewer_SearchText_Change",
       [this] { SearchText_Change(); });
  wire(form.SearchText.on_key_down, state_.trace, "DatabaseViewer_SearchText_KeyDown",
       [this](int& key_code, int) { SearchText_KeyDown(key_code); });
  wire(form.SortList.on_click, state_.trace, "DatabaseViewer_SortList_Click",
       [this] { SortList_Click(); });
  wire(form.SortDown.on_click, state_.trace, "DatabaseViewer_SortDown_Click",
       [this] { SortDown_Click(); });
  wire(form.DBGrid1.on_sel_change, state_.trace, "DatabaseViewer_DBGrid1_SelChange",
       [this] { DBGrid1_SelChange(); });
  wire(form.DBGrid1.on_heading_click, state_.trace, "DatabaseViewer_DBGrid1_HeadClick",
       [this](int column) { heading_clicked(column); });
  form.DBGrid1.row_texts = [this](int row) { return grid_row(row); };
  form.DBGrid1.marked_pieces = [this](std::string_view utf8) {
    return view_.search().places_in(utf8);
  };
  wire(form.WorkTimer.on_timer, state_.trace, "DatabaseViewer_WorkTimer_Timer",
       [this] { WorkTimer_Timer(); });
  wire(form.FollowTimer.on_timer, state_.trace, "DatabaseViewer_FollowTimer_Timer",
       [this] { FollowTimer_Timer(); });
  wire(form.ExitViewer.on_click, state_.trace, "DatabaseViewer_ExitViewer_Click",
       [this] { ExitViewer_Click(); });
}

void LogViewer::ShowDatabaseMenuItem_Click() {
  keep_up();
  state_.DatabaseViewer.show();
}

void LogViewer::Form_Load() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  form.Data1.database_name = state_.Lineweir.Data1.database_name;
  form.Data1.record_source = state_.Lineweir.Data1.record_source;
  form.SearchText.text = "";
  form.CountLabel.caption = "";
  order_ = {};
  form.focus(&form.SearchText);
  show_log();
}

void LogViewer::show_log() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  attempt([&] { open_log(); },
          [&](const Failure& failure) {
            close_log();
            if (form.CountLabel.caption.get() == failure.what()) return;
            report_failure(state_.trace, "DatabaseViewer_Form_Load", failure);
            form.CountLabel.caption = failure.what();
          });
  form.ImportButton.enabled = open();
  form.ExportButton.enabled = open();
  form.PrintButton.enabled = open();
  // A log that can't be shown now may be shown later.
  form.FollowTimer.enabled = call_log_.chosen();
  look_again();
}

void LogViewer::open_log() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  if (!call_log_.chosen()) {
    form.CountLabel.caption = no_log;
    return;
  }
  const std::string table(call_log_table);
  database_ = state_.services.databases.open(form.Data1.database_name);
  require_log_columns(database_->table_columns(table));
  recordset_ = database_->open_recordset(table);
  stamp_ = database_->change_stamp();
  show_columns();
  read_days_anew();
}

void LogViewer::Form_Unload() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  form.WorkTimer.enabled = false;
  form.FollowTimer.enabled = false;
  if (on_closing) on_closing();
  state_.ImportPreview.unload();
  close_log();
  form.DBGrid1.headings = std::vector<std::string>();
  form.SortList.list = std::vector<std::string>();
  form.WorkLabel.caption = "";
}

void LogViewer::close_log() {
  view_ = {};
  days_ = {};
  more_days_ = false;
  recordset_.reset();
  database_.reset();
  state_.DatabaseViewer.DBGrid1.show_other_rows(0);
  show_details();
}

std::vector<std::string> LogViewer::column_names() const {
  std::vector<std::string> names;
  for (const auto& column : recordset_->fields()) names.push_back(column.name);
  return names;
}

std::vector<std::string> LogViewer::texts(platform::RowId row) {
  auto values = recordset_->row(row).value_or(std::vector<std::string>());
  // Some fields of a call are of fixed length.
  for (std::string& value : values) value.resize(trimmed_right(value).size());
  return values;
}

std::vector<platform::RowId> LogViewer::shown_rows() const {
  std::vector<platform::RowId> rows;
  rows.reserve(static_cast<std::size_t>(view_.size()));
  for (int place = 0; place < view_.size(); ++place) rows.push_back(view_.row(place));
  return rows;
}

void LogViewer::show_columns() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  read_columns_ = columns_as_read(recordset_->fields());
  std::vector<std::string> names;
  for (const DataGridColumn& column : read_columns_) names.push_back(column.heading);
  form.DBGrid1.column_widths = log_grid_widths(recordset_->fields());
  form.DBGrid1.shown_columns = read_columns_;
  form.DBGrid1.headings = column_names();
  form.show_detail_names(names);
  names.insert(names.begin(), "Order of logging");
  form.SortList.list = names;
  sort_by(order_);
}

int LogViewer::column_of_order(int entry) const {
  const auto place = static_cast<std::size_t>(entry - 1);
  return entry < 1 || place >= read_columns_.size() ? LogOrder::as_logged
                                                    : read_columns_[place].column;
}

int LogViewer::order_of_column(int column) const {
  const auto found = std::ranges::find(read_columns_, column, &DataGridColumn::column);
  return found == read_columns_.end() ? 0 : static_cast<int>(found - read_columns_.begin()) + 1;
}

void LogViewer::SearchText_Change() { look_again(); }

void LogViewer::SearchText_KeyDown(int& key_code) {
  DataGrid& grid = state_.DatabaseViewer.DBGrid1;
  if (key_code != down_arrow_code || grid.rows == 0) return;
  key_code = 0;
  if (grid.row < grid.rows) grid.select(grid.row + 1);
  grid.set_focus();
}

void LogViewer::SortList_Click() {
  // A column begins with its first value, the log with its newest call.
  const int column = column_of_order(state_.DatabaseViewer.SortList.list_index);
  sort_by({column, column == LogOrder::as_logged});
  look_again();
}

void LogViewer::SortDown_Click() {
  sort_by({order_.column, state_.DatabaseViewer.SortDown.value != 0});
  look_again();
}

void LogViewer::heading_clicked(int column) {
  const bool same = order_.column == column;
  if (same && order_.down) {
    sort_by({});
  } else {
    sort_by({column, same});
  }
  look_again();
}

void LogViewer::sort_by(LogOrder order) {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  order_ = order;
  form.SortList.list_index = order_of_column(order.column);
  form.SortDown.value = order.down ? 1 : 0;
  form.DBGrid1.sort_column = order.column;
  form.DBGrid1.sort_down = order.down;
}

void LogViewer::look_again() {
  if (!open()) return;
  DatabaseViewerForm& form = state_.DatabaseViewer;
  form.DBGrid1.show_other_rows(0);
  show_details();
  view_.begin(*recordset_, form.SearchText.text.get(), order_);
  more_to_follow_ = false;
  call_is_gone_ = false;
  // The first calls are there at once, unless the log is in use.
  form.WorkTimer.enabled = true;
  WorkTimer_Timer();
}

void LogViewer::WorkTimer_Timer() {
  if (!tried("DatabaseViewer_WorkTimer_Timer", [&] { work(); })) {
    state_.DatabaseViewer.WorkTimer.enabled = false;
  }
}

bool LogViewer::tried(std::string_view handler, const std::function<void()>& body) {
  bool again = true;
  attempt(body, [&](const Failure& failure) {
    // A log that is in use for now is looked at at the next tick. What else fails once would fail
    // again and again.
    again = failure.number() == failure_number::database_in_use;
    if (!again) report_failure(state_.trace, handler, failure);
  });
  return again;
}

void LogViewer::work() {
  const auto told = [this](const LogView::Change& change) { changed(change); };
  if (view_.working()) {
    view_.work(told);
  } else if (more_to_follow_) {
    more_to_follow_ = view_.follow(told);
  } else if (more_days_) {
    more_days_ = days_.read_on();
    if (!more_days_) show_details();
  }
  state_.DatabaseViewer.WorkTimer.enabled = view_.working() || more_to_follow_ || more_days_;
  select_first();
  show_counts();
}

void LogViewer::select_first() {
  DataGrid& grid = state_.DatabaseViewer.DBGrid1;
  if (grid.row == 0 && grid.rows > 0) grid.select(1);
}

void LogViewer::read_days_anew() {
  days_.begin(*recordset_);
  more_days_ = true;
}

void LogViewer::FollowTimer_Timer() {
  if (!tried("DatabaseViewer_FollowTimer_Timer", [&] { follow(); })) {
    state_.DatabaseViewer.FollowTimer.enabled = false;
  }
}

bool LogViewer::still_there() {
  if (!open() || !shows_chosen_log()) return false;
  const platform::FileStanding standing = database_->standing();
  return standing == platform::FileStanding::Same || standing == platform::FileStanding::Written;
}

bool LogViewer::shows_chosen_log() const {
  return state_.DatabaseViewer.Data1.database_name.get() ==
         state_.Lineweir.Data1.database_name.get();
}

void LogViewer::keep_up() {
  if (!state_.DatabaseViewer.loaded() || still_there()) return;
  // They have a connection of their own, which knows where they go.
  if (state_.ImportPreview.StoreTimer.enabled) return;
  const bool lost = open() && end_work() && shows_chosen_log();
  close_log();
  state_.DatabaseViewer.Data1.database_name = state_.Lineweir.Data1.database_name.get();
  show_log();
  if (lost) {
    state_.messages.ShowMessage(
        "The call log was moved, deleted or replaced by another file. Nothing was imported.");
  }
}

bool LogViewer::end_work() {
  if (on_closing) on_closing();
  if (!state_.ImportPreview.loaded()) return false;
  state_.ImportPreview.unload();
  return true;
}

void LogViewer::follow() {
  if (!still_there()) return keep_up();
  if (view_.working()) return;
  if (call_is_gone_) {
    read_days_anew();
    return look_again();
  }
  const std::int64_t stamp = database_->change_stamp();
  if (stamp == stamp_) return;
  recordset_->refresh();
  show_columns();
  // Removed, or the file was written over by other means.
  if (view_.newest() && !recordset_->row(*view_.newest())) {
    read_days_anew();
    look_again();
  } else {
    more_to_follow_ = true;
    more_days_ = true;
    work();
  }
  // Only now, so that what a log in use kept from being read is read at the next tick.
  stamp_ = stamp;
}

void LogViewer::changed(const LogView::Change& change) {
  DataGrid& grid = state_.DatabaseViewer.DBGrid1;
  if (change.all) {
    grid.show_other_rows(change.count);
  } else {
    grid.put_in(change.at + 1, change.count);
  }
}

std::vector<std::string> LogViewer::grid_row(int row) {
  std::vector<std::string> shown;
  if (row < 1 || row > view_.size()) return shown;
  guard(state_.trace, "DatabaseViewer_DBGrid1", [&] {
    shown = texts(view_.row(row - 1));
    if (shown.empty()) call_is_gone_ = true;
  });
  return shown;
}

void LogViewer::DBGrid1_SelChange() { show_details(); }

void LogViewer::show_details() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  const std::vector<std::string> call = grid_row(form.DBGrid1.row);
  for (int i = 0; i < form.DetailText.count(); ++i) {
    const auto at = static_cast<std::size_t>(i);
    const auto column =
        static_cast<std::size_t>(at < read_columns_.size() ? read_columns_[at].column : i);
    form.DetailText(i).caption = column < call.size() ? call[column] : std::string();
  }
  show_day(call);
}

void LogViewer::show_day(const std::vector<std::string>& call) {
  std::string text;
  if (!call.empty()) {
    const int place = require_log_columns(recordset_->fields()).of(CallerField::CallDate);
    const std::string& date = call.at(static_cast<std::size_t>(place));
    if (const auto day = days_.day(date)) {
      text = day_text(*day, date, state_.services.clock.now());
    }
  }
  state_.DatabaseViewer.DayLabel.caption = text;
}

void LogViewer::show_counts() {
  DatabaseViewerForm& form = state_.DatabaseViewer;
  const bool searching = !trimmed(form.SearchText.text).empty();
  form.CountLabel.caption = searching
                                ? grouped_number(view_.size()) + " of " + calls_text(view_.calls())
                                : calls_text(view_.calls());
  if (form.OutputTimer.enabled) return;
  form.WorkLabel.caption = !view_.working()  ? std::string()
                           : view_.sorting() ? std::string("Sorting")
                                             : (searching ? "Searching, " : "Reading, ") +
                                                   std::to_string(view_.percent()) + " %";
}

void LogViewer::ExitViewer_Click() { state_.DatabaseViewer.unload(); }

}  // namespace lineweir

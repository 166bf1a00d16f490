#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "callerdata/log_days.h"
#include "callerdata/log_view.h"
#include "elements/data_grid.h"
#include "platform/database.h"

namespace lineweir {

class CallLog;
struct ConsoleState;

// DatabaseViewer: which calls it shows. It reads the log by a connection of its own and follows
// what is logged, by this console and by others.
class LogViewer {
 public:
  LogViewer(ConsoleState& state, CallLog& call_log);

  // Told before the form lets its log go: what works on the calls must end.
  std::function<void()> on_closing;

  // Whether the form shows a log.
  bool open() const { return recordset_ != nullptr; }

  // The calls that are shown, by their rows, in their order.
  std::vector<platform::RowId> shown_rows() const;

  // The columns' names, UTF-8, and a call's texts without blanks behind; none for a call that has
  // been removed.
  std::vector<std::string> column_names() const;
  std::vector<std::string> texts(platform::RowId row);

  // Shows the log that is chosen, in the file that lies there now. What is under way with another
  // one ends, except for calls that are being stored.
  void keep_up();

  // Looks for the calls anew.
  void look_again();

  // The connection and the table in it, for whoever adds calls. Only while a log is open.
  platform::Database& database() { return *database_; }
  platform::Recordset& recordset() { return *recordset_; }

 private:
  void ShowDatabaseMenuItem_Click();
  void Form_Load();
  void Form_Unload();
  void SearchText_Change();
  void SearchText_KeyDown(int& key_code);
  void SortList_Click();
  void SortDown_Click();
  void DBGrid1_SelChange();
  void WorkTimer_Timer();
  void FollowTimer_Timer();
  void ExitViewer_Click();

  // Shows the log, or why it can't be shown.
  void show_log();
  void open_log();
  void close_log();
  // False where the body failed for longer than a moment.
  bool tried(std::string_view handler, const std::function<void()>& body);
  // Whether the log that is open is the chosen one and its file is there as it was.
  bool still_there();
  bool shows_chosen_log() const;
  // True when an import was being looked at.
  bool end_work();
  void show_columns();
  // The column of the table for the entry of SortList, and back.
  int column_of_order(int entry) const;
  int order_of_column(int column) const;
  void heading_clicked(int column);
  void sort_by(LogOrder order);
  void changed(const LogView::Change& change);
  std::vector<std::string> grid_row(int row);
  void select_first();
  void show_details();
  void show_day(const std::vector<std::string>& call);
  void show_counts();
  void read_days_anew();
  void work();
  void follow();

  ConsoleState& state_;
  CallLog& call_log_;
  std::unique_ptr<platform::Database> database_;
  std::unique_ptr<platform::Recordset> recordset_;
  LogView view_;
  LogOrder order_;
  std::vector<DataGridColumn> read_columns_;
  LogDays days_;
  bool more_days_ = false;
  std::int64_t stamp_ = 0;
  bool more_to_follow_ = false;
  // A call that is shown has been removed by another program.
  bool call_is_gone_ = false;
};

}  // namespace lineweir

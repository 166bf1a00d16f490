#include "forms/database_viewer_form.h"

namespace lineweir {

std::vector<int> log_grid_widths() {
  std::vector<int> widths;
  for (const CallLogColumn& column : call_log_columns) {
    widths.push_back(rule_of(column.field).log.grid_width);
  }
  return widths;
}

DatabaseViewerForm::DatabaseViewerForm() : Form("DatabaseViewer") {
  caption = "Call Log";
  width = 12600;
  height = 9600;
  SearchLabel.caption = "&Search";
  SortLabel.caption = "Sort &by";
  RawExport.caption = "Export &raw";
  SortDown.caption = "&Downwards";
  DBGrid1.column_widths = log_grid_widths();
  // The mouse can choose from the texts; the keyboard passes them by.
  DetailText(0).tab_stop = false;
  for (int i = 1; i < static_cast<int>(call_log_columns.size()); ++i) {
    DetailName.load(i).visible = true;
    DetailText.load(i).visible = true;
  }
  CancelWork.visible = false;
}

}  // namespace lineweir

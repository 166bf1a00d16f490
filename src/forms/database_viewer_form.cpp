#include "forms/database_viewer_form.h"

namespace lineweir {
namespace {

constexpr std::array<int, call_log_columns.size()> grid_widths = {
    1800, 1900, 1300, 700, 900, 1500, 3000, 900, 800, 1100, 1300, 1700, 1100, 1500};

}  // namespace

std::vector<int> log_grid_widths() { return {grid_widths.begin(), grid_widths.end()}; }

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

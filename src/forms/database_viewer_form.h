#pragma once

#include <string>
#include <vector>

#include "elements/button.h"
#include "elements/control_array.h"
#include "elements/data_grid.h"
#include "elements/data_source.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/list_box.h"
#include "elements/text_box.h"
#include "elements/timer.h"

namespace lineweir {

// DatabaseViewer, in which the call log is looked at, searched, put in order and given out.
class DatabaseViewerForm : public Form {
 public:
  DatabaseViewerForm();

  DataSource Data1{*this, "Data1"};

  Label SearchLabel{*this, "SearchLabel"};
  TextBox SearchText{*this, "SearchText"};
  Label SortLabel{*this, "SortLabel"};
  // Entry 0 is the order in which the calls were logged, the others are the log's columns, in
  // the order in which they are read.
  ComboBox SortList{*this, "SortList"};
  CheckBox SortDown{*this, "SortDown"};
  DataGrid DBGrid1{*this, "DBGrid1"};

  // All columns of the selected call, in the order in which they are read.
  ControlArray<Label> DetailName{*this, "DetailName"};
  ControlArray<Label> DetailText{*this, "DetailText"};

  // How many calls are shown, what the day of the selected one comes to, and what is being done.
  Label CountLabel{*this, "CountLabel"};
  Label DayLabel{*this, "DayLabel"};
  Label WorkLabel{*this, "WorkLabel"};
  Button CancelWork{*this, "CancelWork", "&Cancel"};

  // Exports texts as they are, also those that a spreadsheet takes for formulas.
  CheckBox RawExport{*this, "RawExport"};

  Button ImportButton{*this, "ImportButton", "&Import..."};
  Button ExportButton{*this, "ExportButton", "&Export..."};
  Button PrintButton{*this, "PrintButton", "&Print..."};
  Button ExitViewer{*this, "ExitViewer", "E&xit"};

  // Each tick does a slice of looking for calls, and of giving them out.
  Timer WorkTimer{*this, "WorkTimer", false, 1};
  Timer OutputTimer{*this, "OutputTimer", false, 1};
  // Looks for calls that have been logged since.
  Timer FollowTimer{*this, "FollowTimer", false, 500};

  // One name and one text for each column.
  void show_detail_names(const std::vector<std::string>& names);
};

}  // namespace lineweir

#pragma once

#include "elements/button.h"
#include "elements/data_grid.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/list_box.h"
#include "elements/timer.h"

namespace lineweir {

// ImportPreview: what a CSV file would add to the call log, before it does.
class ImportPreviewForm : public Form {
 public:
  ImportPreviewForm();

  Label FileLabel{*this, "FileLabel"};
  // The first calls of the file, as they would be stored.
  DataGrid PreviewGrid{*this, "PreviewGrid"};
  Label ProblemLabel{*this, "ProblemLabel"};
  // What doesn't fit and what the user should know, line by line.
  ListBox ProblemList{*this, "ProblemList"};
  Label ResultLabel{*this, "ResultLabel"};
  // Shown when the log holds calls of the file already.
  CheckBox HeldCheck{*this, "HeldCheck"};
  Button ImportOk{*this, "ImportOk", "&Import"};
  Button ImportCancel{*this, "ImportCancel", "&Cancel"};

  // Each tick reads on; those of the other look how far the storing is.
  Timer ReadTimer{*this, "ReadTimer", false, 1};
  Timer StoreTimer{*this, "StoreTimer", false, 50};
};

}  // namespace lineweir

#pragma once

#include "elements/button.h"
#include "elements/form.h"
#include "elements/grid.h"
#include "elements/label.h"
#include "elements/menu_item.h"
#include "elements/text_box.h"
#include "elements/timer.h"

namespace lineweir {

inline constexpr int plan_rows_per_grid = 20;

// The columns of the grids; row 0 has the headers.
inline constexpr int row_start_column = 0;
inline constexpr int row_end_column = 1;
inline constexpr int row_text_column = 2;

// The editor of the show's plan.
class ShowDataForm : public Form {
 public:
  ShowDataForm();

  MenuItem File{*this, "File"};
  MenuItem New{*this, File, "New", "&New"};
  MenuItem Open{*this, File, "Open", "&Open"};
  MenuItem SaveOption{*this, File, "SaveOption", "&Save"};
  MenuItem SaveAs{*this, File, "SaveAs", "Sa&ve As"};
  MenuItem FileSeparator{*this, File, "FileSeparator", "-"};
  MenuItem Bye{*this, File, "Bye", "E&xit"};
  MenuItem Edit{*this, "Edit"};
  MenuItem InsertRow{*this, Edit, "InsertRow", "&Insert Row"};
  MenuItem DeleteRow{*this, Edit, "DeleteRow", "&Delete Row"};

  Label Label1{*this, "Label1"};
  TextBox StartTime{*this, "StartTime"};
  Label Label2{*this, "Label2"};
  TextBox Text1{*this, "Text1"};
  // The times of the boxes as the clock tells them.
  Label StartShown{*this, "StartShown"};
  Label EndShown{*this, "EndShown"};
  Label Label3{*this, "Label3"};
  Label Label4{*this, "Label4"};
  Grid Grid1{*this, "Grid1", plan_rows_per_grid + 1, 3};
  Grid Grid2{*this, "Grid2", plan_rows_per_grid + 1, 3};
  // That something typed is past already, and the way to it.
  Label PastLabel{*this, "PastLabel"};
  Button PastRow{*this, "PastRow", "&Go to it"};
  Button Exit{*this, "Exit", "E&xit/Save"};
  Button CancelOption{*this, "CancelOption", "&Cancel"};

  // Looks whether what is typed has gone by meanwhile.
  Timer PastTimer{*this, "PastTimer", false, 1000};
};

}  // namespace lineweir

#include "forms/show_data_form.h"

namespace lineweir {
namespace {

constexpr int time_column_width = 1000;
constexpr int first_text_width = 2497;
constexpr int second_text_width = 2677;
constexpr const char* widest_time = "00:00:00 AM ";

}  // namespace

ShowDataForm::ShowDataForm() : Form("Form2") {
  caption = "Show Data";
  modal = true;
  File.caption = "&File";
  Edit.caption = "&Edit";
  Label1.caption = "Show Start";
  Label2.caption = "Show End";
  Label3.caption = "FileName:";
  PastRow.visible = false;
  InsertRow.enabled = false;
  DeleteRow.enabled = false;
  for (Grid* grid : {&Grid1, &Grid2}) {
    grid->centered = true;
    grid->first_typed_column = row_end_column;
    grid->shown_headings = {"From", "Until"};
    grid->widest_texts = {widest_time, widest_time, ""};
  }
  Grid1.column_widths = {time_column_width, time_column_width, first_text_width};
  Grid2.column_widths = {time_column_width, time_column_width, second_text_width};
}

}  // namespace lineweir

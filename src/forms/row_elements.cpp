#include "forms/row_elements.h"

#include <string>

#include "forms/picture_names.h"

namespace lineweir {
namespace {

std::vector<ControlArray<Label>> columns_of(Form& form) {
  std::vector<ControlArray<Label>> columns;
  for (const ColumnRule& rule : column_rules) columns.emplace_back(form, rule.element);
  return columns;
}

}  // namespace

RowElements::RowElements(Form& form)
    : CaptionLabel(form, "CaptionLabel"),
      Label9(form, "Label9"),
      Label10(form, "Label10"),
      DataRow(form, "DataRow"),
      DataRowImage(form, "DataRowImage"),
      columns(columns_of(form)),
      MyMark(form, "MyMark"),
      OnHybrid1(form, "OnHybrid1"),
      OnHybrid2(form, "OnHybrid2"),
      CIcon1(form, "CIcon1"),
      CIcon2(form, "CIcon2") {
  MyMark(0).visible = false;
  LineNumb(0).alignment = align_center;
  for (int column = 1; column < column_count; ++column) CaptionLabel.load(column);
  for (int column = 0; column < column_count; ++column) {
    const ColumnRule& rule = column_rules[static_cast<std::size_t>(column)];
    CaptionLabel(column).caption = rule.heading;
    column_labels(column)(0).font.bold = true;
  }
  CaptionLabel(number_column).alignment = align_center;
  show_idle(0);
}

ControlArray<Label>& RowElements::column_labels(int column) {
  if (column < 0 || column >= column_count) {
    throw Failure(failure_number::out_of_range, "Subscript out of range");
  }
  return columns[static_cast<std::size_t>(column)];
}

void RowElements::blank_row_controls(int line, int first) {
  for (int item = first; item <= column_count; ++item) RowControls(line, item).caption = "";
}

void RowElements::show_idle(int line) {
  DataRow(line).picture = pictures::DataRowWhite;
  DataRowImage(line).picture = pictures::DataRowWhite;
  LineNumb(line).caption = std::to_string(line + 1);
  blank_row_controls(line, 2);
  for (Picture* button : {&OnHybrid1(line), &OnHybrid2(line)}) {
    button->picture = button->enabled ? pictures::HybridNormUp : pictures::HybridDisabledNorm;
  }
  CIcon1(line).visible = false;
  CIcon2(line).visible = false;
}

void RowElements::load_row(int line) {
  DataRow.load(line);
  DataRowImage.load(line).set_container(&DataRow(line));
  for (int column = 0; column < column_count; ++column) column_labels(column).load(line);
  OnHybrid1.load(line);
  OnHybrid2.load(line);
  CIcon1.load(line);
  CIcon2.load(line);
}

void RowElements::unload_row(int line) {
  CIcon2.unload(line);
  CIcon1.unload(line);
  OnHybrid2.unload(line);
  OnHybrid1.unload(line);
  for (int column = 0; column < column_count; ++column) column_labels(column).unload(line);
  DataRowImage.unload(line);
  DataRow.unload(line);
}

}  // namespace lineweir

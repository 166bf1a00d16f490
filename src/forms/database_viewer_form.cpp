#include "forms/database_viewer_form.h"

#include "lines/caller_fields.h"

namespace lineweir {

DatabaseViewerForm::DatabaseViewerForm() : Form("DatabaseViewer") {
  caption = "Call Log";
  width = 16200;
  height = 9600;
  SearchLabel.caption = "&Search";
  SortLabel.caption = "Sort &by";
  RawExport.caption = "Export &raw";
  SortDown.caption = "&Downwards";
  // The mouse can choose from the texts; the keyboard passes them by.
  DetailText(0).tab_stop = false;
  show_detail_names(std::vector<std::string>(caller_fields.size()));
  CancelWork.visible = false;
}

void DatabaseViewerForm::show_detail_names(const std::vector<std::string>& names) {
  const int count = static_cast<int>(names.size());
  while (DetailName.count() > count) {
    DetailName.unload(DetailName.count() - 1);
    DetailText.unload(DetailText.count() - 1);
  }
  while (DetailName.count() < count) {
    DetailName.load(DetailName.count()).visible = true;
    DetailText.load(DetailText.count()).visible = true;
  }
  for (int i = 0; i < count; ++i) DetailName(i).caption = names[static_cast<std::size_t>(i)];
}

}  // namespace lineweir

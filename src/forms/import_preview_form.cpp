#include "forms/import_preview_form.h"

#include "forms/database_viewer_form.h"

namespace lineweir {

ImportPreviewForm::ImportPreviewForm() : Form("ImportPreview") {
  caption = "Import Calls";
  width = 12600;
  height = 8400;
  ProblemLabel.caption = "&Lines of the file";
  HeldCheck.caption = "Import &again what the log holds already";
  PreviewGrid.column_widths = log_grid_widths();
}

}  // namespace lineweir

#include "forms/import_preview_form.h"

namespace lineweir {

ImportPreviewForm::ImportPreviewForm() : Form("ImportPreview") {
  caption = "Import Calls";
  width = 12600;
  height = 8400;
  ProblemLabel.caption = "&Lines of the file";
  HeldCheck.caption = "Import &again what the log holds already";
}

}  // namespace lineweir

#include "forms/caller_flag_form.h"

namespace lineweir {

CallerFlagForm::CallerFlagForm() : Form("CallerFlagForm") {
  caption = "Caller Flag";
  width = 5700;
  height = 3200;
  NumberLabel.move(150, 120, 5400, 300);
  int left_edge = 150;
  for (OptionButton* choice : choices()) {
    choice->move(left_edge, 540, 1290, 315);
    left_edge += 1350;
  }
  ReasonLabel.caption = "R&eason";
  ReasonLabel.move(150, 1050, 1300, 300);
  ReasonText.move(1500, 1020, 4050, 315);
  UntilLabel.caption = "&Last day";
  UntilLabel.move(150, 1470, 1300, 300);
  UntilText.move(1500, 1440, 1800, 315);
  UntilText.hint = "No end";
  NoticeLabel.move(150, 1890, 5400, 500);
  NoticeLabel.fore_color = color_yellow;
  NoticeLabel.visible = false;
  OKButton.move(3000, 2550, 1215, 375);
  CancelButton.move(4335, 2550, 1215, 375);
}

void CallerFlagForm::show_notice(const std::string& text) {
  NoticeLabel.caption = text;
  NoticeLabel.visible = !text.empty();
}

}  // namespace lineweir

#include "practice/practice_forms.h"

#include "practice/practice_results.h"

namespace lineweir::practice {

LevelForm::LevelForm() : Form("PracticeLevel") {
  caption = "Practice Show";
  width = 7200;
  height = 3300;
  WhatLabel.caption =
      "You are the screener and the host of a show with simulated callers. Nothing of it reaches "
      "the "
      "real lines, log or settings.";
  for (std::size_t i = 0; i < levels.size(); ++i) choices()[i]->caption = levels[i].caption;
  EasyLevel.value = true;
}

std::size_t LevelForm::chosen() const {
  if (HardLevel.value) return 2;
  return NormalLevel.value ? 1 : 0;
}

ScoreForm::ScoreForm() : Form("PracticeScore") {
  caption = "Your Show";
  width = 7600;
  height = 4200;
  NowHeading.caption = "This time";
  BeforeHeading.caption = "Last time";
  for (ControlArray<Label>* column : {&RowName, &RowNow, &RowBefore, &RowVerdict}) {
    for (int row = 1; row < page_row_count; ++row) column->load(row).visible = true;
  }
}

BandForm::BandForm() : Form("PracticeBand") {}

}  // namespace lineweir::practice

#pragma once

#include <array>

#include "elements/button.h"
#include "elements/control_array.h"
#include "elements/form.h"
#include "elements/label.h"
#include "practice/practice_levels.h"

namespace lineweir::practice {

// Asks for the level before a practice show.
class LevelForm : public Form {
 public:
  LevelForm();

  Label WhatLabel{*this, "WhatLabel"};
  OptionButton EasyLevel{*this, "EasyLevel"};
  OptionButton NormalLevel{*this, "NormalLevel"};
  OptionButton HardLevel{*this, "HardLevel"};
  Label LastLabel{*this, "LastLabel"};
  Button StartButton{*this, "StartButton", "&Start"};
  Button CancelButton{*this, "CancelButton", "&Cancel"};

  // In the order of the table of levels.
  std::array<OptionButton*, level_count> choices() {
    return {&EasyLevel, &NormalLevel, &HardLevel};
  }
  std::size_t chosen() const;
};

// What a practice show came to, beside the last one of its level.
class ScoreForm : public Form {
 public:
  ScoreForm();

  Label ShowLabel{*this, "ShowLabel"};
  Label NowHeading{*this, "NowHeading"};
  Label BeforeHeading{*this, "BeforeHeading"};
  ControlArray<Label> RowName{*this, "RowName"};
  ControlArray<Label> RowNow{*this, "RowNow"};
  ControlArray<Label> RowBefore{*this, "RowBefore"};
  ControlArray<Label> RowVerdict{*this, "RowVerdict"};
  Button AgainButton{*this, "AgainButton", "&Practise Again"};
  Button CloseButton{*this, "CloseButton", "&Close"};
};

// The band across the main window, which stands there as long as the console is one for practice.
class BandForm : public Form {
 public:
  BandForm();

  Label ShowLabel{*this, "ShowLabel"};
  Label WordsLabel{*this, "WordsLabel"};
  Button RoleButton{*this, "RoleButton"};
  Button ShowButton{*this, "ShowButton"};
};

}  // namespace lineweir::practice

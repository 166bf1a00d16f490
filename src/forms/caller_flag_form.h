#pragma once

#include <array>

#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/text_box.h"

namespace lineweir {

// CallerFlagForm, in which a caller is flagged for all seats and shows.
class CallerFlagForm : public Form {
 public:
  CallerFlagForm();

  // Whose flag it is.
  Label NumberLabel{*this, "NumberLabel"};
  OptionButton NoFlag{*this, "NoFlag", "&None"};
  OptionButton RegularFlag{*this, "RegularFlag", "&Regular"};
  OptionButton CarefulFlag{*this, "CarefulFlag", "&Careful"};
  OptionButton BarredFlag{*this, "BarredFlag", "&Barred"};
  Label ReasonLabel{*this, "ReasonLabel"};
  TextBox ReasonText{*this, "ReasonText"};
  Label UntilLabel{*this, "UntilLabel"};
  TextBox UntilText{*this, "UntilText"};
  // Why the flag isn't set.
  Label NoticeLabel{*this, "NoticeLabel"};
  Button OKButton{*this, "OKButton", "&OK"};
  Button CancelButton{*this, "CancelButton", "C&ancel"};

  // By the flags' values.
  std::array<OptionButton*, 4> choices() {
    return {&NoFlag, &RegularFlag, &CarefulFlag, &BarredFlag};
  }

  // The empty text shows nothing.
  void show_notice(const std::string& text);
};

}  // namespace lineweir

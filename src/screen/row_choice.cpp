#include "screen/row_choice.h"

#include "screen/display_options.h"
#include "screen/row_display.h"
#include "screen/row_layout.h"
#include "screen/screen_layout.h"
#include "screen/visible_rows.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {

RowChoice::RowChoice(ConsoleState& state, const VisibleRows& visible_rows, RowDisplay& rows,
                     DisplayOptions& display, ScreenLayout& layout)
    : state_(state), visible_rows_(visible_rows), rows_(rows), display_(display), layout_(layout) {
  state.DisplayOptionForm.LineCheck.wire_each([this](CheckBox& box) {
    wire(box.on_click, state_.trace, "DisplayOptionForm_linecheck_Click",
         [this, index = box.index()] { linecheck_Click(index); });
  });
}

void RowChoice::RefreshVisibleRows() {
  guard(state_.trace, "TextWrit_RefreshVisibleRows", [&] {
    if (visible_rows_.count() != state_.program.VisibleLines) return layout_.RedefineScreen();
    lay_out_rows(state_, visible_rows_, rows_);
    lay_out_columns(state_, visible_rows_, display_);
    rows_.DrawMark();
  });
}

void RowChoice::linecheck_Click(int Index) {
  if (Index >= state_.lines.LineCount) return;
  const ColumnsLock lock(display_);
  RefreshVisibleRows();
}

}  // namespace lineweir

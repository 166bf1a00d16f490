#include "driver/screen_functions.h"

#include <algorithm>
#include <iterator>

#include "screen/line_names.h"
#include "screen/row_layout.h"

namespace lineweir::driver {
namespace {

std::vector<Function> row_functions() {
  return {
      function("HybridPictureSet",
               [](Console& c, int line, int color1, int color2) {
                 c.rows.HybridPictureSet(line, color1, color2);
               }),
      function("DrawMark", [](Console& c) { c.rows.DrawMark(); }),
      function("DrawMark", [](Console& c, int line) { c.rows.DrawMark(line); }),
      function("SetCiconPosition1", [](Console& c, int line) { c.rows.SetCiconPosition1(line); }),
      function("SetCiconPosition2", [](Console& c, int line) { c.rows.SetCiconPosition2(line); }),
      function("RefreshVisibleRows", [](Console& c) { c.row_choice.RefreshVisibleRows(); }),
      function("TextWrit_RefreshVisibleRows",
               [](Console& c) { c.row_choice.RefreshVisibleRows(); }),
      function("DisplayOptionForm_RedefineDisplaySreen",
               [](Console& c) { c.visible_rows.RedefineDisplaySreen(); }),
      function("Load20", [](Console& c) { c.layout.load_rows(); }),
  };
}

std::vector<Function> layout_functions() {
  return {
      function("RedefineScreen", [](Console& c) { c.layout.RedefineScreen(); }),
      function("GetRootWidth", [](Console& c) { return root_width(c.program.VisibleLines); }),
      function("GetRootHeigt",
               [](Console& c) {
                 return root_height(c.program.VisibleLines, c.Lineweir.Options.visible);
               }),
      function("SetToRoot", [](Console& c, int rows) { c.window.SetToRoot(rows); }),
      function("CheckTopSize", [](Console& c) { c.faces.CheckTopSize(); }),
      function("SetPictureAutoOn", [](Console& c) { c.faces.SetPictureAutoOn(); }),
      function("SetPictureAutoOff", [](Console& c) { c.faces.SetPictureAutoOff(); }),
      function("SetLabels", [](Console& c) { c.layout.SetLabels(); }),
      function("SetEnabledDisabled", [](Console& c) { c.modes.SetEnabledDisabled(); }),
      function("FontChange",
               [](Console& c, const std::string& name, bool bold, int size, bool italic) {
                 c.fonts.FontChange({name, size, bold, italic});
               }),
  };
}

std::vector<Function> column_functions() {
  return {
      function("NewColumnSetup", [](Console& c) { c.display.NewColumnSetup(); }),
      function("SetDisplayOptions", [](Console& c) { c.display.SetDisplayOptions(); }),
      function("RefreshColumnOrder", [](Console& c) { c.display.RefreshColumnOrder(); }),
      function("TextWrit_RefreshColumnOrder", [](Console& c) { c.display.RefreshColumnOrder(); }),
      function("SetFieldWidths", [](Console& c) { SetFieldWidths(c); }),
      function("FindLongestName",
               [](Console&, const std::string& names) { return FindLongestName(names); }),
      function("UserRename", [](Console& c) { c.DisplayOptionForm.UserRename.on_click(); }),
      function("DisplayOptionForm_UserRename",
               [](Console& c) { c.DisplayOptionForm.UserRename.on_click(); }),
  };
}

}  // namespace

void append_screen_functions(std::vector<Function>& functions) {
  for (auto table : {row_functions(), layout_functions(), column_functions()}) {
    std::ranges::move(table, std::back_inserter(functions));
  }
}

}  // namespace lineweir::driver

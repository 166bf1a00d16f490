#include "screen/screen_faces.h"

#include <algorithm>

#include "forms/picture_names.h"
#include "screen/background_files.h"
#include "screen/visible_rows.h"
#include "state/console_state.h"
#include "state/design_scale.h"

namespace lineweir {
namespace {

struct Holder {
  Picture BackgroundElements::*picture;
  ScreenPart part;
  ScreenFace face;
};

constexpr std::array holders = {
    Holder{&BackgroundElements::BlackScreenTop, ScreenPart::Top, ScreenFace::Metal},
    Holder{&BackgroundElements::GreyScreenTop, ScreenPart::Top, ScreenFace::Grey},
    Holder{&BackgroundElements::BlackScreenBottom, ScreenPart::Bottom, ScreenFace::Metal},
    Holder{&BackgroundElements::GreyScreenBottom, ScreenPart::Bottom, ScreenFace::Grey},
};

void fill_holders(MainForm& form, int visible_lines) {
  for (const Holder& holder : holders) {
    (form.*holder.picture).picture = background_file(holder.part, holder.face, visible_lines);
  }
}

}  // namespace

ScreenFaces::ScreenFaces(ConsoleState& state, VisibleRows& visible_rows)
    : FormWatch(state.Lineweir), state_(state), visible_rows_(visible_rows) {
  fill_holders(state.Lineweir, PreviousVisibleLines);
}

void ScreenFaces::load_pictures() {
  if (PreviousVisibleLines == state_.program.VisibleLines) return;
  PreviousVisibleLines = state_.program.VisibleLines;
  fill_holders(state_.Lineweir, PreviousVisibleLines);
}

void ScreenFaces::show_pictures() {
  MainForm& form = state_.Lineweir;
  const bool grey = form.GreyScreenOption.checked;
  form.ScreenTopImage.picture = grey ? pictures::GreyScreenTop : pictures::BlackScreenTop;
  form.ScreenBottomImage.picture = grey ? pictures::GreyScreenBottom : pictures::BlackScreenBottom;
  form.LowCover.picture = grey ? pictures::LowCoverGrey : pictures::LowCoverMetal;
}

void ScreenFaces::lay_out(const DesignScale& scale) {
  MainForm& form = state_.Lineweir;
  const int visible = state_.program.VisibleLines;
  form.ScreenTop.move(0, 0, form.width, scale.down(layout_range(visible).first_row_top));

  const int panel = scale.down(panel_top(visible));
  const int bar = form.Options.visible ? menu_bar_height : 0;
  form.ScreenBottom.move(0, panel, form.width, std::max(0, form.height - bar - panel));

  const auto cover = low_cover_place(visible);
  form.LowCover.visible = cover.has_value();
  if (!cover) return;
  const Place at = scale.of(*cover);
  form.LowCover.move(at.left, at.top, at.width, at.height);
}

void ScreenFaces::CheckTopSize() {
  MainForm& form = state_.Lineweir;
  const int first = visible_rows_.first_line();
  bool overlaps = false;
  if (first != no_line) {
    Picture& row = form.DataRow(first);
    const int overlap = form.ScreenTop.height - row.top;
    overlaps = overlap > 0;
    if (overlaps) row.height = std::max(0, row.height - overlap);
    form.ScreenTop.top = row.top - form.ScreenTop.height;
  }
  form.ScreenTopImage.visible = !overlaps;
}

void ScreenFaces::SetPictureAutoOn() { show_covers(false); }

void ScreenFaces::SetPictureAutoOff() { show_covers(true); }

void ScreenFaces::show_covers(bool shown) {
  MainForm& form = state_.Lineweir;
  form.ScreenTopImage.visible = shown;
  form.ScreenBottomImage.visible = shown;
  for (const PanelButton& laid : form.panel_buttons()) laid.image.visible = shown;
  for (int line = 0; line < form.DataRow.upper_bound(); ++line) {
    form.DataRowImage(line).visible = shown && form.DataRow(line).visible;
  }
}

void ScreenFaces::changed(Element& element, PropertyId property) {
  if (property != PropertyId::Width && property != PropertyId::Height) return;
  MainForm& form = state_.Lineweir;
  const bool top = &element == &form.ScreenTop;
  if (!top && &element != &form.ScreenBottom) return;
  const Picture& box = top ? form.ScreenTop : form.ScreenBottom;
  Picture& image = top ? form.ScreenTopImage : form.ScreenBottomImage;
  image.move(0, 0, box.width, box.height);
  form.ZorderTimer.enabled = true;
}

}  // namespace lineweir

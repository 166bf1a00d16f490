#include "screen/panel_layout.h"

#include <algorithm>
#include <span>
#include <vector>

#include "forms/main_form.h"
#include "screen/control_place.h"
#include "state/design_scale.h"

namespace lineweir {
namespace {

constexpr int small_button = 375;
constexpr int large_button_width = 750;
constexpr int drop_top = 105;
constexpr int hold_top = 510;

constexpr Place digits_time = {570, 950, 3470, 560};
constexpr Place digits_count = {570, 1530, 3470, 560};
constexpr Place digits_status = {570, 2110, 3470, 560};

constexpr Place clock_caption_on_form = {10260, 60, 1695, 225};
constexpr Place clock_caption_on_panel = {570, 2720, 3470, 255};

std::size_t letters_of(std::span<Label* const> labels) {
  std::size_t letters = 0;
  for (const Label* label : labels) letters += label->caption.get().size();
  return letters;
}

// How many of the notes stand on the upper of two lines, so that neither is much fuller.
std::size_t notes_of_upper_line(std::span<Label* const> notes) {
  std::size_t best = notes.size();
  std::size_t fullest = letters_of(notes);
  for (std::size_t upper = 1; upper < notes.size(); ++upper) {
    const std::size_t fuller =
        std::max(letters_of(notes.first(upper)), letters_of(notes.subspan(upper)));
    if (fuller >= fullest) continue;
    best = upper;
    fullest = fuller;
  }
  return best;
}

}  // namespace

void lay_out_panel(MainForm& form, int visible_lines, const DesignScale& scale) {
  const LayoutRange& range = layout_range(visible_lines);
  lay_out_drop_buttons(form, visible_lines, scale);

  Control* const buttons_parent = range.buttons_on_form ? nullptr : &form.ScreenBottom;
  for (Picture* button : {&form.NextButton, &form.NextToConfButton, &form.Dial}) {
    button->set_container(buttons_parent);
  }
  place(form.NextButton, scale.of(range.next_button));
  place(form.NextToConfButton, scale.of(range.next_to_conf_button));
  place(form.Dial, scale.of(range.dial));
  place(form.OptionsButton, scale.of(range.options_button));

  place(form.Label1, scale.of(link_label_place(visible_lines)));
  place(form.Text1, scale.of(message_place(visible_lines)));
  place(form.Text2, scale.of(message_place(visible_lines)));
  lay_out_band(form, visible_lines, scale);
  form.Shape1.set_container(range.lamp_on_form ? nullptr : &form.ScreenBottom);
  place(form.Shape1, scale.of(range.lamp));
}

void lay_out_band(MainForm& form, int visible_lines, const DesignScale& scale) {
  std::vector<Label*> notes;
  std::vector<Label*> notices;
  for (Label* notice : {&form.ServerSilence, &form.LogWaiting}) {
    if (notice->visible) notices.push_back(notice);
  }
  for (int note = 0; note < most_caller_notes; ++note) {
    if (form.CallerNote(note).visible) notes.push_back(&form.CallerNote(note));
  }
  const auto fill = [&](int band_line, std::span<Label* const> labels) {
    std::vector<std::size_t> lengths;
    for (const Label* label : labels) lengths.push_back(label->caption.get().size());
    const std::vector<Place> places = parted(band_line_place(visible_lines, band_line), lengths);
    for (std::size_t i = 0; i < labels.size(); ++i) place(*labels[i], scale.of(places[i]));
  };
  if (notes.size() == 1 && notices.empty()) {
    return place(*notes.front(), scale.of(band_place(visible_lines)));
  }
  const std::size_t upper = notices.empty() ? notes_of_upper_line(notes) : notes.size();
  fill(0, std::span(notes).first(upper));
  fill(1, notices.empty() ? std::span(notes).subspan(upper) : std::span(notices));
}

void lay_out_drop_buttons(MainForm& form, int visible_lines, const DesignScale& scale) {
  const LayoutRange& range = layout_range(visible_lines);
  const int panel = panel_top(visible_lines);
  const int first_width = form.ScreenerMode.checked ? large_button_width : small_button;
  const auto button = [&](Picture& picture, int left, int top, int width) {
    place(picture, scale.of({left, panel + top, width, small_button}));
  };
  button(form.Drop1, range.drop_left, drop_top, first_width);
  button(form.Hold1, range.drop_left, hold_top, first_width);
  button(form.Drop2, range.second_drop_left, drop_top, small_button);
  button(form.Hold2, range.second_drop_left, hold_top, small_button);
}

void lay_out_clocks(MainForm& form, int visible_lines, const DesignScale& scale) {
  const LayoutRange& range = layout_range(visible_lines);
  Control* const parent = range.clocks_on_form ? nullptr : &form.ScreenBottom;
  form.picRealTimeClock.set_container(parent);
  form.picShowTimeClock.set_container(parent);
  place(form.picRealTimeClock, scale.of(range.time_clock));
  place(form.picShowTimeClock, scale.of(range.show_clock));
  place(form.RealTime2, scale.of(digits_time));
  place(form.CountDownTime2, scale.of(digits_count));
  place(form.StatusText2, scale.of(digits_status));

  Place caption = range.clocks_on_form ? clock_caption_on_form : clock_caption_on_panel;
  if (!range.clocks_on_form) caption.top += panel_top(visible_lines);
  place(form.lblTime, scale.of(caption));
}

}  // namespace lineweir

#include "screen/panel_layout.h"

#include "forms/main_form.h"
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

void place(Control& control, const Place& at) {
  control.move(at.left, at.top, at.width, at.height);
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
  place(form.LogWaiting, scale.of(log_waiting_place(visible_lines)));
  place(form.ServerSilence, scale.of(server_silence_place(visible_lines)));
  form.Shape1.set_container(range.lamp_on_form ? nullptr : &form.ScreenBottom);
  place(form.Shape1, scale.of(range.lamp));
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

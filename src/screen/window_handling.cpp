#include "screen/window_handling.h"

#include "forms/layout.h"
#include "forms/picture_names.h"
#include "screen/display_options.h"
#include "screen/fonts.h"
#include "screen/screen_layout.h"
#include "screen/window_size.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

WindowHandling::WindowHandling(ConsoleState& state, WindowSize& window, DisplayOptions& display,
                               ScreenLayout& layout, Fonts& fonts)
    : state_(state), window_(window), display_(display), layout_(layout), fonts_(fonts) {
  MainForm& form = state.Lineweir;
  wire(form.on_resize, state_.trace, "Lineweir_Form_Resize",
       [&form] { form.timResize.enabled = true; });
  wire(form.timResize.on_timer, state_.trace, "Lineweir_timResize_Timer",
       [this] { timResize_Timer(); });
  wire(form.ResetLineweirSize.on_click, state_.trace, "Lineweir_ResetLineweirSize_Click",
       [this] { ResetLineweirSize_Click(); });
  wire(form.OptionsButton.on_click, state_.trace, "Lineweir_OptionsButton_Click",
       [this] { OptionsButton_Click(); });
}

void WindowHandling::ResetLineweirSize_Click() {
  MainForm& form = state_.Lineweir;
  form.window_state = window_normal;
  form.hide();
  state_.Standby.show();
  window_.SetToRoot(0);
  layout_.RedefineScreen();
  fonts_.FontChange(fonts_.present());
  form.show();
  state_.Standby.hide();
}

void WindowHandling::OptionsButton_Click() {
  MainForm& form = state_.Lineweir;
  const bool show = !form.Options.visible;
  for (MenuItem* menu : {&form.Options, &form.Port, &form.RemotePort, &form.TimeClockMenu2,
                         &form.ConfigurationMenuItem}) {
    menu->visible = show;
  }
  form.OptionsButton.picture = show ? pictures::SetupDown : pictures::SetupUp;
  if (form.window_state == window_normal) {
    form.height = form.height + (show ? menu_bar_height : -menu_bar_height);
  }
}

void WindowHandling::timResize_Timer() {
  MainForm& form = state_.Lineweir;
  form.timResize.enabled = false;
  if (form.window_state == window_minimised) return;
  layout_.RedefineScreen();
  if (!state_.DisplayOptionForm.visible) display_.fill_width_boxes();
}

}  // namespace lineweir

#include "screen/window_size.h"

#include <algorithm>
#include <cstdint>

#include "core/console.h"
#include "core/guard.h"
#include "screen/layout.h"
#include "screen/pictures.h"

namespace lineweir {

WindowSize::WindowSize(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
  form.on_resize = [&form] { form.timResize.enabled = true; };
  form.timResize.on_timer = [this] { timResize_Timer(); };
  form.ResetLineweirSize.on_click = [this] { ResetLineweirSize_Click(); };
  form.OptionsButton.on_click = [this] { OptionsButton_Click(); };
}

WindowTarget WindowSize::present() const {
  const MainForm& form = console_.Lineweir;
  const int bar = form.Options.visible ? menu_bar_height : 0;
  return {std::min(form.height - bar, static_cast<int>(INT16_MAX)),
          std::min(form.width.get(), static_cast<int>(INT16_MAX)), form.window_state};
}

void WindowSize::restore(const WindowTarget& stored) {
  target = stored;
  if (stored.state < window_normal || stored.state > window_maximised) {
    target->state = window_normal;
  }
  if (console_.Lineweir.Options.visible) target->height += menu_bar_height;
}

void WindowSize::give_target_size() {
  if (!target || RestartingSocket) return;
  // A record that ends before its window fields holds no size.
  if (target->height <= menu_bar_height || target->width <= 0) return;
  console_.Lineweir.height = target->height;
  console_.Lineweir.width = target->width;
}

void WindowSize::give_target_state() {
  if (target && !RestartingSocket) console_.Lineweir.window_state = target->state;
  target.reset();
  RestartingSocket = false;
}

void WindowSize::SetToRoot(int rows) {
  MainForm& form = console_.Lineweir;
  const int visible = rows == 0 ? console_.program.VisibleLines : rows;
  form.window_state = window_normal;
  form.width = root_width(visible);
  form.height = reset_height(visible, form.Options.visible);
}

void WindowSize::ResetLineweirSize_Click() {
  guard(console_, "Lineweir_ResetLineweirSize_Click", [&] {
    MainForm& form = console_.Lineweir;
    form.window_state = window_normal;
    form.hide();
    console_.Standby.show();
    SetToRoot(0);
    console_.layout.RedefineScreen();
    console_.fonts.FontChange(console_.fonts.present());
    form.show();
    console_.Standby.hide();
  });
}

void WindowSize::OptionsButton_Click() {
  guard(console_, "Lineweir_OptionsButton_Click", [&] {
    MainForm& form = console_.Lineweir;
    const bool show = !form.Options.visible;
    for (MenuItem* menu : {&form.Options, &form.Port, &form.RemotePort, &form.TimeClockMenu2,
                           &form.ConfigurationMenuItem}) {
      menu->visible = show;
    }
    form.OptionsButton.picture = show ? pictures::SetupDown : pictures::SetupUp;
    if (form.window_state == window_normal) {
      form.height = form.height + (show ? menu_bar_height : -menu_bar_height);
    }
  });
}

void WindowSize::timResize_Timer() {
  guard(console_, "Lineweir_timResize_Timer", [&] {
    MainForm& form = console_.Lineweir;
    form.timResize.enabled = false;
    if (form.window_state == window_minimised) return;
    console_.layout.RedefineScreen();
    if (!console_.DisplayOptionForm.visible) console_.display.fill_width_boxes();
  });
}

}  // namespace lineweir

#include "screen/window_size.h"

#include <algorithm>
#include <cstdint>

#include "forms/layout.h"
#include "state/console_state.h"

namespace lineweir {

WindowTarget WindowSize::present() const {
  const MainForm& form = state_.Lineweir;
  const int bar = form.Options.visible ? menu_bar_height : 0;
  return {std::min(form.height - bar, static_cast<int>(INT16_MAX)),
          std::min(form.width.get(), static_cast<int>(INT16_MAX)), form.window_state};
}

WindowTarget WindowSize::on_screen(const WindowTarget& stored) const {
  WindowTarget shown = stored;
  if (stored.state < window_normal || stored.state > window_maximised) shown.state = window_normal;
  if (state_.Lineweir.Options.visible) shown.height += menu_bar_height;
  return shown;
}

void WindowSize::restore(const WindowTarget& stored) { target = on_screen(stored); }

void WindowSize::give_target_size() {
  if (!target || RestartingSocket) return;
  // A record that ends before its window fields holds no size.
  if (target->height <= menu_bar_height || target->width <= 0) return;
  state_.Lineweir.height = target->height;
  state_.Lineweir.width = target->width;
}

void WindowSize::give_target_state() {
  if (target && !RestartingSocket) state_.Lineweir.window_state = target->state;
  target.reset();
  RestartingSocket = false;
}

void WindowSize::SetToRoot(int rows) {
  MainForm& form = state_.Lineweir;
  const int visible = rows == 0 ? state_.program.VisibleLines : rows;
  form.window_state = window_normal;
  form.width = root_width(visible);
  form.height = reset_height(visible, form.Options.visible);
}

}  // namespace lineweir

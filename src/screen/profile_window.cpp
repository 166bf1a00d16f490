#include "screen/profile_window.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "screen/window_size.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// Twips. A window that differs by less in both directions stays as it is.
constexpr int least_difference = 50;
// A smaller window couldn't be used.
constexpr int smallest_side = 1500;

int usable_side(int side) { return std::clamp<int>(side, smallest_side, INT16_MAX); }

bool are_near(int side, int other) { return std::abs(side - other) < least_difference; }

}  // namespace

ProfileWindow::ProfileWindow(ConsoleState& state, const WindowSize& window)
    : state_(state), window_(window) {
  wire(state.Lineweir.SetStateTimer.on_timer, state_.trace, "Lineweir_SetStateTimer_Timer",
       [this] { SetStateTimer_Timer(); });
}

void ProfileWindow::take(std::optional<int> height, std::optional<int> width,
                         std::optional<int> window_state, int group) {
  const WindowTarget present = window_.present();
  const WindowTarget wanted =
      window_.on_screen({height.value_or(present.height), width.value_or(present.width),
                         window_state.value_or(present.state)});
  if (state_.Lineweir.visible) return apply(wanted, group);
  SetStateTo = wanted.state;
  SetStateToHeight = wanted.height;
  SetStateToWidth = wanted.width;
  SetStateMessGroup = group;
  state_.Lineweir.SetStateTimer.enabled = true;
}

void ProfileWindow::SetStateTimer_Timer() {
  if (!state_.Lineweir.visible) return;
  state_.Lineweir.SetStateTimer.enabled = false;
  apply({SetStateToHeight, SetStateToWidth, SetStateTo}, SetStateMessGroup);
}

void ProfileWindow::apply(const WindowTarget& wanted, int group) {
  MainForm& form = state_.Lineweir;
  form.window_state = wanted.state;
  if (state_.program.GroupNumber != group || form.window_state != window_normal) return;
  const int height = usable_side(wanted.height);
  const int width = usable_side(wanted.width);
  if (are_near(height, form.height) && are_near(width, form.width)) return;
  form.height = height;
  form.width = width;
  // What stands on the form follows, as it does when the user gives the window another size.
  form.on_resize();
}

}  // namespace lineweir

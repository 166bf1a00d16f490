#include "serverlink/rights_table.h"

#include <array>

#include "base/failure.h"
#include "callcontrol/modes.h"
#include "state/console_state.h"
#include "wire/rights_layout.h"

namespace lineweir {
namespace {

using Apply = void (*)(ConsoleState& state, bool allowed);

struct RightEffect {
  Right right;
  Apply apply;
};

template <auto item>
void enable(ConsoleState& state, bool allowed) {
  auto& element = state.Lineweir.*item;
  element.enabled = allowed;
  element.withheld = !allowed;
}

void force_passive(ConsoleState& state, bool wanted, bool on) {
  const MenuItem& passive = state.Lineweir.PassiveMode;
  // The click turns it over.
  if (wanted && passive.checked.get() != on) passive.on_click();
}

void force_passive_off(ConsoleState& state, bool wanted) { force_passive(state, wanted, false); }
void force_passive_on(ConsoleState& state, bool wanted) { force_passive(state, wanted, true); }

void allow_caller_data(ConsoleState& state, bool allowed) {
  state.program.CallerDataAllowed = allowed;
  if (allowed) return;
  state.Lineweir.AutoDataEntry.enabled = false;
  state.Lineweir.AutoDataEntry.checked = false;
}

void allow_caller_flag(ConsoleState& state, bool allowed) {
  state.program.CallerFlagAllowed = allowed;
}

void allow_messages(ConsoleState& state, bool allowed) { state.program.MessagesAllowed = allowed; }

// The key itself goes by mode and equipment as well.
void allow_remote_next(ConsoleState& state, bool allowed) {
  state.program.RemoteNextAllowed = allowed;
}

constexpr auto effects = [] {
  using F = MainForm;
  using enum Right;
  return std::to_array<RightEffect>({
      {AboutLineweir, enable<&F::AboutLineweir>},
      {SaveSettingsMenu, enable<&F::SaveSettingsMenu>},
      {DatabasePathMenuItem, enable<&F::DatabasePathMenuItem>},
      {ShowData, enable<&F::ShowData>},
      {ShowDatabaseMenuItem, enable<&F::ShowDatabaseMenuItem>},
      {GreyScreenOption, enable<&F::GreyScreenOption>},
      {FontMenuItem, enable<&F::FontMenuItem>},
      {ExitMenu, enable<&F::ExitMenu>},
      {Com1, enable<&F::Com1>},
      {Com2, enable<&F::Com2>},
      {Com3, enable<&F::Com3>},
      {Com4, enable<&F::Com4>},
      {NetworkConnectionOption, enable<&F::NetworkConnectionOption>},
      {WinsockMenu, enable<&F::WinsockMenu>},
      {PortOn, enable<&F::PortOn>},
      {Off, enable<&F::Off>},
      {RemoteCom1, enable<&F::RemoteCom1>},
      {RemoteCom2, enable<&F::RemoteCom2>},
      {RemoteCom3, enable<&F::RemoteCom3>},
      {RemoteCom4, enable<&F::RemoteCom4>},
      {RemoteOn, enable<&F::RemoteOn>},
      {RemoteOff, enable<&F::RemoteOff>},
      {Line20Mode, enable<&F::Line20Mode>},
      {LogDataOptionsMenu, enable<&F::LogDataOptionsMenu>},
      {DisplayDataOptionsMenu, enable<&F::DisplayDataOptionsMenu>},
      {AutoDataEntry, enable<&F::AutoDataEntry>},
      {PassiveMode, enable<&F::PassiveMode>},
      {ForcePassiveOff, force_passive_off},
      {ForcePassiveOn, force_passive_on},
      {ModeMenuItem, enable<&F::ModeMenuItem>},
      {StudioMode, enable<&F::StudioMode>},
      {ScreenerMode, enable<&F::ScreenerMode>},
      {MitelOption, enable<&F::MitelOption>},
      {MitelPhone1, enable<&F::MitelPhone1>},
      {MitelPhone2, enable<&F::MitelPhone2>},
      {RemoteNext, allow_remote_next},
      {NextBarDisable, enable<&F::NextBarDisable>},
      {DimLineNumMenu, enable<&F::DimLineNumMenu>},
      {StudioLinNumMenu, enable<&F::StudioLinNumMenu>},
      {CallerDataAllowed, allow_caller_data},
      {MessagesAllowed, allow_messages},
      {OptionsButton, enable<&F::OptionsButton>},
      {Dial, enable<&F::Dial>},
      {CallerFlagAllowed, allow_caller_flag},
  });
}();
static_assert(effects.size() == rights_layout.size());

}  // namespace

void apply_rights(ConsoleState& state, Modes& modes) {
  // The rights may change with what the steps run.
  const std::string held = state.login.UserRights;
  for (const RightEffect& effect : effects) {
    const RightPlace& place = rights_layout[static_cast<std::size_t>(effect.right)];
    if (place.character > held.size()) {
      throw Failure(failure_number::invalid_argument, "Invalid procedure call or argument");
    }
    effect.apply(state, allows(held, effect.right));
  }
  modes.settle_rights();
}

}  // namespace lineweir

#include "serverlink/rights_table.h"

#include <array>

#include "base/bits.h"
#include "base/failure.h"
#include "callcontrol/modes.h"
#include "state/console_state.h"

namespace lineweir {
namespace {

using Apply = void (*)(ConsoleState& state, bool allowed);

struct Right {
  // Both from 1; bit 1 is the least significant.
  std::size_t character;
  int bit;
  Apply apply;
};

template <auto item>
void enable(ConsoleState& state, bool allowed) {
  auto& element = state.Lineweir.*item;
  element.enabled = allowed;
  element.withheld = !allowed;
}

void force_passive(ConsoleState& state, bool wanted, bool on) {
  if (!wanted) return;
  MenuItem& passive = state.Lineweir.PassiveMode;
  // The click turns it over.
  passive.checked = !on;
  passive.on_click();
}

void force_passive_off(ConsoleState& state, bool wanted) { force_passive(state, wanted, false); }
void force_passive_on(ConsoleState& state, bool wanted) { force_passive(state, wanted, true); }

void allow_caller_data(ConsoleState& state, bool allowed) {
  state.program.CallerDataAllowed = allowed;
  if (allowed) return;
  state.Lineweir.AutoDataEntry.enabled = false;
  state.Lineweir.AutoDataEntry.checked = false;
}

void allow_messages(ConsoleState& state, bool allowed) { state.program.MessagesAllowed = allowed; }

// The key itself goes by mode and equipment as well.
void allow_remote_next(ConsoleState& state, bool allowed) {
  state.program.RemoteNextAllowed = allowed;
}

constexpr auto rights = [] {
  using F = MainForm;
  return std::to_array<Right>({
      {1, 1, enable<&F::AboutLineweir>},
      {1, 2, enable<&F::SaveSettingsMenu>},
      {1, 3, enable<&F::DatabasePathMenuItem>},
      {1, 4, enable<&F::ShowData>},
      {1, 5, enable<&F::ShowDatabaseMenuItem>},
      {1, 6, enable<&F::GreyScreenOption>},
      {1, 7, enable<&F::FontMenuItem>},
      {1, 8, enable<&F::ExitMenu>},
      {3, 1, enable<&F::Com1>},
      {3, 2, enable<&F::Com2>},
      {3, 3, enable<&F::Com3>},
      {3, 4, enable<&F::Com4>},
      {3, 5, enable<&F::NetworkConnectionOption>},
      {3, 6, enable<&F::WinsockMenu>},
      {3, 7, enable<&F::PortOn>},
      {3, 8, enable<&F::Off>},
      {5, 1, enable<&F::RemoteCom1>},
      {5, 2, enable<&F::RemoteCom2>},
      {5, 3, enable<&F::RemoteCom3>},
      {5, 4, enable<&F::RemoteCom4>},
      {5, 5, enable<&F::RemoteOn>},
      {5, 6, enable<&F::RemoteOff>},
      {5, 7, enable<&F::Line20Mode>},
      {7, 1, enable<&F::LogDataOptionsMenu>},
      {7, 2, enable<&F::DisplayDataOptionsMenu>},
      {7, 3, enable<&F::AutoDataEntry>},
      {7, 4, enable<&F::PassiveMode>},
      {7, 5, force_passive_off},
      {7, 6, force_passive_on},
      {7, 7, enable<&F::ModeMenuItem>},
      {7, 8, enable<&F::StudioMode>},
      {8, 1, enable<&F::ScreenerMode>},
      {8, 2, enable<&F::MitelOption>},
      {8, 3, enable<&F::MitelPhone1>},
      {8, 4, enable<&F::MitelPhone2>},
      {8, 5, allow_remote_next},
      {8, 6, enable<&F::NextBarDisable>},
      {8, 7, enable<&F::DimLineNumMenu>},
      {8, 8, enable<&F::StudioLinNumMenu>},
      {11, 1, allow_caller_data},
      {11, 2, allow_messages},
      {11, 3, enable<&F::OptionsButton>},
      {11, 4, enable<&F::Dial>},
  });
}();

}  // namespace

void apply_rights(ConsoleState& state, Modes& modes) {
  // The rights may change with what the steps run.
  const std::string held = state.login.UserRights;
  for (const Right& right : rights) {
    if (right.character > held.size()) {
      throw Failure(failure_number::invalid_argument, "Invalid procedure call or argument");
    }
    right.apply(state, get_bit(held[right.character - 1], right.bit).value_or(false));
  }
  modes.settle_rights();
}

}  // namespace lineweir

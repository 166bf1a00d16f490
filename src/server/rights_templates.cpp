#include "server/rights_templates.h"

#include <array>

#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

// The connection of a seat and where its files lie are the engineer's; a host works the hybrids
// and a screener the handset. Nobody is forced in or out of passive mode.
struct TemplateRow {
  Right right;
  bool host;
  bool screener;
};

constexpr auto rows = [] {
  using enum Right;
  return std::to_array<TemplateRow>({
      {AboutLineweir, true, true},
      {SaveSettingsMenu, true, true},
      {DatabasePathMenuItem, false, false},
      {ShowData, true, true},
      {ShowDatabaseMenuItem, true, true},
      {GreyScreenOption, true, true},
      {FontMenuItem, true, true},
      {ExitMenu, true, true},
      {Com1, false, false},
      {Com2, false, false},
      {Com3, false, false},
      {Com4, false, false},
      {NetworkConnectionOption, false, false},
      {WinsockMenu, true, true},
      {PortOn, false, false},
      {Off, false, false},
      {RemoteCom1, true, false},
      {RemoteCom2, true, false},
      {RemoteCom3, true, false},
      {RemoteCom4, true, false},
      {RemoteOn, true, false},
      {RemoteOff, true, false},
      {Line20Mode, true, true},
      {LogDataOptionsMenu, true, true},
      {DisplayDataOptionsMenu, true, true},
      {AutoDataEntry, true, true},
      {PassiveMode, true, true},
      {ModeMenuItem, true, true},
      {StudioMode, true, false},
      {ScreenerMode, false, true},
      {MitelOption, true, true},
      {MitelPhone1, true, true},
      {MitelPhone2, true, true},
      {RemoteNext, true, false},
      {NextBarDisable, true, true},
      {DimLineNumMenu, true, true},
      {StudioLinNumMenu, true, true},
      {CallerDataAllowed, true, true},
      {MessagesAllowed, true, true},
      {OptionsButton, true, true},
      {Dial, true, true},
      {CallerFlagAllowed, true, true},
  });
}();

bool has(const TemplateRow& row, RightsTemplate work) {
  switch (work) {
    case RightsTemplate::Engineer:
      return true;
    case RightsTemplate::Host:
      return row.host;
    case RightsTemplate::Screener:
      return row.screener;
  }
  return false;
}

}  // namespace

std::optional<RightsTemplate> find_rights_template(std::string_view name) {
  if (name == "engineer") return RightsTemplate::Engineer;
  if (name == "host") return RightsTemplate::Host;
  if (name == "screener") return RightsTemplate::Screener;
  return std::nullopt;
}

std::string rights_of(RightsTemplate work) {
  std::string rights;
  for (const TemplateRow& row : rows) rights = with_right(rights, row.right, has(row, work));
  return rights;
}

}  // namespace lineweir::server

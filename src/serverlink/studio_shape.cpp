#include "serverlink/studio_shape.h"

#include <algorithm>
#include <string>

#include "base/text.h"
#include "base/time_text.h"
#include "callcontrol/modes.h"
#include "link/links.h"
#include "screen/display_options.h"
#include "screen/line_names.h"
#include "screen/screen_layout.h"
#include "screen/visible_rows.h"
#include "serverlink/reply_code.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/wire.h"
#include "wire/studio_texts.h"

namespace lineweir {
namespace {

constexpr int hybrid_count = 2;
constexpr std::size_t letters_without_widening = 2;
constexpr int width_of_a_letter = 120;
constexpr int number_column_width = 350;

}  // namespace

StudioShape::StudioShape(ConsoleState& state, ServerLink& server, const Links& links,
                         VisibleRows& visible_rows, DisplayOptions& display, ScreenLayout& layout,
                         Modes& modes)
    : state_(state),
      links_(links),
      visible_rows_(visible_rows),
      display_(display),
      layout_(layout),
      modes_(modes) {
  using enum ServerCommand;
  const auto replies = [&state](int code) { state.login.LastReplyCode = code; };
  server.handle(SrvStudioStatus, [this, replies](const ServerPacket& packet) {
    GetStudioStat(packet.Buffer);
    replies(reply_studio_parts);
  });
  server.handle(SrvTimes, [this, replies](const ServerPacket& packet) {
    GetTheTimes(packet.Buffer);
    replies(reply_call_times);
  });
  server.handle(SrvLineNumbers, [this, replies](const ServerPacket& packet) {
    name_lines(packet.Buffer);
    replies(reply_line_names);
    display_.RefreshColumnOrder();
  });
  MainForm& form = state.Lineweir;
  wire(form.DimLineNumMenu.on_click, state.trace, "Lineweir_DimLineNumMenu_Click",
       [this] { DimLineNumMenu_Click(); });
  wire(form.StudioLinNumMenu.on_click, state.trace, "Lineweir_StudioLineNumMenu_Click",
       [this] { StudioLineNumMenu_Click(); });
}

void StudioShape::GetStudioStat(std::string_view text) {
  guard(state_.trace, "DisplayOptionForm_GetStudioStat", [&] {
    const auto studio = decode_studio_parts(text);
    if (!studio) return;
    for (int part = 0; part < static_cast<int>(studio->parts.size()); ++part) {
      const bool exists = studio->parts[static_cast<std::size_t>(part)];
      if (part >= hybrid_count) {
        take_handset(part - hybrid_count + 1, exists);
        continue;
      }
      CheckBox& box = state_.DisplayOptionForm.HybridCheck(part);
      box.value = exists ? 1 : 0;
      box.on_click();
    }
    for (int line = 0; line < static_cast<int>(studio->lines.size()); ++line) {
      take_line(line, studio->lines[static_cast<std::size_t>(line)]);
    }
    ControlArray<CheckBox>& boxes = state_.DisplayOptionForm.LineCheck;
    for (int line = boxes.upper_bound(); line-- > state_.lines.LineCount;) {
      if (boxes.loaded(line)) boxes.unload(line);
    }
    visible_rows_.RedefineDisplaySreen();
    layout_.RedefineScreen();
    modes_.SetEnabledDisabled();
  });
}

void StudioShape::take_handset(int number, bool exists) {
  if (number > 2) return;
  MenuItem& item = number == 1 ? state_.Lineweir.MitelPhone1 : state_.Lineweir.MitelPhone2;
  item.enabled = exists && !item.withheld;
  if (!exists) item.checked = false;
}

void StudioShape::take_line(int line, bool exists) {
  // A console shows the lines of its own layout.
  if (line >= state_.lines.LineCount) return;
  ControlArray<CheckBox>& boxes = state_.DisplayOptionForm.LineCheck;
  if (!boxes.loaded(line)) boxes.load(line);
  CheckBox& box = boxes(line);
  box.value = exists ? 1 : 0;
  box.enabled = exists;
  if (exists) box.visible = true;
}

void StudioShape::GetTheTimes(std::string_view text) {
  guard(state_.trace, "DisplayOptionForm_GetTheTimes", [&] {
    MainForm& form = state_.Lineweir;
    LineTable& lines = state_.lines;
    for (int line = 0; line < lines.LineCount; ++line) {
      form.LineTime(line).caption = "";
      form.LineStatus(line).caption = "";
    }
    const auto times = decode_call_times(text);
    if (!times) return;
    // Times that can't be read end the handler; the rows come back all the same.
    lines.FreshConnect = true;
    form.Timer4.enabled = true;
    const int count = std::min(lines.LineCount, static_cast<int>(times->began.size()));
    for (int line = 0; line < count; ++line) {
      const std::string& began = times->began[static_cast<std::size_t>(line)];
      if (!clock_runs(began)) continue;
      const int ahead =
          required_time_of_day(times->server_now) - seconds_of_day(state_.services.clock.now());
      const int base = required_time_of_day(began) + ahead;
      lines.ClockBase(line) = hms_text((base + seconds_per_day) % seconds_per_day);
    }
  });
}

void StudioShape::name_lines(std::string_view names) {
  MainForm& form = state_.Lineweir;
  const std::size_t longest = FindLongestName(names).size();
  const bool named = form.DimLineNumMenu.checked;
  const bool wide = named && longest > letters_without_widening;
  const int more = wide ? static_cast<int>(longest - letters_without_widening) : 0;
  display_.set_width(number_column, number_column_width + width_of_a_letter * more);
  form.CaptionLabel(number_column).caption = wide ? "Line" : "#";
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    Label& label = form.LineNumb(line);
    label.alignment = wide ? align_left : align_center;
    const std::size_t place = static_cast<std::size_t>(line) * line_name_length;
    const std::string_view name =
        place < names.size() ? trimmed(names.substr(place, line_name_length)) : std::string_view();
    label.caption = named ? std::string(name) : std::to_string(line + 1);
  }
}

void StudioShape::DimLineNumMenu_Click() {
  state_.Lineweir.DimLineNumMenu.checked = true;
  state_.Lineweir.StudioLinNumMenu.checked = false;
  links_.in_use().line_names("Lineweir_DimLineNumMenu_Click");
}

void StudioShape::StudioLineNumMenu_Click() {
  state_.Lineweir.StudioLinNumMenu.checked = true;
  state_.Lineweir.DimLineNumMenu.checked = false;
  name_lines({});
  display_.RefreshColumnOrder();
}

}  // namespace lineweir

#include "driver/states.h"

#include <array>

#include "base/names.h"
#include "driver/state_table.h"

namespace lineweir::driver {
namespace {

// What a state may be said to belong to: the table of lines, and forms whose variable it is.
constexpr std::array<std::string_view, 4> owners = {"linetable.", "lineweir.", "loginform.",
                                                    "dialform."};
constexpr int most_lines = 26;

void append_caller_fields(std::vector<StateName>& names) {
  const auto record = [](Console& c, int line) { return &c.lines.CallerData(line); };
  for (const CallerFieldRule& rule : caller_fields) {
    const CallerField field = rule.field;
    names.push_back({"CallerData()." + std::string(rule.name),
                     [=](Session& session, const Indices& indices) {
                       return text_value((*reach(session, record, indices))[field]);
                     },
                     [=](Session& session, const Indices& indices, const Json& value) {
                       reach(session, record, indices)->set(field, text_of(value));
                     }});
  }
}

void append_letters(std::vector<StateName>& names) {
  const auto letter = [](Console& c, int line) -> char { return c.lines.StatusLetter(line); };
  names.push_back(reading("StatusLetter()", letter));
  names.back().set = [=](Session& session, const Indices& indices, const Json& value) {
    reach(session, letter, indices);
    // A fixed text of one character: longer texts are cut, shorter ones padded.
    const std::string wanted = text_of(value);
    session.console().lines.StatusLetter(indices.front()) = wanted.empty() ? ' ' : wanted.front();
  };
}

void append_line_table(std::vector<StateName>& names) {
  append_letters(names);
  names.push_back(
      {"LineCount",
       [](Session& session, const Indices&) -> Json { return session.console().lines.LineCount; },
       [](Session& session, const Indices&, const Json& value) {
         const auto lines = number_of(value, 1, most_lines);
         session.console().lines.resize(static_cast<int>(lines));
       }});
  const std::vector<StateName> members = {
      state("HoldStamp()", [](Console& c, int i) { return &c.lines.HoldStamp(i); }),
      state("ClockBase()", [](Console& c, int i) { return &c.lines.ClockBase(i); }),
      state("ClockRunning()", [](Console& c, int i) { return &c.lines.ClockRunning(i); }),
      state("RingConfirm()", [](Console& c, int i) { return &at(c.lines.RingConfirm, i); }),
      state("TheNextCall", [](Console& c) { return &c.lines.TheNextCall; }),
      state("NextCallSet", [](Console& c) { return &c.lines.NextCallSet; }),
      state("CurrentDataLine", [](Console& c) { return &c.lines.CurrentDataLine; }),
      state("FreshConnect", [](Console& c) { return &c.lines.FreshConnect; }),
      state("ThePhoneFlag", [](Console& c) { return &c.lines.ThePhoneFlag; }),
  };
  names.insert(names.end(), members.begin(), members.end());
}

void append_program(std::vector<StateName>& names) {
  const std::vector<StateName> members = {
      state("DebugMode", [](Console& c) { return &c.program.DebugMode; }),
      state("EmptyLineOverride", [](Console& c) { return &c.program.EmptyLineOverride; }),
      state("StartDirectory", [](Console& c) { return &c.program.StartDirectory; }),
      state("MessageShown", [](Console& c) { return &c.program.MessageShown; }),
      state("ClientId", [](Console& c) { return &c.program.ClientId; }),
      state("GroupNumber", [](Console& c) { return &c.program.GroupNumber; }),
      state("ConsoleNumber", [](Console& c) { return &c.program.ConsoleNumber; }),
      state("MainHybridOn", [](Console& c) { return &c.program.MainHybridOn; }),
      state("ConfHybridOn", [](Console& c) { return &c.program.ConfHybridOn; }),
      state("CallerDataAllowed", [](Console& c) { return &c.program.CallerDataAllowed; }),
      state("MessagesAllowed", [](Console& c) { return &c.program.MessagesAllowed; }),
      state("CallerFlagAllowed", [](Console& c) { return &c.program.CallerFlagAllowed; }),
      state("MessageFile", [](Console& c) { return &c.program.MessageFile; }),
      reading("RowControls()",
              [](Console& c, int line, int item) {
                if (item < 1 || item > column_count) {
                  throw Failure(failure_number::out_of_range, "Subscript out of range");
                }
                return c.Lineweir.RowControls(line, item).caption.get();
              }),
  };
  names.insert(names.end(), members.begin(), members.end());
}

void append_subsystems(std::vector<StateName>& names) {
  const std::vector<StateName> members = {
      {"SerialBuffer",
       [](Session& session, const Indices&) {
         return text_value(session.console().decoder.serial_buffer.text());
       },
       [](Session& session, const Indices&, const Json& value) {
         session.console().decoder.serial_buffer.assign(text_of(value));
       }},
      state("TheStatusText", [](Console& c) { return &c.line_events.TheStatusText; }),
      state("LineMonitorWait", [](Console& c) { return &c.decoder.LineMonitorWait; }),
      reading("Winsock1.State", [](Console& c) { return c.services.winsock1.state(); }),
      reading("Winsock1.BytesReceived",
              [](Console& c) { return static_cast<int>(c.services.winsock1.bytes_received()); }),
      state("RecString", [](Console& c) { return &c.server.RecString; }),
      state("DialLine", [](Console& c) { return &c.dial.DialLine; }),
      state("DialSeizeLine", [](Console& c) { return &c.dial.DialSeizeLine; }),
      reading("DialCollection",
              [](Console& c) {
                std::vector<std::string> words;
                for (const CommandWord& word : c.dial_pad.DialCollection) {
                  words.push_back(word.word);
                }
                return words;
              }),
      reading("DialCollection.Count",
              [](Console& c) { return static_cast<int>(c.dial_pad.DialCollection.size()); }),
      state("UserName", [](Console& c) { return &c.login.UserName; }),
      state("UserPassword", [](Console& c) { return &c.login.UserPassword; }),
      state("DisplayUserName", [](Console& c) { return &c.login.DisplayUserName; }),
      state("UserRights", [](Console& c) { return &c.login.UserRights; }),
      state("ProfileBlock", [](Console& c) { return &c.login.ProfileBlock; }),
      state("MissedPolls", [](Console& c) { return &c.login.MissedPolls; }),
      state("ChangeUser", [](Console& c) { return &c.LoginForm.ChangeUser; }),
      state("TheOldName", [](Console& c) { return &c.LoginForm.TheOldName; }),
      state("ForcedGroup", [](Console& c) { return &c.login.ForcedGroup; }),
      state("SkipProfile", [](Console& c) { return &c.login.SkipProfile; }),
      state("ServerAlive", [](Console& c) { return &c.login.ServerAlive; }),
      state("LastReplyCode", [](Console& c) { return &c.login.LastReplyCode; }),
      state("Winsock1.RemoteHost", [](Console& c) { return &c.login.ServerHost; }),
      state("Winsock1.RemotePort", [](Console& c) { return &c.login.ServerPort; }),
      state("ShowTimes()", [](Console& c, int i) { return &c.show_plan.plan.ShowTimes(i); }),
      state("ShowTexts()", [](Console& c, int i) { return &c.show_plan.plan.ShowTexts(i); }),
      state("TheDataFileName", [](Console& c) { return &c.show_plan.TheDataFileName; }),
      state("ShowDataFile", [](Console& c) { return &c.show_plan.TheDataFileName; }),
      state("DelayOffset", [](Console& c) { return &c.clock_state.DelayOffset; }),
      state("TimeOffset", [](Console& c) { return &c.clock_state.DelayOffset; }),
      state("Warning1", [](Console& c) { return &c.clock_state.Warning1; }),
      state("Warning2", [](Console& c) { return &c.clock_state.Warning2; }),
      state("SecondRadius", [](Console& c) { return &c.clock_state.SecondRadius; }),
      state("MinuteRadius", [](Console& c) { return &c.clock_state.MinuteRadius; }),
      state("HourRadius", [](Console& c) { return &c.clock_state.HourRadius; }),
      state("ServerEventTime", [](Console& c) { return &c.clock_state.ServerEventTime; }),
      state("ServerEventText", [](Console& c) { return &c.clock_state.ServerEventText; }),
      state("ServerLastEventTime", [](Console& c) { return &c.clock_state.ServerLastEventTime; }),
      state("OperatorName", [](Console& c) { return &c.program.OperatorName; }),
      state("LogFieldOn()", [](Console& c, int i) { return &nth(c.caller_data.LogFieldOn, i); }),
  };
  names.insert(names.end(), members.begin(), members.end());
}

void append_screen(std::vector<StateName>& names) {
  const std::vector<StateName> members = {
      state("VisibleLines", [](Console& c) { return &c.program.VisibleLines; }),
      state("PreviousVisibleLines", [](Console& c) { return &c.faces.PreviousVisibleLines; }),
      reading("RowTop()", [](Console& c, int row) { return row_top(c.program.VisibleLines, row); }),
      state("RestartingSocket", [](Console& c) { return &c.window.RestartingSocket; }),
      reading("FName", [](Console& c) { return c.fonts.present().name; }),
      reading("FSize", [](Console& c) { return c.fonts.present().size; }),
      reading("FBold", [](Console& c) { return c.fonts.present().bold; }),
      reading("FItalic", [](Console& c) { return c.fonts.present().italic; }),
      state("SetStateTo", [](Console& c) { return &c.profile_window.SetStateTo; }),
      state("SetStateToHeight", [](Console& c) { return &c.profile_window.SetStateToHeight; }),
      state("SetStateToWidth", [](Console& c) { return &c.profile_window.SetStateToWidth; }),
      state("SetStateMessGroup", [](Console& c) { return &c.profile_window.SetStateMessGroup; }),
      state("ColumnsLocked", [](Console& c) { return &c.display.ColumnsLocked; }),
      reading("ColumnsInUse", [](Console& c) { return &c.display.ColumnsInUse; }),
      state("ColumnShown()", [](Console& c, int i) { return &nth(c.display.ColumnShown, i); }),
      state("ColumnWidth()", [](Console& c, int i) { return &nth(c.display.ColumnWidth, i); }),
      state("ColumnOrder()", [](Console& c, int i) { return &nth(c.display.ColumnOrder, i); }),
  };
  names.insert(names.end(), members.begin(), members.end());
}

const std::vector<StateName>& all_states() {
  static const std::vector<StateName> states = [] {
    std::vector<StateName> names;
    append_line_table(names);
    append_caller_fields(names);
    append_program(names);
    append_subsystems(names);
    append_screen(names);
    append_service_states(names);
    return names;
  }();
  return states;
}

}  // namespace

const StateName* find_state(std::string_view shape) {
  for (const std::string_view owner : owners) {
    if (shape.starts_with(owner)) return find_state(shape.substr(owner.size()));
  }
  for (const StateName& state : all_states()) {
    if (same_name(state.shape, shape)) return &state;
  }
  return nullptr;
}

}  // namespace lineweir::driver

#include "driver/states.h"

#include <limits>
#include <type_traits>
#include <utility>

#include "callerdata/call_log_columns.h"
#include "core/fixed_text.h"
#include "core/guard.h"
#include "core/text.h"
#include "driver/refusal.h"
#include "elements/names.h"

namespace lineweir::driver {
namespace {

constexpr std::string_view line_table_prefix = "linetable.";
constexpr int most_lines = 26;

template <class T>
Json shown(const T& value) {
  if constexpr (std::is_same_v<T, char>) {
    return text_value({&value, 1});
  } else if constexpr (std::is_arithmetic_v<T>) {
    return value;
  } else if constexpr (requires { value.text(); }) {
    return text_value(value.text());
  } else if constexpr (requires { std::string_view(value); }) {
    return text_value(value);
  } else {
    Json list = Json::array();
    for (const auto& one : value) list.push_back(shown(one));
    return list;
  }
}

template <class T>
void take(T& state, const Json& value) {
  if constexpr (std::is_same_v<T, char>) {
    const std::string text = text_of(value);
    if (text.size() != 1) throw NotUnderstood("not one character: " + printed(value));
    state = text.front();
  } else if constexpr (std::is_same_v<T, bool>) {
    state = truth_of(value);
  } else if constexpr (std::is_integral_v<T>) {
    using Limits = std::numeric_limits<T>;
    state = static_cast<T>(number_of(value, Limits::min(), Limits::max()));
  } else if constexpr (requires { state.assign(std::string_view()); }) {
    state.assign(text_of(value));
  } else {
    state = text_of(value);
  }
}

// Calls `access` with the console and as many of the indices as it takes.
template <class Access>
decltype(auto) reach(Session& session, const Access& access, const Indices& indices) {
  if constexpr (std::is_invocable_v<Access, Console&>) {
    return access(session.console());
  } else if constexpr (std::is_invocable_v<Access, Console&, int>) {
    if (indices.size() != 1) throw NotUnderstood("one index is wanted");
    return access(session.console(), indices[0]);
  } else {
    if (indices.size() != 2) throw NotUnderstood("two indices are wanted");
    return access(session.console(), indices[0], indices[1]);
  }
}

// State that can only be read.
template <class Access>
StateName reading(std::string_view shape, Access access) {
  return {shape,
          [access](Session& session, const Indices& indices) {
            return shown(reach(session, access, indices));
          },
          nullptr};
}

// State that `access` gives a reference to.
template <class Access>
StateName state(std::string_view shape, Access access) {
  StateName name = reading(shape, access);
  name.set = [access](Session& session, const Indices& indices, const Json& value) {
    take(reach(session, access, indices), value);
  };
  return name;
}

template <class Array>
auto& at(Array& array, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= array.size()) {
    throw Failure(failure_number::out_of_range, "Subscript out of range");
  }
  return array[static_cast<std::size_t>(index)];
}

void append_caller_fields(std::vector<StateName>& names) {
  static const auto shapes = [] {
    std::array<std::string, caller_fields.size()> texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      texts[i] = "CallerData()." + std::string(caller_fields[i].name);
    }
    return texts;
  }();
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const CallerField field = caller_fields[i].field;
    const auto record = [](Console& console, int line) -> CallerRecord& {
      return console.lines.CallerData(line);
    };
    names.push_back({shapes[i],
                     [=](Session& session, const Indices& indices) {
                       return text_value(reach(session, record, indices)[field]);
                     },
                     [=](Session& session, const Indices& indices, const Json& value) {
                       reach(session, record, indices).set(field, text_of(value));
                     }});
  }
}

void append_ports(std::vector<StateName>& names) {
  const auto append = [&names](std::string_view open, std::string_view number, auto port) {
    names.push_back({open,
                     [=](Session& session, const Indices&) -> Json {
                       return port(session.console()).is_open();
                     },
                     [=](Session& session, const Indices&, const Json& value) {
                       platform::SerialPort& comm = port(session.console());
                       if (!truth_of(value)) return comm.close();
                       if (!comm.is_open()) comm.open();
                     }});
    names.push_back({number,
                     [=](Session& session, const Indices&) -> Json {
                       return port(session.console()).comm_port();
                     },
                     [=](Session& session, const Indices&, const Json& value) {
                       port(session.console()).set_comm_port(number_of(value));
                     }});
  };
  append("Comm1.PortOpen", "Comm1.CommPort",
         [](Console& c) -> platform::SerialPort& { return c.services.comm1; });
  append("Comm2.PortOpen", "Comm2.CommPort",
         [](Console& c) -> platform::SerialPort& { return c.services.comm2; });
}

// The rows that the chosen call log holds; none where it can't be opened. A database's text is
// UTF-8.
std::vector<std::vector<std::string>> logged_rows(Session& session) {
  Console& console = session.console();
  std::vector<std::vector<std::string>> rows;
  attempt(
      [&] {
        const auto database = console.services.databases.open(console.Lineweir.Data1.database_name);
        const auto recordset = database->open_recordset(std::string(call_log_table));
        platform::RowScan all{false, std::nullopt, std::numeric_limits<int>::max(), {}};
        for (int i = 0; i < static_cast<int>(recordset->fields().size()); ++i) {
          all.columns.push_back(i);
        }
        recordset->scan(all, [&](platform::RowId, auto values) {
          auto& row = rows.emplace_back();
          for (const std::string_view text : values) row.push_back(from_utf8(text));
        });
      },
      [](const Failure&) {});
  return rows;
}

void append_logged_rows(std::vector<StateName>& names) {
  names.push_back(
      {"Data1.Recordset.Count",
       [](Session& session, const Indices&) -> Json { return logged_rows(session).size(); },
       nullptr});
  names.push_back({"Data1.Recordset()",
                   [](Session& session, const Indices& indices) {
                     const auto rows = logged_rows(session);
                     if (indices.size() != 1) throw NotUnderstood("one index is wanted");
                     return texts_value(at(rows, indices[0]));
                   },
                   nullptr});
}

void append_line_table(std::vector<StateName>& names) {
  names.push_back(
      {"LineCount",
       [](Session& session, const Indices&) -> Json { return session.console().lines.LineCount; },
       [](Session& session, const Indices&, const Json& value) {
         const auto lines = number_of(value, 1, most_lines);
         session.console().lines.resize(static_cast<int>(lines));
       }});
  const std::vector<StateName> members = {
      state(
          "StatusLetter()", [](Console & c, int i) -> auto& { return c.lines.StatusLetter(i); }),
      state(
          "HoldStamp()", [](Console & c, int i) -> auto& { return c.lines.HoldStamp(i); }),
      state(
          "ClockBase()", [](Console & c, int i) -> auto& { return c.lines.ClockBase(i); }),
      state(
          "ClockRunning()", [](Console & c, int i) -> auto& { return c.lines.ClockRunning(i); }),
      state(
          "RingConfirm()", [](Console & c, int i) -> auto& { return at(c.lines.RingConfirm, i); }),
      state(
          "TheNextCall", [](Console & c) -> auto& { return c.lines.TheNextCall; }),
      state(
          "NextCallSet", [](Console & c) -> auto& { return c.lines.NextCallSet; }),
      state(
          "CurrentDataLine", [](Console & c) -> auto& { return c.lines.CurrentDataLine; }),
      state(
          "FreshConnect", [](Console & c) -> auto& { return c.lines.FreshConnect; }),
      state(
          "ThePhoneFlag", [](Console & c) -> auto& { return c.lines.ThePhoneFlag; }),
  };
  names.insert(names.end(), members.begin(), members.end());
}

void append_program(std::vector<StateName>& names) {
  const std::vector<StateName> members = {
      state(
          "DebugMode", [](Console & c) -> auto& { return c.program.DebugMode; }),
      state(
          "EmptyLineOverride", [](Console & c) -> auto& { return c.program.EmptyLineOverride; }),
      state(
          "StartDirectory", [](Console & c) -> auto& { return c.program.StartDirectory; }),
      state(
          "MessageShown", [](Console & c) -> auto& { return c.program.MessageShown; }),
      state(
          "ClientId", [](Console & c) -> auto& { return c.program.ClientId; }),
      state(
          "GroupNumber", [](Console & c) -> auto& { return c.program.GroupNumber; }),
      state(
          "ConsoleNumber", [](Console & c) -> auto& { return c.program.ConsoleNumber; }),
      state(
          "MainHybridOn", [](Console & c) -> auto& { return c.program.MainHybridOn; }),
      state(
          "ConfHybridOn", [](Console & c) -> auto& { return c.program.ConfHybridOn; }),
      state(
          "CallerDataAllowed", [](Console & c) -> auto& { return c.program.CallerDataAllowed; }),
      state(
          "MessagesAllowed", [](Console & c) -> auto& { return c.program.MessagesAllowed; }),
      state(
          "MessageFile", [](Console & c) -> auto& { return c.program.MessageFile; }),
      reading(
          "RowControls()", [](Console & c, int line, int item) -> auto& {
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
      reading("SerialBuffer", [](Console& c) { return c.decoder.serial_buffer.text(); }),
      state(
          "LineMonitorWait", [](Console & c) -> auto& { return c.decoder.LineMonitorWait; }),
      reading("Winsock1.State", [](Console& c) { return c.services.winsock1.state(); }),
      state(
          "RecString", [](Console & c) -> auto& { return c.server.RecString; }),
      state(
          "DialLine", [](Console & c) -> auto& { return c.dial.DialLine; }),
      state(
          "DialSeizeLine", [](Console & c) -> auto& { return c.dial.DialSeizeLine; }),
      state(
          "UserName", [](Console & c) -> auto& { return c.login.UserName; }),
      state(
          "UserPassword", [](Console & c) -> auto& { return c.login.UserPassword; }),
      state(
          "DisplayUserName", [](Console & c) -> auto& { return c.login.DisplayUserName; }),
      state(
          "Winsock1.RemoteHost", [](Console & c) -> auto& { return c.login.RemoteHost; }),
      state(
          "Winsock1.RemotePort", [](Console & c) -> auto& { return c.login.RemotePort; }),
      state(
          "ShowTimes()", [](Console & c, int i) -> auto& { return c.show_plan.plan.ShowTimes(i); }),
      state(
          "ShowTexts()", [](Console & c, int i) -> auto& { return c.show_plan.plan.ShowTexts(i); }),
      state(
          "TheDataFileName", [](Console & c) -> auto& { return c.show_plan.TheDataFileName; }),
      state(
          "DelayOffset", [](Console & c) -> auto& { return c.clock_state.DelayOffset; }),
      state(
          "Warning1", [](Console & c) -> auto& { return c.clock_state.Warning1; }),
      state(
          "Warning2", [](Console & c) -> auto& { return c.clock_state.Warning2; }),
      state(
          "ServerEventTime", [](Console & c) -> auto& { return c.clock_state.ServerEventTime; }),
      state(
          "ServerEventText", [](Console & c) -> auto& { return c.clock_state.ServerEventText; }),
      state(
          "ServerLastEventTime",
          [](Console & c) -> auto& { return c.clock_state.ServerLastEventTime; }),
      state(
          "OperatorName", [](Console & c) -> auto& { return c.caller_data.OperatorName; }),
      state(
          "LogFieldOn()",
          [](Console & c, int i) -> auto& { return at(c.caller_data.LogFieldOn, i); }),
  };
  names.insert(names.end(), members.begin(), members.end());
}

void append_screen(std::vector<StateName>& names) {
  const std::vector<StateName> members = {
      state(
          "VisibleLines", [](Console & c) -> auto& { return c.program.VisibleLines; }),
      state(
          "PreviousVisibleLines",
          [](Console & c) -> auto& { return c.faces.PreviousVisibleLines; }),
      reading("RowTop()", [](Console& c, int row) { return row_top(c.program.VisibleLines, row); }),
      state(
          "RestartingSocket", [](Console & c) -> auto& { return c.window.RestartingSocket; }),
      reading("FName", [](Console& c) { return c.fonts.present().name; }),
      reading("FSize", [](Console& c) { return c.fonts.present().size; }),
      reading("FBold", [](Console& c) { return c.fonts.present().bold; }),
      reading("FItalic", [](Console& c) { return c.fonts.present().italic; }),
      state(
          "ColumnsLocked", [](Console & c) -> auto& { return c.display.ColumnsLocked; }),
      reading(
          "ColumnsInUse", [](Console & c) -> auto& { return c.display.ColumnsInUse; }),
      state(
          "ColumnShown()",
          [](Console & c, int i) -> auto& { return at(c.display.ColumnShown, i); }),
      state(
          "ColumnWidth()",
          [](Console & c, int i) -> auto& { return at(c.display.ColumnWidth, i); }),
      state(
          "ColumnOrder()",
          [](Console & c, int i) -> auto& { return at(c.display.ColumnOrder, i); }),
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
    append_ports(names);
    append_logged_rows(names);
    return names;
  }();
  return states;
}

}  // namespace

const StateName* find_state(std::string_view shape) {
  if (shape.starts_with(line_table_prefix)) shape.remove_prefix(line_table_prefix.size());
  for (const StateName& state : all_states()) {
    if (same_name(state.shape, shape)) return &state;
  }
  return nullptr;
}

}  // namespace lineweir::driver

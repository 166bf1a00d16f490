#include "callcontrol/next_caller.h"

#include <array>
#include <cstddef>
#include <memory_resource>
#include <string>
#include <vector>

#include "callcontrol/line_commands.h"
#include "callcontrol/socket_trap.h"
#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr int deciding_server = 4;

// What the two buttons ask of a server that decides. Without a value AltInfo is this console's
// number.
struct NextActionRule {
  bool talent;
  bool conference;
  std::optional<std::uint8_t> alt_info;
  std::uint8_t bank;
  std::string_view letter;
};

constexpr std::array next_action_rules = {
    NextActionRule{true, false, 65, bank_main, "N"},
    NextActionRule{false, false, 65, bank_main, "S"},
    NextActionRule{true, true, 66, bank_conference, "N"},
    NextActionRule{false, true, std::nullopt, bank_none, "A"},
};

template <class Lines>
void collect_waits(const Console& console, Lines& lines) {
  lines.reserve(static_cast<std::size_t>(console.lines.LineCount));
  for (int line = 0; line < console.lines.LineCount; ++line) {
    lines.push_back(
        {console.lines.StatusLetter(line), console.Lineweir.LineTime(line).caption.get()});
  }
}

}  // namespace

NextCaller::NextCaller(Console& console) : console_(console) {
  console.Lineweir.NextButton.on_click = [this] { NextButton_Click(); };
  console.Lineweir.NextToConfButton.on_click = [this] { NextToConf_Click(); };
  console.Lineweir.NextBarDisable.on_click = [this] { NextBarDisable_Click(); };
  console.clocks.after_tick = [this] { FindNext(); };
}

void NextCaller::FindNext() {
  constexpr std::string_view handler = "Lineweir_FindNext";
  guard(console_, handler, [&] {
    const LineTable& lines = console_.lines;
    if (lines.NextCallSet || lines.ThePhoneFlag == deciding_server) return;
    // Ten times a second, so that the waits of all lines stand in the handler's own room; more than
    // there are on any screen would be put elsewhere.
    std::array<std::byte, 1024> room;
    std::pmr::monotonic_buffer_resource own_room(room.data(), room.size());
    std::pmr::vector<LineWait> waiting(&own_room);
    collect_waits(console_, waiting);
    const int found = longest_wait(waiting, 'S');
    if (found == lines.TheNextCall) return;
    if (lines.TheNextCall != no_line) restore_former_row(lines.TheNextCall);
    console_.lines.TheNextCall = found;
    tell_choice(handler, found);
    if (found == no_line) return;
    console_.rows.show_next(found);
    console_.rows.DrawMark(found);
  });
}

void NextCaller::NextButton_Click() {
  constexpr std::string_view handler = "Lineweir_NextButton_Click";
  guard(console_, handler, [&] {
    if (console_.lines.ThePhoneFlag == deciding_server) {
      ask_server(handler, false);
    } else if (console_.Lineweir.StudioMode.checked) {
      put_next_on_air('N', bank_main);
    } else {
      mark_ready();
    }
  });
}

void NextCaller::NextToConf_Click() {
  constexpr std::string_view handler = "Lineweir_NextToConf_Click";
  guard(console_, handler, [&] {
    if (console_.lines.ThePhoneFlag == deciding_server) {
      ask_server(handler, true);
    } else if (console_.Lineweir.StudioMode.checked) {
      put_next_on_air('C', bank_conference);
    } else {
      answer_next();
    }
  });
}

void NextCaller::NextBarDisable_Click() {
  guard(console_, "Lineweir_NextBarDisable_Click", [&] {
    MenuItem& item = console_.Lineweir.NextBarDisable;
    item.checked = !item.checked;
  });
}

void NextCaller::pick_by_hand(int line) {
  constexpr std::string_view handler = "Lineweir_OnHybrid2_Click";
  const MainForm& form = console_.Lineweir;
  if (form.NetworkConnectionOption.checked) {
    // The present choice is sent again and not the clicked line: the server's programs count on it.
    call_set_next_call(handler);
  } else if (!form.WinsockMenu.checked) {
    move_to(line);
  } else if (console_.lines.ThePhoneFlag == deciding_server) {
    const auto command = console_.line_actions.conference_row_word(line);
    if (command) console_.phone.PhoneCommand(command->word, command->bank);
  } else {
    const char letter = console_.lines.StatusLetter(line);
    if (letter != 'F' && letter != ' ') send_next_call_frame(handler, line);
  }
}

void NextCaller::pin(int line) {
  if (line == console_.lines.TheNextCall || line < 0 || line >= console_.lines.LineCount) return;
  move_to(line);
}

void NextCaller::ReturnNextCall(int TheNextCall, int TheMessageGroupVal) {
  guard(console_, "CBClientClass_ReturnNextCall", [&] {
    if (TheMessageGroupVal == console_.program.GroupNumber) pin(TheNextCall - 1);
  });
}

std::vector<LineWait> NextCaller::waits() const {
  std::vector<LineWait> lines;
  collect_waits(console_, lines);
  return lines;
}

void NextCaller::move_to(int line) {
  LineTable& lines = console_.lines;
  if (lines.TheNextCall != no_line) unmark(lines.TheNextCall);
  lines.TheNextCall = line;
  lines.NextCallSet = true;
  console_.rows.show_next(line);
  console_.rows.DrawMark(line);
}

void NextCaller::restore_former_row(int line) {
  const char letter = console_.lines.StatusLetter(line);
  const bool on_air = letter == 'N' || letter == 'C';
  console_.rows.set_row_color(line, on_air ? RowColor::Red : RowColor::White);
  console_.rows.SetStatusText(line);
  console_.rows.DrawMark(line);
}

void NextCaller::unmark(int line) {
  console_.rows.set_row_color(line, RowColor::White);
  console_.rows.DrawMark(line);
  console_.rows.SetStatusText(line);
}

void NextCaller::tell_choice(std::string_view handler, int line) {
  if (console_.Lineweir.NetworkConnectionOption.checked) {
    call_set_next_call(handler);
  } else if (console_.Lineweir.WinsockMenu.checked) {
    send_next_call_frame(handler, line);
  }
}

void NextCaller::send_next_call_frame(std::string_view handler, int line) {
  socket_trap(console_, handler, [&] {
    ServerPacket packet = console_.server.packet(ClientCommand::CmdSetNextCall);
    packet.LineNo = line == no_line ? no_value : field_byte(line);
    console_.server.send(packet);
  });
}

void NextCaller::call_set_next_call(std::string_view handler) {
  socket_trap(console_, handler, [&] {
    console_.remote.serial_input().call(
        "SetNextCall",
        {std::int64_t{console_.lines.TheNextCall + 1}, std::int64_t{console_.program.GroupNumber}});
  });
}

void NextCaller::ask_server(std::string_view handler, bool conference) {
  const bool talent = console_.Lineweir.StudioMode.checked;
  for (const NextActionRule& rule : next_action_rules) {
    if (rule.talent != talent || rule.conference != conference) continue;
    socket_trap(console_, handler, [&] {
      ServerPacket packet = console_.server.packet(ClientCommand::CmdNextAction);
      packet.AltInfo = rule.alt_info.value_or(packet.Console);
      packet.Bank = rule.bank;
      packet.set_buffer(std::string(rule.letter));
      console_.server.send(packet);
    });
  }
}

std::vector<int> NextCaller::lines_at_handset() const {
  const Seat seat = console_.line_actions.seat();
  std::vector<int> lines;
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const char letter = console_.lines.StatusLetter(line);
    if ((letter == 'P' && seat.handset_1) || (letter == 'O' && seat.handset_2)) {
      lines.push_back(line);
    }
  }
  return lines;
}

void NextCaller::mark_ready() {
  for (const int line : lines_at_handset()) {
    console_.phone.PhoneCommand(line_word('S', line), bank_none);
  }
}

void NextCaller::answer_next() {
  const int line = longest_wait(waits(), 'R');
  if (line == no_line) return;
  const char letter = console_.Lineweir.MitelPhone1.checked ? 'P' : 'O';
  console_.phone.PhoneCommand(line_word(letter, line), bank_none);
  console_.caller_data.show_for_line(line);
}

std::optional<int> NextCaller::line_for_air() const {
  const int line = console_.lines.TheNextCall;
  if (line == no_line) return std::nullopt;
  const char letter = console_.lines.StatusLetter(line);
  if (!may_be_commanded(letter, console_.program.EmptyLineOverride)) return std::nullopt;
  return line;
}

void NextCaller::put_next_on_air(char word_letter, int bank) {
  if (const auto line = line_for_air()) {
    console_.phone.PhoneCommand(line_word(word_letter, *line), bank);
  }
}

bool NextCaller::NextButton_finds_work() const {
  if (console_.lines.ThePhoneFlag == deciding_server) return true;
  return console_.Lineweir.StudioMode.checked ? line_for_air().has_value()
                                              : !lines_at_handset().empty();
}

bool NextCaller::NextToConf_finds_work() const {
  if (console_.lines.ThePhoneFlag == deciding_server) return true;
  return console_.Lineweir.StudioMode.checked ? line_for_air().has_value()
                                              : longest_wait(waits(), 'R') != no_line;
}

}  // namespace lineweir

#include "callerdata/caller_data.h"

#include <algorithm>

#include "callcontrol/socket_trap.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"
#include "serverlink/packet_text.h"

namespace lineweir {
namespace {

constexpr std::string_view save_handler = "Form4_Command3D1_Click";
constexpr int key_enter = 13;

// Control characters part fields and frames on their way to other consoles. None can be typed, but
// some can be pasted.
std::string without_controls(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return code_of(c) > 0 && code_of(c) < ' '; }, ' ');
  return text;
}

}  // namespace

CallerDataEntry::CallerDataEntry(Console& console) : console_(console) {
  CallerDataForm& form = console.Form4;
  form.on_load = [this] { Form_Load(); };
  form.on_unload = [this] { Form_Unload(); };
  form.TheText.wire([this](TextBox& box) {
    box.on_key_press = [this, entry = box.index()](int& key) { TheText_KeyPress(entry, key); };
  });
  form.Command3D1.on_click = [this] { Command3D1_Click(); };
  form.UnloadTimer.on_timer = [this] { UnloadTimer_Timer(); };
}

LogFieldFlags CallerDataEntry::all_fields_on() {
  LogFieldFlags flags;
  flags.fill(true);
  return flags;
}

int CallerDataEntry::held_line() const { return console_.Form4.loaded() ? held_line_ : no_line; }

void CallerDataEntry::show_for_line(int line) {
  CallerDataForm& form = console_.Form4;
  const bool holds_other = form.loaded() && held_line_ != line;
  if (holds_other) keep_draft();
  console_.lines.CurrentDataLine = line;
  form.caption = "Caller Data - Line " + std::to_string(line + 1);
  if (holds_other) Form_Load();
  form.show();
}

void CallerDataEntry::Form_Load() {
  guard(console_, "Form4_Form_Load", [&] {
    CallerDataForm& form = console_.Form4;
    held_line_ = console_.lines.CurrentDataLine;
    held_call_ = console_.call_log.calls_ended(held_line_);
    form.UnloadTimer.enabled = false;
    console_.caller_memory.hide();
    if (!console_.program.CallerDataAllowed) {
      console_.messages.ShowMessage("Caller Data Entry not allowed in this user profile");
      form.UnloadTimer.enabled = true;
    }
    form.Label(user_entry).caption = trimmed(console_.Lineweir.CaptionLabel(user_column).caption);
    lay_out_fields();
    fill_texts();
    focus_first();
  });
}

void CallerDataEntry::Form_Unload() {
  console_.Form4.UnloadTimer.enabled = false;
  keep_draft();
}

void CallerDataEntry::lay_out_fields() {
  CallerDataForm& form = console_.Form4;
  int place = 0;
  for (int entry = 1; entry <= caller_text_count; ++entry) {
    const bool in_use = LogFieldOn[static_cast<std::size_t>(entry - 1)];
    TextBox& text = form.TheText(entry);
    if (in_use) {
      text.top = caller_row_top(place);
      form.Label(entry).top = caller_row_top(place);
      ++place;
    }
    text.enabled = in_use;
    text.visible = in_use;
    form.Label(entry).visible = in_use;
  }
  form.fit_height(place);
}

void CallerDataEntry::fill_texts() {
  stored_ = stored_texts();
  const bool idle = console_.lines.StatusLetter(held_line_) == ' ';
  const auto draft = drafts_.find(held_line_, held_call_, idle);
  const EntryTexts& shown = draft ? *draft : stored_;
  for (int entry = 1; entry <= caller_text_count; ++entry) {
    TextBox& box = console_.Form4.TheText(entry);
    box.text = shown[static_cast<std::size_t>(entry - 1)];
    box.caret_to_end();
  }
}

// What the line has for the fields in use. A field that isn't in use is empty.
EntryTexts CallerDataEntry::stored_texts() const {
  EntryTexts stored;
  const CallerRecord& record = console_.lines.CallerData(held_line_);
  for (std::size_t i = 0; i < stored.size(); ++i) {
    if (!LogFieldOn[i]) continue;
    const EntryField& field = entry_fields[i];
    stored[i] = trimmed(
        field.from_row ? console_.Lineweir.column_labels(field.column)(held_line_).caption.get()
                       : record[field.field]);
  }
  return stored;
}

EntryTexts CallerDataEntry::texts() const {
  EntryTexts typed;
  for (std::size_t i = 0; i < typed.size(); ++i) {
    typed[i] = console_.Form4.TheText(static_cast<int>(i) + 1).text;
  }
  return typed;
}

void CallerDataEntry::keep_draft() {
  const EntryTexts typed = texts();
  if (typed == stored_) {
    drafts_.drop(held_line_);
  } else {
    drafts_.keep(held_line_, held_call_, typed);
  }
}

void CallerDataEntry::focus_first() { focus_next(0); }

bool CallerDataEntry::focus_next(int entry) {
  for (int next = entry + 1; next <= caller_text_count; ++next) {
    TextBox& box = console_.Form4.TheText(next);
    if (!box.enabled) continue;
    box.set_focus();
    return true;
  }
  return false;
}

void CallerDataEntry::TheText_KeyPress(int Index, int& KeyAscii) {
  guard(console_, "Form4_TheText_KeyPress", [&] {
    console_.caller_memory.key_pressed(KeyAscii);
    if (KeyAscii == key_enter) {
      KeyAscii = 0;
      if (Index >= caller_text_count || !focus_next(Index)) Command3D1_Click();
      return;
    }
    if (Index != gender_entry) return;
    TextBox& gender = console_.Form4.TheText(gender_entry);
    if (KeyAscii == 'F' || KeyAscii == 'f') gender.text = "Female";
    if (KeyAscii == 'M' || KeyAscii == 'm') gender.text = "Male";
    gender.caret_to_end();
    KeyAscii = 0;
  });
}

void CallerDataEntry::Command3D1_Click() {
  const int line = console_.lines.CurrentDataLine;
  const int held = held_line();
  const EntryTexts typed = texts();
  std::string text;
  const bool stored = guard(console_, save_handler, [&] {
    store(line, typed);
    text = caller_data_text(line);
  });
  if (!stored || !socket_trap(console_, save_handler, [&] { send(line, text); })) return;
  // The loop may have run in between, and the form may hold something else by now.
  if (held_line() != held || texts() != typed) return;
  stored_ = typed;
  console_.Form4.unload();
}

void CallerDataEntry::store(int line, const EntryTexts& typed) {
  CallerRecord& record = console_.lines.CallerData(line);
  for (std::size_t i = 0; i < typed.size(); ++i) {
    const std::string text = without_controls(typed[i]);
    console_.Lineweir.column_labels(entry_fields[i].column)(line).caption = text;
    record.set(entry_fields[i].field, text);
  }
}

std::string CallerDataEntry::sender_name() const {
  const auto name = trimmed(OperatorName);
  return std::string(TextWrit_NullRemove(name.empty() ? console_.program.ClientId : name));
}

std::string CallerDataEntry::caller_data_text(int line) {
  CallerRecord& record = console_.lines.CallerData(line);
  CallerDetails data = caller_data_of(sender_name(), record);
  for (std::size_t i = 0; i < data.fields.size(); ++i) {
    data.fields[i] = std::string(TextWrit_NullRemove(data.fields[i]));
    const CallerField field = entry_fields[i].field;
    const bool fixed = caller_fields[static_cast<std::size_t>(field)].width != 0;
    if (fixed) record.set(field, data.fields[i]);
  }
  return encode_caller_data(data);
}

void CallerDataEntry::send(int line, const std::string& text) {
  const MainForm& form = console_.Lineweir;
  if (form.NetworkConnectionOption.checked) {
    console_.remote.serial_input().set_property(
        "CallerDataServer", {std::int64_t{line + 1}, std::int64_t{console_.program.GroupNumber}},
        text);
  } else if (form.WinsockMenu.checked) {
    ServerPacket packet = console_.server.packet(ClientCommand::CmdCallerData);
    packet.LineNo = field_byte(line);
    packet.set_buffer(text);
    console_.server.send(std::move(packet));
  }
}

void CallerDataEntry::tell_data_cleared(int line) { send(line, ""); }

void CallerDataEntry::UnloadTimer_Timer() {
  guard(console_, "Form4_UnloadTimer_Timer", [&] { console_.Form4.unload(); });
}

}  // namespace lineweir

#include "callerdata/caller_data.h"

#include <algorithm>

#include "callcontrol/socket_trap.h"
#include "callerdata/entry_fit.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"

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
    box.on_change = [this, entry = box.index()] { TheText_Change(entry); };
    box.on_edit = [this, entry = box.index()](std::string& text, int& caret) {
      TheText_Edit(entry, text, caret);
    };
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
    form.UnloadTimer.enabled = !allowed();
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
  const bool idle = console_.lines.StatusLetter(held_line_) == ' ';
  const auto draft = drafts_.find(held_line_, held_call_, idle);
  had_ = draft ? draft->had : EntryTexts{};
  show_texts(draft ? draft->typed : had_);
  for (int entry = 1; entry <= caller_text_count; ++entry) {
    console_.Form4.TheText(entry).caret_to_end();
  }
  notice_ = {};
  follow_line();
}

void CallerDataEntry::data_arrived(int line) {
  if (line == held_line()) follow_line();
}

void CallerDataEntry::follow_line() {
  EntryWork now = work();
  const std::set<int> changed_elsewhere = now.follow(line_texts());
  had_ = now.had;
  show_texts(now.typed);
  notice_.elsewhere.insert(changed_elsewhere.begin(), changed_elsewhere.end());
  show_notice();
}

void CallerDataEntry::show_texts(const EntryTexts& texts) {
  for (int entry = 1; entry <= caller_text_count; ++entry) {
    TextBox& box = console_.Form4.TheText(entry);
    const std::string& text = texts[static_cast<std::size_t>(entry - 1)];
    if (box.text == text) continue;
    box.text = text;
    box.caret_to_end();
  }
}

void CallerDataEntry::show_notice() {
  CallerDataForm& form = console_.Form4;
  form.show_notice(
      notice_text(notice_, work(), [&](int entry) { return form.Label(entry).caption.get(); }));
}

// What the line has, for the fields that aren't in use too: they keep it when the data are saved.
EntryTexts CallerDataEntry::line_texts() const {
  EntryTexts record;
  EntryTexts row;
  for (std::size_t i = 0; i < record.size(); ++i) {
    record[i] = console_.lines.CallerData(held_line_)[entry_fields[i].field];
    row[i] = console_.Lineweir.column_labels(entry_fields[i].column)(held_line_).caption;
  }
  return shown_texts(record, row);
}

EntryTexts CallerDataEntry::texts() const {
  EntryTexts typed;
  for (std::size_t i = 0; i < typed.size(); ++i) {
    typed[i] = console_.Form4.TheText(static_cast<int>(i) + 1).text;
  }
  return typed;
}

void CallerDataEntry::keep_draft() {
  if (work().any_touched()) {
    drafts_.keep(held_line_, held_call_, work());
  } else {
    drafts_.drop(held_line_);
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

void CallerDataEntry::TheText_Edit(int Index, std::string& text, int& caret) {
  guard(console_, "Form4_TheText_Edit", [&] {
    const auto fit = Index == phone_number_entry ? fit_number : fit_text;
    EditedText fitted =
        fit(console_.Form4.TheText(Index).text.get(), {text, caret}, entry_room(Index));
    text = std::move(fitted.text);
    caret = fitted.caret;
    notice_.full = fitted.left_out ? Index : 0;
    if (fitted.left_out) show_notice();
  });
}

void CallerDataEntry::TheText_Change(int Index) {
  guard(console_, "Form4_TheText_Change", [&] {
    show_notice();
    if (Index == phone_number_entry) {
      console_.caller_memory.look_up();
    } else {
      console_.caller_memory.offer();
    }
  });
}

bool CallerDataEntry::allowed() {
  if (console_.program.CallerDataAllowed) return true;
  console_.messages.ShowMessage("Caller Data Entry not allowed in this user profile");
  return false;
}

void CallerDataEntry::Command3D1_Click() {
  if (!allowed()) return;
  const int line = console_.lines.CurrentDataLine;
  const int held = held_line();
  const EntryTexts typed = texts();
  std::string text;
  const bool stored = guard(console_, save_handler, [&] {
    store(line, typed);
    text = console_.data_sender.caller_data_text(line);
  });
  const auto send = [&] { console_.data_sender.send(line, text); };
  if (!stored || !socket_trap(console_, save_handler, send)) return;
  // The loop may have run in between, and the form may hold something else by now.
  if (held_line() != held || texts() != typed) return;
  had_ = typed;
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

void CallerDataEntry::UnloadTimer_Timer() {
  guard(console_, "Form4_UnloadTimer_Timer", [&] { console_.Form4.unload(); });
}

}  // namespace lineweir

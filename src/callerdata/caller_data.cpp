#include "callerdata/caller_data.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "callerdata/call_log.h"
#include "callerdata/caller_data_sender.h"
#include "callerdata/caller_memory.h"
#include "callerdata/entry_fit.h"
#include "callerdata/left_call.h"
#include "callerdata/line_texts.h"
#include "elements/key_characters.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto save_handler = "Form4_Command3D1_Click";
// Control characters part fields and frames on their way to other consoles. None can be typed, but
// some can be pasted.
EntryTexts without_controls(EntryTexts texts) {
  for (std::string& text : texts) {
    std::ranges::replace_if(
        text, [](char c) { return code_of(c) > 0 && code_of(c) < ' '; }, ' ');
  }
  return texts;
}

bool all_blank(const EntryTexts& texts) {
  return std::ranges::all_of(texts, [](const auto& text) { return trimmed(text).empty(); });
}

}  // namespace

CallerDataEntry::CallerDataEntry(ConsoleState& state, CallLog& call_log,
                                 CallerDataSender& data_sender, LineTexts& line_texts,
                                 CallerMemory& caller_memory)
    : state_(state),
      call_log_(call_log),
      data_sender_(data_sender),
      line_texts_(line_texts),
      caller_memory_(caller_memory),
      drafts_(state, call_log) {
  CallerDataForm& form = state.Form4;
  wire(form.on_load, state_.trace, "Form4_Form_Load", [this] { Form_Load(); });
  wire(form.on_unload, state_.trace, "Form4_Form_Unload", [this] { Form_Unload(); });
  form.TheText.wire_each([this](TextBox& box) {
    wire(box.on_key_press, state_.trace, "Form4_TheText_KeyPress",
         [this, entry = box.index()](int& key) { TheText_KeyPress(entry, key); });
    wire(box.on_change, state_.trace, "Form4_TheText_Change",
         [this, entry = box.index()] { TheText_Change(entry); });
    wire(box.on_edit, state_.trace, "Form4_TheText_Edit",
         [this, entry = box.index()](std::string& text, int& caret) {
           TheText_Edit(entry, text, caret);
         });
  });
  wire(form.Command3D1.on_click, state_.trace, save_handler, [this] { Command3D1_Click(); });
  wire(form.DiscardCall.on_click, state_.trace, "Form4_DiscardCall_Click",
       [this] { DiscardCall_Click(); });
  wire(form.OtherCall.on_click, state_.trace, "Form4_OtherCall_Click",
       [this] { OtherCall_Click(); });
  wire(form.UnloadTimer.on_timer, state_.trace, "Form4_UnloadTimer_Timer",
       [this] { UnloadTimer_Timer(); });
  wire(form.DraftTimer.on_timer, state_.trace, "Form4_DraftTimer_Timer",
       [this] { DraftTimer_Timer(); });
  wire(state.Lineweir.Data1.on_change, state_.trace, "Lineweir_Data1_Change",
       [this] { drafts_.lines_changed(); });
  call_log.on_logging = [this](int line, const EndedCall& ended) {
    if (held_.ended && is_row_of(held_.ended->record, ended.record))
      held_.ended->record.columns = ended.record.columns;
    drafts_.logging(line, ended);
  };
  call_log.on_call_ended = [this](const EndedCall& ended) { call_ended(ended); };
}

LogFieldFlags CallerDataEntry::all_fields_on() {
  LogFieldFlags flags;
  flags.fill(true);
  return flags;
}

bool CallerDataEntry::anybody_on(int line) const {
  return line >= 0 && line < state_.lines.LineCount && state_.lines.has_caller(line);
}

bool CallerDataEntry::holds_ended_call_of(int line) const {
  return state_.Form4.loaded() && held_.line == line && held_.ended;
}

void CallerDataEntry::show_for_line(int line) {
  if (anybody_on(line)) return show(line, call_log_.call_on(line));
  if (holds_ended_call_of(line)) return show(line, held_.call);
  const EntryDraft* ended = drafts_.ended_on(line);
  show(line, ended == nullptr ? call_log_.call_on(line) : ended->call);
}

void CallerDataEntry::show_for_answered_line(int line) {
  if (holds_ended_call_of(line) && work().any_touched()) return show_buttons();
  show_for_line(line);
}

void CallerDataEntry::show(int line, CallNumber call) {
  CallerDataForm& form = state_.Form4;
  const bool holds_other = form.loaded() && held_.call != call;
  if (holds_other) keep_draft();
  state_.lines.CurrentDataLine = line;
  form.caption = "Caller Data - Line " + std::to_string(line + 1);
  chosen_call_ = call;
  if (holds_other) form.on_load();
  form.show();
  chosen_call_ = 0;
}

void CallerDataEntry::Form_Load() {
  CallerDataForm& form = state_.Form4;
  held_.line = state_.lines.CurrentDataLine;
  held_.call = chosen_call_ != 0 ? chosen_call_ : call_log_.call_on(held_.line);
  caller_memory_.hide();
  form.UnloadTimer.enabled = !allowed();
  form.Label(user_entry).caption = trimmed(state_.Lineweir.CaptionLabel(user_column).caption);
  form.number_first = asks_number_first && caller_memory_.on();
  form.lay_out(LogFieldOn, caller_memory_.kind());
  fill_texts();
  const bool number_stands =
      form.number_first && !form.TheText(phone_number_entry).text.get().empty();
  form.focus_next(number_stands ? phone_number_entry : 0);
}

void CallerDataEntry::Form_Unload() {
  state_.Form4.UnloadTimer.enabled = false;
  keep_draft();
  held_ = {};
}

void CallerDataEntry::fill_texts() {
  CallerDataForm& form = state_.Form4;
  const EntryDraft* found = drafts_.find(held_.call);
  const EntryDraft draft = found == nullptr ? EntryDraft{} : *found;
  held_.ended = draft.ended;
  notice_ = {};
  if (held_.ended) notice_.end = held_.ended->how;
  had_ = draft.work.had;
  form.show_texts(draft.work.typed);
  for (int entry = 1; entry <= entry_field_count; ++entry) form.TheText(entry).caret_to_end();
  follow_line();
  // A number that stood there already hasn't changed.
  if (!form.MemoryLabel.visible) caller_memory_.look_up();
  show_buttons();
}

void CallerDataEntry::data_arrived(int line) {
  drafts_.lines_changed();
  if (state_.Form4.loaded() && line == held_.line) follow_line();
}

void CallerDataEntry::follow_line() {
  if (held_.ended) return show_notice();
  EntryWork now = work();
  const std::set<int> changed_elsewhere = now.follow(line_texts_.of(held_.line));
  had_ = now.had;
  state_.Form4.show_texts(now.typed);
  notice_.elsewhere.insert(changed_elsewhere.begin(), changed_elsewhere.end());
  show_notice();
}

void CallerDataEntry::call_ended(const EndedCall& ended) {
  drafts_.call_ended(ended);
  if (!state_.Form4.loaded() || held_.call != ended.call) return;
  held_.ended = ended;
  notice_.end = ended.how;
  show_notice();
  show_buttons();
}

void CallerDataEntry::lines_told(const std::set<int>& lines) {
  call_log_.lines_told();
  drafts_.log_left_calls(lines);
}

void CallerDataEntry::lines_changed() {
  for (int line = 0; line < state_.lines.LineCount; ++line) take_up_left_call(line);
  drafts_.lines_changed();
  if (!state_.Form4.loaded()) return;
  if (held_.ended) show_buttons();
  if (on_held_changed) on_held_changed();
}

void CallerDataEntry::take_up_left_call(int line) {
  if (!anybody_on(line)) return;
  const CallNumber call = call_log_.call_on(line);
  const bool has_draft = drafts_.find(call) != nullptr;
  if (holds_ended_call_of(line) && !has_draft && is_still_there(*held_.ended, line)) {
    keep_draft();
    drafts_.take_up(held_.call, call);
    held_.call = call;
    return fill_texts();
  }
  for (const EntryDraft& draft : drafts_.left_on(line)) {
    if (!is_still_there(*draft.ended, line)) continue;
    const bool holds_call = state_.Form4.loaded() && held_.call == call;
    // What was typed for it since isn't thrown away.
    if (holds_call && work().any_touched()) return;
    drafts_.take_up(draft.call, call);
    if (holds_call) fill_texts();
    return;
  }
}

bool CallerDataEntry::is_still_there(const EndedCall& left, int line) {
  return left.last_seen && left.last_seen->group == state_.program.GroupNumber &&
         left.last_seen->servers == trimmed(state_.login.ServerHost) &&
         is_same_call(*left.last_seen, {state_.lines.ClockBase(line), call_log_.noticed(line)},
                      state_.services.clock.now());
}

std::optional<CallerDataEntry::HeldCaller> CallerDataEntry::held_caller() const {
  if (!state_.Form4.loaded() || held_.ended || held_.line == no_line) return std::nullopt;
  return HeldCaller{held_.line, held_.call};
}

bool CallerDataEntry::is_on_line(const HeldCaller& caller) const {
  return call_log_.call_on(caller.line) == caller.call;
}

void CallerDataEntry::say(const std::string& remark) {
  notice_.remark = remark;
  show_notice();
}

std::vector<int> CallerDataEntry::lines_with_unsaved_data() {
  if (state_.Form4.loaded()) keep_draft();
  return drafts_.lines_of_present_calls();
}

void CallerDataEntry::leave_lines(int first) {
  for (int line = first; line < state_.lines.LineCount; ++line) {
    call_log_.leave(line, CallEnd::LineGone);
    line_texts_.caller_gone(line);
  }
}

void CallerDataEntry::show_notice() {
  CallerDataForm& form = state_.Form4;
  form.show_notice(
      notice_text(notice_, work(), [&](int entry) { return form.Label(entry).caption.get(); }));
}

void CallerDataEntry::show_buttons() {
  CallerDataForm& form = state_.Form4;
  const bool ended = held_.ended.has_value();
  form.DiscardCall.visible = ended;
  form.OtherCall.caption = ended ? "&New caller" : "Form&er caller";
  form.OtherCall.visible = ended ? anybody_on(held_.line) : drafts_.ended_on(held_.line) != nullptr;
  if (on_held_changed) on_held_changed();
}

EntryWork CallerDataEntry::work() const { return {had_, state_.Form4.texts()}; }

void CallerDataEntry::keep_draft() {
  state_.Form4.DraftTimer.enabled = false;
  if (held_.call == 0) return drafts_.lines_changed();
  if (work().any_touched()) {
    drafts_.keep({held_.call, held_.line, work(), held_.ended});
  } else {
    drafts_.settle(held_.call);
  }
}

void CallerDataEntry::restore_drafts() {
  std::string lines;
  for (const EntryDraft& draft : drafts_.restore()) {
    lines += (lines.empty() ? "line " : ", line ") + std::to_string(draft.line + 1);
    const auto name = trimmed(draft.work.typed[name_entry - 1]);
    if (!name.empty()) lines += " (" + std::string(name) + ")";
  }
  if (lines.empty()) return;
  state_.messages.ShowMessage("Caller data was typed and not saved when Lineweir ended: " + lines +
                              ". Open the caller data of the line to save it.");
}

void CallerDataEntry::TheText_KeyPress(int Index, int& KeyAscii) {
  CallerDataForm& form = state_.Form4;
  caller_memory_.key_pressed(KeyAscii);
  if (KeyAscii == enter_key) {
    KeyAscii = 0;
    if (!form.focus_next(Index)) form.Command3D1.on_click();
    return;
  }
  if (Index != gender_entry) return;
  TextBox& gender = form.TheText(gender_entry);
  if (KeyAscii == 'F' || KeyAscii == 'f') gender.text = "Female";
  if (KeyAscii == 'M' || KeyAscii == 'm') gender.text = "Male";
  gender.caret_to_end();
  KeyAscii = 0;
}

void CallerDataEntry::TheText_Edit(int Index, std::string& text, int& caret) {
  const auto fit = Index == phone_number_entry ? fit_number : fit_text;
  EditedText fitted = fit(state_.Form4.TheText(Index).text.get(), {text, caret}, entry_room(Index));
  text = std::move(fitted.text);
  caret = fitted.caret;
  notice_.full = fitted.left_out ? Index : 0;
  notice_.remark.clear();
  if (fitted.left_out) show_notice();
}

void CallerDataEntry::TheText_Change(int Index) {
  state_.Form4.DraftTimer.enabled = true;
  show_notice();
  if (Index == phone_number_entry) {
    caller_memory_.look_up();
  } else {
    caller_memory_.offer();
  }
}

bool CallerDataEntry::allowed() {
  if (state_.program.CallerDataAllowed) return true;
  state_.messages.ShowMessage("Caller Data Entry not allowed in this user profile");
  return false;
}

void CallerDataEntry::Command3D1_Click() { save(); }

bool CallerDataEntry::save() {
  if (!allowed()) return false;
  return held_.ended ? save_to_log(held_.ended->record) : save_to_line();
}

bool CallerDataEntry::save_to_line() {
  const int line = state_.lines.CurrentDataLine;
  const CallNumber call = call_log_.call_on(line);
  const CallNumber held = held_.call;
  const EntryTexts typed = state_.Form4.texts();
  store(line, typed);
  const std::string text = data_sender_.caller_data_text(line);
  // Between two tries the call may end, and another caller's row must not get its data.
  const auto still_there = [&] { return call_log_.call_on(line) == call; };
  const bool sent = data_sender_.send(save_handler, line, text, still_there);
  // The loop may have run in between, and the form may hold something else by now.
  if (!sent || held_.ended || held_.call != held || state_.Form4.texts() != typed) return false;
  close_done();
  return true;
}

void CallerDataEntry::store(int line, const EntryTexts& typed) {
  const EntryTexts texts = without_controls(typed);
  CallerRecord& record = state_.lines.CallerData(line);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    state_.Lineweir.labels_of(entry_fields[i].field)(line).caption = texts[i];
    record.set(entry_fields[i].field, texts[i]);
  }
  line_texts_.renewed(line);
  call_log_.record_saved(line);
}

bool CallerDataEntry::save_to_log(platform::LoggedCall call) {
  const EntryTexts texts = without_controls(state_.Form4.texts());
  const bool nothing_known = call.file.empty() && all_blank(texts);
  if (drafts_.complete_left(held_.call, texts)) {
    close_done();
    return true;
  }
  if (!nothing_known && !call_log_.complete(std::move(call), texts)) {
    state_.messages.ShowMessage(
        "The caller has hung up, and no call log is chosen that could keep these data. Choose one "
        "with Options, Database Path, and save again.");
    return false;
  }
  close_done();
  return true;
}

void CallerDataEntry::close_done() {
  had_ = state_.Form4.texts();
  state_.Form4.unload();
}

void CallerDataEntry::DiscardCall_Click() { close_done(); }

void CallerDataEntry::OtherCall_Click() {
  const int line = held_.line;
  if (held_.ended) return show(line, call_log_.call_on(line));
  const EntryDraft* former = drafts_.ended_on(line);
  if (former != nullptr) show(line, former->call);
}

void CallerDataEntry::UnloadTimer_Timer() { state_.Form4.unload(); }

void CallerDataEntry::DraftTimer_Timer() { keep_draft(); }

}  // namespace lineweir

#include "forms/caller_data_form.h"

#include <algorithm>
#include <string_view>

namespace lineweir {
namespace {

constexpr int form_width = 6750;
constexpr int memory_left = 6750;
constexpr int memory_width = 3420;
constexpr int form_width_with_memory = memory_left + memory_width + 180;
constexpr int memory_fill_width = 2600;
constexpr int button_height = 375;
// The room that the caller's history takes, however few fields there are.
constexpr int memory_height = 1500;
constexpr int flag_height = 500;
constexpr int gap = 120;
constexpr int notice_width = 6490;
constexpr int notice_line_height = 250;
// Fewer than a line of the notice has room for, whatever the letters.
constexpr std::size_t notice_line_length = 50;

// How many lines a text takes that is broken where a line is full.
int lines_of(std::string_view text) {
  std::size_t lines = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find("\r\n", begin), text.size());
    lines += (end - begin) / notice_line_length + 1;
    begin = end + 2;
  }
  return static_cast<int>(lines);
}

}  // namespace

CallerDataForm::CallerDataForm() : Form("Form4") {
  width = form_width;
  TheText(0).visible = false;
  Label(0).visible = false;
  for (int entry = 1; entry <= entry_field_count; ++entry) {
    const int row_top = caller_row_top(entry - 1);
    lineweir::Label& heading = Label.load(entry);
    heading.caption = entry_field(entry).title;
    heading.move(120, row_top, 1500, 300);
    heading.visible = true;
    TextBox& text = TheText.load(entry);
    text.move(1700, row_top, 4910, 315);
    text.visible = true;
  }
  Command3D1.move(3375, 0, 1215, button_height);
  SaveReady.move(4710, 0, 1900, button_height);
  SaveReady.visible = false;
  DiscardCall.move(120, 0, 1215, button_height);
  DiscardCall.visible = false;
  OtherCall.move(1455, 0, 1800, button_height);
  OtherCall.visible = false;
  MemoryLabel.move(memory_left, caller_row_top(0), memory_width, memory_height);
  MemoryLabel.visible = false;
  MemoryFill.move(memory_left, caller_row_top(0) + memory_height, memory_fill_width, button_height);
  MemoryFill.visible = false;
  const int below_fill = caller_row_top(0) + memory_height + button_height;
  FlagLabel.move(memory_left, below_fill, memory_width, flag_height);
  FlagLabel.visible = false;
  FlagCaller.move(memory_left, below_fill + flag_height, 1215, button_height);
  FlagCaller.visible = false;
  NoticeLabel.move(120, 0, notice_width, notice_line_height);
  NoticeLabel.fore_color = color_yellow;
  NoticeLabel.visible = false;
  fit_height();
}

void CallerDataForm::lay_out(const LogFieldFlags& fields, Memory memory) {
  fields_ = 0;
  for (int entry = 1; entry <= entry_field_count; ++entry) {
    const bool in_use = fields[static_cast<std::size_t>(entry - 1)];
    TextBox& text = TheText(entry);
    if (in_use) {
      text.top = caller_row_top(fields_);
      Label(entry).top = caller_row_top(fields_);
      ++fields_;
    }
    text.enabled = in_use;
    text.visible = in_use;
    Label(entry).visible = in_use;
  }
  show_memory(memory);
}

void CallerDataForm::show_memory(Memory memory) {
  memory_ = memory;
  width = memory == Memory::None ? form_width : form_width_with_memory;
  fit_height();
}

EntryTexts CallerDataForm::texts() const {
  EntryTexts texts;
  for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = TheText(static_cast<int>(i) + 1).text;
  return texts;
}

void CallerDataForm::show_texts(const EntryTexts& texts) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    TextBox& box = TheText(static_cast<int>(i) + 1);
    if (box.text == texts[i]) continue;
    box.text = texts[i];
    box.caret_to_end();
  }
}

std::vector<int> CallerDataForm::order() const {
  std::vector<int> entries;
  const auto add = [&](int entry) {
    if (TheText(entry).enabled) entries.push_back(entry);
  };
  if (number_first) add(phone_number_entry);
  for (int entry = 1; entry <= entry_field_count; ++entry) {
    if (!number_first || entry != phone_number_entry) add(entry);
  }
  return entries;
}

bool CallerDataForm::focus_next(int entry) {
  const std::vector<int> entries = order();
  auto next = entries.begin();
  if (const auto present = std::ranges::find(entries, entry); present != entries.end()) {
    next = present + 1;
  } else if (entry != 0) {
    // Behind a field that isn't in use comes what stands below it.
    next = std::ranges::find_if(entries, [entry](int other) { return other > entry; });
  }
  if (next == entries.end()) return false;
  TheText(*next).set_focus();
  return true;
}

void CallerDataForm::show_notice(const std::string& text) {
  NoticeLabel.caption = text;
  NoticeLabel.visible = !text.empty();
  NoticeLabel.height = notice_line_height * std::max(1, lines_of(text));
  fit_height();
}

void CallerDataForm::fit_height() {
  for (Button* button : {&Command3D1, &SaveReady, &DiscardCall, &OtherCall}) {
    button->top = caller_row_top(fields_);
  }
  int below_fields = caller_row_top(fields_) + button_height;
  NoticeLabel.top = below_fields + gap;
  // The first line of a notice has its room from the start.
  below_fields = NoticeLabel.top + NoticeLabel.height;
  int below_memory = caller_row_top(0) + memory_height + button_height;
  if (memory_ == Memory::Server) below_memory = FlagCaller.top + FlagCaller.height;
  height = std::max(below_fields, below_memory) + gap;
}

}  // namespace lineweir

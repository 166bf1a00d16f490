#include "forms/caller_data_form.h"

#include <algorithm>
#include <string_view>

namespace lineweir {
namespace {

constexpr int form_width = 9600;
constexpr int memory_left = 6000;
constexpr int memory_width = form_width - memory_left - 180;
constexpr int memory_fill_width = 2600;
constexpr int button_height = 375;
// The room that the caller's history takes, however few fields there are.
constexpr int memory_height = 1500;
constexpr int gap = 120;
constexpr int notice_width = 5680;
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
    text.move(1700, row_top, 4100, 315);
    text.visible = true;
  }
  Command3D1.move(4585, 0, 1215, button_height);
  DiscardCall.move(120, 0, 1215, button_height);
  DiscardCall.visible = false;
  OtherCall.move(1455, 0, 1800, button_height);
  OtherCall.visible = false;
  MemoryLabel.move(memory_left, caller_row_top(0), memory_width, memory_height);
  MemoryLabel.visible = false;
  MemoryFill.move(memory_left, caller_row_top(0) + memory_height, memory_fill_width, button_height);
  MemoryFill.visible = false;
  NoticeLabel.move(120, 0, notice_width, notice_line_height);
  NoticeLabel.fore_color = color_yellow;
  NoticeLabel.visible = false;
  fit_height();
}

void CallerDataForm::lay_out(const LogFieldFlags& fields) {
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

bool CallerDataForm::focus_next(int entry) {
  for (int next = entry + 1; next <= entry_field_count; ++next) {
    TextBox& box = TheText(next);
    if (!box.enabled) continue;
    box.set_focus();
    return true;
  }
  return false;
}

void CallerDataForm::show_notice(const std::string& text) {
  NoticeLabel.caption = text;
  NoticeLabel.visible = !text.empty();
  NoticeLabel.height = notice_line_height * lines_of(text);
  fit_height();
}

void CallerDataForm::fit_height() {
  for (Button* button : {&Command3D1, &DiscardCall, &OtherCall}) {
    button->top = caller_row_top(fields_);
  }
  int below_fields = caller_row_top(fields_) + button_height;
  NoticeLabel.top = below_fields + gap;
  if (NoticeLabel.visible) below_fields = NoticeLabel.top + NoticeLabel.height;
  const int below_memory = caller_row_top(0) + memory_height + button_height;
  height = std::max(below_fields, below_memory) + gap;
}

}  // namespace lineweir

#pragma once

#include <vector>

#include "elements/button.h"
#include "elements/control_array.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/text_box.h"
#include "elements/timer.h"
#include "forms/entry_fields.h"

namespace lineweir {

// The top of a field on Form4, by its place among those in use, from 0.
constexpr int caller_row_top(int place) { return 120 + 375 * place; }

// Form4, in which the screener types who is calling. The fields are the elements of both arrays
// from 1 on; element 0 is their model and never shown.
class CallerDataForm : public Form {
 public:
  CallerDataForm();

  ControlArray<TextBox> TheText{*this, "TheText"};
  ControlArray<lineweir::Label> Label{*this, "Label"};
  Button Command3D1{*this, "Command3D1", "&Save"};
  // Saves, and marks the caller ready as the producer's READY key does.
  Button SaveReady{*this, "SaveReady", "Save and &Ready"};
  Timer UnloadTimer{*this, "UnloadTimer", false, 100};

  // Of a call that has ended: throws away what was typed. And between such a call and the one that
  // is on its line now.
  Button DiscardCall{*this, "DiscardCall", "&Discard"};
  Button OtherCall{*this, "OtherCall"};
  // What is typed goes to the file of drafts when it ticks.
  Timer DraftTimer{*this, "DraftTimer", false, 500};

  // The number is asked for at the server when it ticks: typing asks once.
  Timer AskTimer{*this, "AskTimer", false, 300};

  // The caller's flag, and the button that sets it.
  lineweir::Label FlagLabel{*this, "FlagLabel"};
  Button FlagCaller{*this, "FlagCaller", "Fla&g..."};

  // What is known of the caller, and the offer to fill it in.
  lineweir::Label MemoryLabel{*this, "MemoryLabel"};
  Button MemoryFill{*this, "MemoryFill", "&Fill in"};

  // What the user has to know while typing: below the fields, where nothing else moves for it.
  lineweir::Label NoticeLabel{*this, "NoticeLabel"};

  // Who may know the caller.
  enum class Memory { None, Log, Server };

  // Shows the fields in use, closed up, and hides the others.
  void lay_out(const LogFieldFlags& fields, Memory memory);
  // The same fields with another memory.
  void show_memory(Memory memory);
  Memory memory() const { return memory_; }

  // The telephone number is asked for before the other fields. The elements stand in their own
  // order all the same; a window follows order().
  bool number_first = false;

  // The fields in use, in the order in which they are gone through.
  std::vector<int> order() const;

  EntryTexts texts() const;
  // Where that changes a text the caret goes to its end.
  void show_texts(const EntryTexts& texts);

  // Gives the focus to the field in use that comes behind this one, or to the first of all behind
  // field 0; false where there is none.
  bool focus_next(int entry);

  // The empty text shows nothing.
  void show_notice(const std::string& text);

 private:
  void fit_height();

  int fields_ = entry_field_count;
  Memory memory_ = Memory::None;
};

}  // namespace lineweir

#pragma once

#include <string>

#include "callerdata/entry_drafts.h"
#include "callerdata/entry_notice.h"
#include "core/settings_record.h"

namespace lineweir {

struct Console;

// The entry of a caller's details: Form4 and what becomes of its texts.
class CallerDataEntry {
 public:
  explicit CallerDataEntry(Console& console);

  // Shows Form4 for a line, whose data it then edits. A form that holds the line already only comes
  // to the front; one that holds another is loaded anew, and what was typed into it is kept.
  void show_for_line(int line);

  // The line has other data now, from another console: fields of its form that the user hasn't
  // touched follow.
  void data_arrived(int line);

  // The name that stamps caller data; the user's, once a login was accepted while it was blank.
  std::string OperatorName;
  // Which of the ten fields are in use.
  LogFieldFlags LogFieldOn = all_fields_on();

  // The line whose data Form4 holds, while it is loaded; else no_line.
  int held_line() const;

 private:
  static LogFieldFlags all_fields_on();

  void Form_Load();
  void Form_Unload();
  void TheText_KeyPress(int Index, int& KeyAscii);
  void TheText_Change(int Index);
  void TheText_Edit(int Index, std::string& text, int& caret);
  void Command3D1_Click();
  void UnloadTimer_Timer();

  // Whether this user may enter data; says so where not.
  bool allowed();
  void lay_out_fields();
  void fill_texts();
  void follow_line();
  void show_texts(const EntryTexts& texts);
  void show_notice();
  void focus_first();
  bool focus_next(int entry);
  EntryTexts texts() const;
  EntryWork work() const { return {had_, texts()}; }
  EntryTexts line_texts() const;
  void keep_draft();
  void store(int line, const EntryTexts& typed);

  Console& console_;
  EntryDrafts drafts_;
  int held_line_ = 0;
  // The number of the call on the held line when the form was loaded.
  int held_call_ = 0;
  // What the line had when the fields were last filled.
  EntryTexts had_;
  EntryNotice notice_;
};

}  // namespace lineweir

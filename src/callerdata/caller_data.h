#pragma once

#include <string>

#include "callerdata/entry_drafts.h"
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

  // Tells the other consoles through the server that the line has no caller's data any more;
  // nothing on the serial link. Fails as the road to the server does.
  void tell_data_cleared(int line);

  // The name that stamps caller data; the user's, once a login was accepted while it was blank.
  std::string OperatorName;
  // The same, trimmed, without code 0 at its ends; ClientId while it is blank.
  std::string sender_name() const;
  // Which of the ten fields are in use.
  LogFieldFlags LogFieldOn = all_fields_on();

  // The line whose data Form4 holds, while it is loaded; else no_line.
  int held_line() const;

 private:
  static LogFieldFlags all_fields_on();

  void Form_Load();
  void Form_Unload();
  void TheText_KeyPress(int Index, int& KeyAscii);
  void Command3D1_Click();
  void UnloadTimer_Timer();

  void lay_out_fields();
  void fill_texts();
  void focus_first();
  bool focus_next(int entry);
  EntryTexts texts() const;
  EntryTexts stored_texts() const;
  void keep_draft();
  void store(int line, const EntryTexts& typed);
  std::string caller_data_text(int line);
  void send(int line, const std::string& text);

  Console& console_;
  EntryDrafts drafts_;
  int held_line_ = 0;
  // The number of the call on the held line when the form was loaded, and what the line had then.
  int held_call_ = 0;
  EntryTexts stored_;
};

}  // namespace lineweir

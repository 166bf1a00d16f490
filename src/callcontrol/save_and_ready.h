#pragma once

#include <string>

#include "elements/form.h"

namespace lineweir {

class CallerDataEntry;
class NextCaller;
struct ConsoleState;

// Form4's button for the screener's usual next step, and Ctrl+Enter: what is typed is saved, and
// the caller is marked ready as by the producer's READY key. That key takes every caller at the
// handset; this takes the one whose data the form holds and no other. Where it can't, the button
// says why.
class SaveAndReady final : private FormWatch {
 public:
  SaveAndReady(ConsoleState& state, CallerDataEntry& caller_data, NextCaller& next_caller);

 private:
  void Form_KeyDown(int& KeyCode, int Shift);
  void SaveReady_Click();

  // Why the caller can't be marked ready now; empty where nothing stands against it.
  std::string why_not() const;
  void save_and_mark_ready();
  void show_button();
  void changed(Element& element, PropertyId property) override;

  ConsoleState& state_;
  CallerDataEntry& caller_data_;
  NextCaller& next_caller_;
  bool under_way_ = false;
  // What was said where the user types.
  std::string said_;
};

}  // namespace lineweir

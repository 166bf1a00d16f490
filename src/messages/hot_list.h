#pragma once

#include <string>

#include "messages/hot_list_file.h"

namespace lineweir {

class Failure;
struct ConsoleState;

// The hot list of FlashMessA: stock messages in a file that the user chooses, and what he does to
// them. Whatever fails is told in a sentence, and leaves the list and the message as they are.
class HotList {
 public:
  explicit HotList(ConsoleState& state);

  // Shows the list that MessageFile names, where it is another one than is shown.
  void keep_up();

  // The same again and again while the list is shown: takes over what other programs have changed,
  // and opens a file that couldn't be opened as soon as it can be. Tells nothing.
  void follow();

  // Makes a new, empty list; false, with a message, where that fails.
  bool FlashMessA_MessCreateDatabase(const std::string& file);

 private:
  void AddCurrent_Click();
  void RemoveCurrent_Click();
  void UpdateButton_Click();
  void BrowseButton_Click();
  void DBList1_Drag(int from, int to);
  void DBList1_KeyDown(int& key_code, int shift);

  // A new list without an ending has that by which it is found again.
  std::string with_ending(const std::string& file) const;
  // Opens the file in place of the one that is shown.
  void open(const std::string& file);
  // The same for one that the user has chosen; one that isn't there is made.
  bool open_or_create(const std::string& file);
  void show_entries();
  void show_none();
  void refuse(const std::string& handler, const Failure& failure);

  ConsoleState& state_;
  HotListFile file_;
  // The MessageFile that was opened, or that couldn't be.
  std::string wanted_;
};

}  // namespace lineweir

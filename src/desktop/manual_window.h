#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "desktop/dialog_frame.h"
#include "desktop/entry_place.h"
#include "desktop/manual_search.h"
#include "elements/form.h"

class QLabel;
class QListWidget;

namespace lineweir {

class ManualPages;
class MainWindow;
struct Console;

class ManualForm : public Form {
 public:
  ManualForm();
};

// The operator's manual in a window of its own, which blocks nothing and waits for nobody: the show
// goes on beside it. It is made when it is first opened.
class ManualWindow {
 public:
  ManualWindow(Console& console, WindowFocus& focus, std::function<MainWindow*()> main_window);

  ManualForm& form() { return form_; }
  const ManualForm& form() const { return form_; }
  // Null until it is first opened.
  QWidget* window() const { return frame_.window(); }

  // Opens it, or brings it to the front, at the section that tells of the form of that name. For
  // the main form it tells what a message says that is there, or goes on where the reader was.
  void open_for(const std::string& form_name);

  void flush() { frame_.flush(); }

 private:
  // Wires what was drawn; its widgets live as long as the window.
  void take_window();
  void show_headings();
  void go_to_form(const std::string& form_name);
  void tell_hits();
  void mark_heading();

  Console& console_;
  WindowFocus& focus_;
  ManualForm form_;
  DialogFrame frame_;
  EntryPlace place_;
  ManualPages* pages_ = nullptr;
  QListWidget* headings_ = nullptr;
  QLabel* hits_ = nullptr;
  std::unique_ptr<ManualSearch> search_;
};

}  // namespace lineweir

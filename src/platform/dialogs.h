#pragma once

#include <optional>
#include <string>

namespace lineweir::platform {

struct FileQuestion {
  std::string title;
  // Pairs of a text and a pattern, all parted by "|".
  std::string filter;
  std::string default_path = {};
  bool for_saving = false;
  // The pair of the filter that is in force at first, from 1.
  int filter_index = 1;
  // The user may name a file that doesn't exist.
  bool may_be_new = false;

  // What the user reads in place of title and filter: what is chosen, and the kinds of file that
  // are taken, the usual one first. Where they are empty title and filter are shown.
  std::string shown_title = {};
  std::string shown_filter = {};
};

struct InputQuestion {
  std::string prompt;
  std::string default_text;
  // What the answer counts, where it is a number: "seconds".
  std::string unit = {};
};

struct FontChoice {
  std::string name;
  int size = 8;
  bool bold = false;
  bool italic = false;
};

// The questions that the system's own dialogs ask. All wait for the user while the loop runs on;
// no value means that the user cancelled.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual std::optional<std::string> ask_file(const FileQuestion& question) = 0;
  virtual std::optional<std::string> ask_input(const InputQuestion& question) = 0;
  virtual bool ask_yes_no(const std::string& question) = 0;
  virtual std::optional<FontChoice> ask_font(const FontChoice& present) = 0;
  virtual void message(const std::string& text) = 0;
};

}  // namespace lineweir::platform

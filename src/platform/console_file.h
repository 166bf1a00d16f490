#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::platform {

// How many consoles can have such a file in one folder at the same time.
inline constexpr int most_console_files = 20;

// The names of these files: "Drafts.csv", "Drafts-2.csv" and so on.
inline std::string console_file_name(std::string_view first, int number) {
  std::string name(first);
  if (number > 1) name.insert(std::min(name.rfind('.'), name.size()), "-" + std::to_string(number));
  return name;
}

// Content that a console keeps for its next run, in a file that is its own among all consoles which
// run in the same folder. What a console leaves there, however it ends, is for one that is started
// later.
class ConsoleFile {
 public:
  virtual ~ConsoleFile() = default;

  // What consoles that have ended left, the content of each. Their files are this console's from
  // now on, and no other is given them; they stay until the content is replaced.
  virtual std::vector<std::string> take_over() = 0;

  // From now on this is kept and nothing else, without waiting for the disk: it survives the
  // program's end at once, the machine's some seconds later. Where it can't be written a Failure of
  // number 75 names the path and the reason, and what was kept is kept still.
  //
  // A program that is killed in here may leave both what it has taken over and the new content.
  virtual void replace(std::string_view content) = 0;
};

}  // namespace lineweir::platform

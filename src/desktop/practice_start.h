#pragma once

#include <functional>

namespace lineweir {

struct CodePage;
struct Console;

// "Practice Show" in the menu of the real console: starts a console to practise on, a process of
// its own, and leaves this one as it is.
class PracticeStart {
 public:
  // `start` starts the process; false where that isn't possible. The console outlives this object.
  PracticeStart(Console& console, std::function<bool()> start);
  ~PracticeStart();
  PracticeStart(const PracticeStart&) = delete;
  PracticeStart& operator=(const PracticeStart&) = delete;

 private:
  Console& console_;
};

// Starts this program for practice in the current directory, with texts in that set.
bool start_practice_process(const CodePage& page);

}  // namespace lineweir

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/call_journal.h"
#include "platform/event_loop.h"

namespace lineweir {

struct ConsoleState;

// Tells the user of calls that wait for their log: as long as they do on the main form, and once in
// an outage in a message.
class CallLogWatch {
 public:
  explicit CallLogWatch(ConsoleState& state);
  ~CallLogWatch();
  CallLogWatch(const CallLogWatch&) = delete;
  CallLogWatch& operator=(const CallLogWatch&) = delete;

  // Told when another file was found in the place of a log.
  std::function<void()> on_replaced;

 private:
  void look();
  void show_waiting(int calls);
  bool told(const platform::LogTrouble& trouble) const;
  void tell_replaced(const std::string& file);
  void tell(const std::string& reason, const std::string& text);

  ConsoleState& state_;
  platform::EventLoop::CallId first_look_;
  // The outages that last and of which the user was told.
  std::vector<platform::LogTrouble> told_;
  std::string told_of_journal_;
};

// What the user is told of a log that takes no calls.
std::string outage_text(const platform::LogTrouble& trouble);

// The same of a journal that can't be written while calls wait.
std::string journal_outage_text(const std::string& reason);

}  // namespace lineweir

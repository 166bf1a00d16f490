#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "callerdata/caller_history.h"
#include "elements/form.h"
#include "platform/event_loop.h"

namespace lineweir {

class CallLog;
class KnownCallers;
class LineTexts;
class RowStates;
struct ConsoleState;

// Fills the elements CallerNote: what the host has to know of the callers on air and of the next
// one, whole, where the rows have room for its beginning only. A note begins with the number of its
// line; its colour is red for a caller on air and green for the next one.
class CallerNotes final : private FormWatch {
 public:
  CallerNotes(ConsoleState& state, const RowStates& row_states, const LineTexts& line_texts,
              CallLog& call_log, const KnownCallers& known_callers);
  ~CallerNotes() override;

  // The server remembers something else of the callers.
  void known_changed() { review_soon(); }

 private:
  void changed(Element& element, PropertyId property) override;
  // Once for all changes of a handler.
  void review_soon();
  void review();
  std::vector<int> lines_in_question() const;
  std::string note_of(int line);
  // What the log and the server know of the number's caller; empty where they can't tell.
  std::string history_of(int line, const std::string& number);
  // What the log knows; nothing also where it can't tell.
  std::optional<CallerHistory> look_into_log(int line, const std::string& number);

  struct Known {
    std::string number;
    std::optional<CallerHistory> history;
    // The log could be asked.
    bool told = false;
  };

  ConsoleState& state_;
  const RowStates& row_states_;
  const LineTexts& line_texts_;
  CallLog& call_log_;
  const KnownCallers& known_callers_;
  // Of the lines with a note, so that the log is asked once for each caller.
  std::map<int, Known> known_;
  std::optional<platform::EventLoop::CallId> review_;
};

}  // namespace lineweir

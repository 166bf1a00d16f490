#pragma once

#include <functional>
#include <optional>
#include <string>

#include "elements/form.h"
#include "platform/event_loop.h"

namespace lineweir {

class Links;
struct ConsoleState;

// Keeps the main form's `no_link` and `linked_to` true. They are looked at when the way to the
// equipment changes, when something is heard of it, and with each tick of Timer1 for what no event
// tells.
class LinkWatch final : private FormWatch {
 public:
  LinkWatch(ConsoleState& state, const Links& links);
  ~LinkWatch() override;

  void review();

  // A command has been given: where there is no link the user is told so, once for all commands of
  // one press.
  void command_given();

  // Told of a press that comes to nothing: why, in one sentence.
  std::function<void(const std::string& why)> on_nothing_comes;

 private:
  void changed(Element& element, PropertyId property) override;

  ConsoleState& state_;
  const Links& links_;
  // From the first command of a press until its handler has ended.
  std::optional<platform::EventLoop::CallId> told_;
};

}  // namespace lineweir

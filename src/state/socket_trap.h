#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace lineweir {

struct ConsoleState;

// The handlers that wait for their next try, by name.
using RetryingHandlers = std::set<std::string, std::less<>>;

// The one trap of the handlers of call control that write to the socket. Runs the body. A failure
// of number 40006 shows that there is no connection, and the action is dropped. Any other is tried
// again, at most 20 times, after the loop has run for a random number of passes, and then reported
// under the handler's name; one after which the action may have been done, of number 462, is
// reported at once. Returns whether the body ran to its end.
//
// Each try runs the whole body, so it holds no step that must not be repeated. A handler that waits
// for its next try isn't entered again by what the loop runs meanwhile: the action is dropped.
bool socket_trap(ConsoleState& state, std::string_view handler, const std::function<void()>& body);

}  // namespace lineweir

#include "link/link_watch.h"

#include "link/links.h"
#include "state/console_state.h"

namespace lineweir {

LinkWatch::LinkWatch(ConsoleState& state, const Links& links)
    : FormWatch(state.Lineweir), state_(state), links_(links) {
  review();
}

LinkWatch::~LinkWatch() {
  if (told_) state_.services.loop.cancel(*told_);
}

void LinkWatch::review() {
  const StudioLink& way = links_.in_use();
  state_.Lineweir.no_link = way.trouble();
  state_.Lineweir.linked_to = way.trouble().empty() ? way.standing() : std::string_view();
}

void LinkWatch::command_given() {
  review();
  const std::string& why = state_.Lineweir.no_link;
  if (told_ || !on_nothing_comes || why.empty()) return;
  told_ = state_.services.loop.schedule(platform::Milliseconds{0}, [this] { told_.reset(); });
  on_nothing_comes(why);
}

void LinkWatch::changed(Element& element, PropertyId property) {
  if (property == PropertyId::Checked && element.kind() == ElementKind::MenuItem) review();
}

}  // namespace lineweir

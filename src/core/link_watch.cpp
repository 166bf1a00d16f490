#include "core/link_watch.h"

#include "core/console.h"

namespace lineweir {

LinkWatch::LinkWatch(Console& console) : FormWatch(console.Lineweir), console_(console) {
  review();
}

LinkWatch::~LinkWatch() {
  if (told_) console_.services.loop.cancel(*told_);
}

LinkState LinkWatch::state() const { return link_state(facts()); }

void LinkWatch::review() { console_.Lineweir.no_link = trouble_of(state()); }

void LinkWatch::command_given() {
  review();
  const std::string& why = console_.Lineweir.no_link;
  if (told_ || !on_nothing_comes || why.empty()) return;
  told_ = console_.services.loop.schedule(platform::Milliseconds{0}, [this] { told_.reset(); });
  on_nothing_comes(why);
}

void LinkWatch::changed(Element& element, PropertyId property) {
  if (property == PropertyId::Checked && element.kind() == ElementKind::MenuItem) review();
}

LinkFacts LinkWatch::facts() const {
  MainForm& form = console_.Lineweir;
  LinkFacts facts;
  facts.port_open = console_.services.comm1.is_open();
  if (form.NetworkConnectionOption.checked) {
    facts.way = LinkWay::RemoteObjects;
  } else if (form.WinsockMenu.checked) {
    facts.way = LinkWay::Socket;
  } else if (form.chosen_com() != 0 || facts.port_open) {
    facts.way = LinkWay::SerialPort;
  }
  facts.box_heard = console_.decoder.box_heard();
  facts.socket_state = console_.services.winsock1.state();
  facts.objects_held = console_.remote.SerialInputObject != nullptr;
  return facts;
}

}  // namespace lineweir

#include "driver/handlers.h"

#include <array>
#include <memory>

#include "base/names.h"
#include "driver/refusal.h"
#include "elements/grid.h"
#include "elements/timer.h"

namespace lineweir::driver {
namespace {

using Handler = std::function<void()>;
using Numbers = std::vector<int>;

// Makes a handler of an element's event, or nothing if it has none. The numbers are the event's own
// arguments, as many as the event's row says.
using Bind = Handler (*)(Element&, const Numbers&);

struct NamedEvent {
  std::string_view name;
  std::size_t arguments;
  Bind bind;
  // So many more may follow, of which no handler makes use.
  std::size_t unused = 0;
};

// Where the mouse is, across and down.
constexpr std::size_t place_of_mouse = 2;

template <class T>
Handler plain(Element& element, Event<void()> T::*event) {
  const auto* owner = dynamic_cast<T*>(&element);
  if (owner == nullptr || !(owner->*event)) return {};
  return owner->*event;
}

template <class T>
Handler with_two(Element& element, Event<void(int, int)> T::*event, const Numbers& n) {
  const auto* owner = dynamic_cast<T*>(&element);
  if (owner == nullptr || !(owner->*event)) return {};
  return [handler = owner->*event, first = n[0], second = n[1]] { handler(first, second); };
}

template <class T>
Handler with_key(Element& element, Event<void(int&, int)> T::*event, const Numbers& n) {
  const auto* owner = dynamic_cast<T*>(&element);
  if (owner == nullptr || !(owner->*event)) return {};
  return [handler = owner->*event, code = n[0], shift = n[1]]() mutable { handler(code, shift); };
}

Handler either(Handler first, Handler second) {
  return first ? std::move(first) : std::move(second);
}

constexpr std::array events = {
    NamedEvent{"Click", 0,
               [](Element& e, const Numbers&) {
                 return either(plain(e, &Control::on_click),
                               either(plain(e, &MenuItem::on_click), plain(e, &Form::on_click)));
               }},
    NamedEvent{"DblClick", 0,
               [](Element& e, const Numbers&) { return plain(e, &Control::on_dbl_click); }},
    NamedEvent{"Timer", 0, [](Element& e, const Numbers&) { return plain(e, &Timer::on_timer); }},
    NamedEvent{"Change", 0,
               [](Element& e, const Numbers&) { return plain(e, &Element::on_change); }},
    NamedEvent{"SelChange", 0,
               [](Element& e, const Numbers&) { return plain(e, &Grid::on_sel_change); }},
    NamedEvent{"GotFocus", 0,
               [](Element& e, const Numbers&) {
                 return either(plain(e, &Control::on_got_focus), plain(e, &Form::on_got_focus));
               }},
    NamedEvent{"LostFocus", 0,
               [](Element& e, const Numbers&) {
                 return either(plain(e, &Control::on_lost_focus), plain(e, &Form::on_lost_focus));
               }},
    NamedEvent{"Load", 0, [](Element& e, const Numbers&) { return plain(e, &Form::on_load); }},
    NamedEvent{"Unload", 0, [](Element& e, const Numbers&) { return plain(e, &Form::on_unload); }},
    NamedEvent{"Resize", 0, [](Element& e, const Numbers&) { return plain(e, &Form::on_resize); }},
    NamedEvent{"MouseDown", 2,
               [](Element& e, const Numbers& n) { return with_two(e, &Control::on_mouse_down, n); },
               place_of_mouse},
    NamedEvent{"MouseUp", 2,
               [](Element& e, const Numbers& n) { return with_two(e, &Control::on_mouse_up, n); },
               place_of_mouse},
    NamedEvent{"KeyDown", 2,
               [](Element& e, const Numbers& n) {
                 return either(with_key(e, &Control::on_key_down, n),
                               with_key(e, &Form::on_key_down, n));
               }},
    NamedEvent{"KeyPress", 1,
               [](Element& e, const Numbers& n) -> Handler {
                 const auto* control = dynamic_cast<Control*>(&e);
                 if (control == nullptr || !control->on_key_press) return {};
                 return [handler = control->on_key_press, key = n[0]]() mutable { handler(key); };
               }},
};

const NamedEvent* event_named(std::string_view name) {
  for (const NamedEvent& event : events) {
    if (same_name(event.name, name)) return &event;
  }
  return nullptr;
}

// The element behind the form's name, which may be left out for the main form, and for another form
// where the main form has no such element. The form itself is named by its name or by "Form". Takes
// the index off the numbers where the element has one.
Element* element_named(Console& console, std::string_view name, Numbers& numbers) {
  const auto find_on = [&](const Form& form, std::string_view element) -> Element* {
    if (Element* single = form.find(element)) return single;
    if (numbers.empty()) return nullptr;
    Element* member = form.find(element, numbers.front());
    if (member != nullptr) numbers.erase(numbers.begin());
    return member;
  };
  if (same_name(name, "Form")) return &console.Lineweir;
  if (Element* element = find_on(console.Lineweir, name)) return element;
  for (Form* form : console.forms()) {
    if (same_name(form->name(), name)) return form;
    const std::string prefix = form->name() + "_";
    if (!same_name(name.substr(0, prefix.size()), prefix)) continue;
    const std::string_view rest = name.substr(prefix.size());
    if (same_name(rest, "Form")) return form;
    if (Element* element = find_on(*form, rest)) return element;
  }
  for (Form* form : console.forms()) {
    if (Element* element = find_on(*form, name)) return element;
  }
  return nullptr;
}

}  // namespace

std::function<void()> find_handler(Console& console, std::string_view name,
                                   const std::vector<Json>& arguments) {
  const std::size_t underscore = name.rfind('_');
  if (underscore == std::string_view::npos) return {};
  const NamedEvent* event = event_named(name.substr(underscore + 1));
  if (event == nullptr) return {};
  Numbers numbers;
  for (const Json& argument : arguments) numbers.push_back(number_of(argument));
  Element* element = element_named(console, name.substr(0, underscore), numbers);
  if (element == nullptr) return {};
  if (numbers.size() == event->arguments + event->unused) numbers.resize(event->arguments);
  if (numbers.size() != event->arguments) {
    throw NotUnderstood(std::to_string(event->arguments) + " arguments are wanted");
  }
  return event->bind(*element, numbers);
}

}  // namespace lineweir::driver

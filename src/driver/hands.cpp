#include "driver/hands.h"

#include <algorithm>

#include "driver/refusal.h"
#include "elements/data_grid.h"

namespace lineweir::driver {
namespace {

constexpr int no_shift = 0;
constexpr int backspace = '\b';

void require_form(Console& console, const Form& form, bool even_minimised = false) {
  if (!form.visible || (form.window_state == window_minimised && !even_minimised)) {
    throw Refusal("not visible");
  }
  const auto blocks = [&](const Form* other) {
    return other != &form && other->modal && other->visible && !form.reachable_beside_modal;
  };
  if (!form.enabled || std::ranges::any_of(console.forms(), blocks)) throw Refusal("disabled");
}

void require_control(Console& console, const Control& control) {
  require_form(console, control.form());
  if (!control.shown()) throw Refusal("not visible");
  for (const Control* part = &control; part != nullptr; part = part->container()) {
    if (!part->enabled) throw Refusal("disabled");
  }
}

Control& control_of(const FoundElement& found) {
  auto* control = dynamic_cast<Control*>(&found.element);
  if (control == nullptr) throw NotUnderstood("a user can't do that to " + found.element.name());
  return *control;
}

Control& reachable_control(Console& console, const FoundElement& found) {
  Control& control = control_of(found);
  require_control(console, control);
  return control;
}

template <class T>
T& reachable(Console& console, const FoundElement& found) {
  auto* control = dynamic_cast<T*>(&found.element);
  if (control == nullptr) throw NotUnderstood("a user can't do that to " + found.element.name());
  require_control(console, *control);
  return *control;
}

bool exists(const Form& form, const Element& element) {
  return std::ranges::find(form.elements(), &element) != form.elements().end();
}

// Runs the event of the element, or of the nearest container that has one.
template <class Event, class... Arguments>
void raise(Control& control, Event Control::*event, Arguments&&... arguments) {
  for (Control* part = &control; part != nullptr; part = part->container()) {
    if (part->*event) return (part->*event)(std::forward<Arguments>(arguments)...);
  }
}

// An action of several events, each of which may take the element away, and with it the rest.
class Gesture {
 public:
  explicit Gesture(Control& control) : form_(control.form()), control_(control) {}

  template <class Event, class... Arguments>
  void raise(Event Control::*event, Arguments&&... arguments) {
    if (exists(form_, control_)) {
      driver::raise(control_, event, std::forward<Arguments>(arguments)...);
    }
  }

 private:
  Form& form_;
  Control& control_;
};

void click_menu(Console& console, MenuItem& item) {
  require_form(console, item.form());
  if (!item.shown()) throw Refusal("not visible");
  if (!item.reachable()) throw Refusal("disabled");
  item.on_click();
}

void click_form(Console& console, Form& form) {
  require_form(console, form);
  form.on_click();
}

// What a click changes by itself, before its event.
void change_by_click(Control& control) {
  if (auto* box = dynamic_cast<CheckBox*>(&control)) {
    box->value = box->value == 0 ? 1 : 0;
  } else if (auto* button = dynamic_cast<OptionButton*>(&control)) {
    for (Element* element : button->form().elements()) {
      auto* other = dynamic_cast<OptionButton*>(element);
      if (other == nullptr || other == button) continue;
      if (other->container() == button->container()) other->value = false;
    }
    button->value = true;
  }
}

// The click itself, behind the mouse's button.
void come_up(Control& control) {
  if (control.kind() == ElementKind::TextBox) control.set_focus();
  change_by_click(control);
  raise(control, &Control::on_click);
}

// Enters what the handlers have left of a key.
void enter(Control& control, int key_left) {
  if (auto* box = dynamic_cast<TextBox*>(&control)) return box->enter(key_left);
  auto* combo = dynamic_cast<ComboBox*>(&control);
  if (combo == nullptr) return;
  std::string text = combo->text;
  if (key_left == backspace) {
    if (!text.empty()) text.pop_back();
  } else if (key_left >= ' ' && key_left <= 255) {
    text += static_cast<char>(key_left);
  }
  combo->text = text;
}

bool can_be_reached(Console& console, const Control& control) {
  try {
    require_control(console, control);
    return true;
  } catch (const Refusal&) {
    return false;
  }
}

}  // namespace

void click(Console& console, const FoundElement& found) {
  if (found.is_form()) return click_form(console, found.form);
  if (auto* item = dynamic_cast<MenuItem*>(&found.element)) return click_menu(console, *item);
  Control& control = reachable_control(console, found);
  Gesture gesture(control);
  gesture.raise(&Control::on_mouse_down, left_button, no_shift);
  gesture.raise(&Control::on_mouse_up, left_button, no_shift);
  if (exists(found.form, control)) come_up(control);
}

void double_click(Console& console, const FoundElement& found) {
  Control& control = reachable_control(console, found);
  Gesture gesture(control);
  gesture.raise(&Control::on_mouse_down, left_button, no_shift);
  gesture.raise(&Control::on_mouse_up, left_button, no_shift);
  gesture.raise(&Control::on_dbl_click);
}

void right_click(Console& console, const FoundElement& found) {
  Gesture gesture(reachable_control(console, found));
  gesture.raise(&Control::on_mouse_down, right_button, no_shift);
  gesture.raise(&Control::on_mouse_up, right_button, no_shift);
}

Control& press(Console& console, const FoundElement& found) {
  Control& control = reachable_control(console, found);
  raise(control, &Control::on_mouse_down, left_button, no_shift);
  return control;
}

void release(Console& console, const FoundElement& found, const Control* pressed) {
  // The button went down before, so that it may come up on whatever has become of the element.
  Control& control = control_of(found);
  require_form(console, found.form);
  raise(control, &Control::on_mouse_up, left_button, no_shift);
  const bool is_click =
      pressed == &control && exists(found.form, control) && can_be_reached(console, control);
  if (is_click) come_up(control);
}

void focus(Console& console, const FoundElement& found) {
  if (found.is_form()) {
    require_form(console, found.form);
    found.form.on_got_focus();
    return;
  }
  reachable_control(console, found).set_focus();
}

void blur(Console& console, const FoundElement& found) {
  if (found.is_form()) {
    require_form(console, found.form, true);
    found.form.on_lost_focus();
    return;
  }
  if (found.form.focused() != &control_of(found)) throw Refusal("without the focus");
  found.form.focus(nullptr);
}

void type(Console& console, const FoundElement& found, std::string_view text) {
  Control& control = reachable_control(console, found);
  control.set_focus();
  for (const char character : text) {
    Control* target = found.form.focused();
    if (target == nullptr || !can_be_reached(console, *target)) return;
    int key_left = static_cast<unsigned char>(character);
    target->on_key_press(key_left);
    if (key_left != 0 && exists(found.form, *target)) enter(*target, key_left);
  }
}

void replace_text(Console& console, TextBox& box, std::string_view text) {
  require_control(console, box);
  box.edit(std::string(text), static_cast<int>(text.size()));
}

void key(Console& console, int key_code, int shift) {
  Form& form = console.Lineweir;
  require_form(console, form);
  form.on_key_down(key_code, shift);
  Control* target = form.focused();
  if (key_code == 0 || target == nullptr || !can_be_reached(console, *target)) return;
  target->on_key_down(key_code, shift);
}

void select(Console& console, const FoundElement& found, int entry) {
  auto& list = reachable<ListControl>(console, found);
  if (entry < 0 || entry >= list.list_count()) throw NotUnderstood("no such entry");
  list.select(entry);
}

void select_cell(Console& console, const FoundElement& found, int row, int column) {
  if (found.element.kind() == ElementKind::DataGrid) {
    auto& grid = reachable<DataGrid>(console, found);
    // A click on a heading sorts.
    const bool heading = row == 0;
    if (row < 0 || row > grid.rows || column < 0 ||
        column >= static_cast<int>(grid.headings.get().size())) {
      throw NotUnderstood("no such cell");
    }
    if (!heading) return grid.select(row);
    grid.on_heading_click(column);
    return;
  }
  auto& grid = reachable<Grid>(console, found);
  if (row < 0 || row >= grid.rows() || column < 0 || column >= grid.columns()) {
    throw NotUnderstood("no such cell");
  }
  grid.select(row, column);
}

void drag(Console& console, const FoundElement& found, int from, int to) {
  auto& list = reachable<ListBox>(console, found);
  const int count = list.list_count();
  if (from < 0 || from >= count || to < 0 || to >= count) throw NotUnderstood("no such entry");
  list.on_drag(from, to);
}

void resize(Console& console, int width, int height) {
  Form& form = console.Lineweir;
  require_form(console, form);
  form.width = width;
  form.height = height;
  form.on_resize();
}

void set_window_state(Console& console, FormWindowState state) {
  Form& form = console.Lineweir;
  require_form(console, form, true);
  form.window_state = state;
  form.on_resize();
}

void close(Console& console, Form& form) {
  require_form(console, form, true);
  form.close();
}

}  // namespace lineweir::driver

#include "seat/fingers.h"

#include <string>

#include "driver/hands.h"
#include "driver/refusal.h"

namespace lineweir::seat {
namespace {

constexpr int key_of_quick_line = 117;

template <class Action>
bool try_to(Action action) {
  try {
    action();
    return true;
  } catch (const driver::Refusal&) {
    return false;
  }
}

}  // namespace

bool click(Console& console, Form& form, Element& element) {
  return try_to([&] { driver::click(console, {form, element}); });
}

bool replace_text(Console& console, TextBox& box, std::string_view text) {
  return try_to([&] { driver::replace_text(console, box, text); });
}

bool close(Console& console, Form& form) {
  return try_to([&] { driver::close(console, form); });
}

bool write_message(Console& console, std::string_view text) {
  return try_to([&] {
    MainForm& form = console.Lineweir;
    driver::key(console, key_of_quick_line, 0);
    driver::replace_text(console, form.Text2, text);
    driver::type(console, {form, form.Text2}, "\r");
  });
}

}  // namespace lineweir::seat

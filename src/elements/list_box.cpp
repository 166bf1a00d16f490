#include "elements/list_box.h"

#include <algorithm>

#include "base/failure.h"

namespace lineweir {
namespace {

void check_index(const ListControl& control, int index) {
  if (index < 0 || index >= control.list_count()) {
    throw Failure(failure_number::invalid_argument, "Invalid list index in " + control.name());
  }
}

}  // namespace

void ListControl::add_item(std::string_view text) {
  auto changed = list.get();
  changed.emplace_back(text);
  list = changed;
}

void ListControl::remove_item(int index) {
  check_index(*this, index);
  auto changed = list.get();
  changed.erase(changed.begin() + index);
  // The list first: a combo box takes its text from the list as it then stands.
  list = changed;
  if (list_index == index) {
    list_index = -1;
  } else if (list_index > index) {
    list_index = list_index - 1;
  }
}

void ListControl::set_item(int index, std::string_view text) {
  check_index(*this, index);
  auto changed = list.get();
  changed[static_cast<std::size_t>(index)] = text;
  list = changed;
}

void ListControl::clear() {
  list_index = -1;
  list = {};
}

void ListControl::select(int index) {
  check_index(*this, index);
  list_index = index;
  on_click();
}

void ComboBox::property_changed(PropertyId id) {
  if (id == PropertyId::ListIndex && list_index >= 0 && list_index < list_count()) {
    text = list.get()[static_cast<std::size_t>(list_index.get())];
  }
  ListControl::property_changed(id);
}

}  // namespace lineweir

#include "elements/text_box.h"

#include <algorithm>
#include <utility>

namespace lineweir {

void TextBox::enter(int key) {
  std::string changed = text;
  const auto caret = std::clamp<std::size_t>(static_cast<std::size_t>(std::max(0, sel_start.get())),
                                             0, changed.size());
  std::size_t new_caret = caret;
  if (key == '\b') {
    if (caret == 0) return;
    changed.erase(caret - 1, 1);
    new_caret = caret - 1;
  } else if (key == '\r') {
    if (!multi_line) return;
    changed.insert(caret, "\r\n");
    new_caret = caret + 2;
  } else if (key < ' ' || key > 255) {
    return;
  } else {
    changed.insert(caret, 1, static_cast<char>(key));
    new_caret = caret + 1;
  }
  edit(std::move(changed), static_cast<int>(new_caret));
}

void TextBox::edit(std::string changed, int caret) {
  on_edit(changed, caret);
  // The caret follows first, so that a change handler may move it again.
  sel_start = caret;
  text = changed;
}

}  // namespace lineweir

#pragma once

#include <cstdint>

#include "elements/form.h"

namespace lineweir {

struct Console;
class UserHands;

// The message box while another window has the keyboard: Enter and Esc there close it, once it has
// stood there long enough to have been meant.
class MessageInFront final : private FormWatch {
 public:
  MessageInFront(Console& console, UserHands& hands);

  bool seen() const;
  void answer();

 private:
  void changed(Element& element, PropertyId property) override;

  Console& console_;
  UserHands& hands_;
  std::int64_t since_ = 0;
};

}  // namespace lineweir

#pragma once

#include <QTimer>
#include <cstdint>
#include <functional>

#include "elements/form.h"

namespace lineweir {

struct Console;
class UserHands;

// The message box in front of the other windows. While another one has the keyboard Enter and Esc
// there close it, once it has stood there long enough to have been meant.
//
// At first neither its frame nor that of the main window may be known, by which it is placed:
// window managers tell of them late and in any order. So it is placed again until both are there
// and have come to rest.
class MessageInFront final : private FormWatch {
 public:
  MessageInFront(Console& console, UserHands& hands);

  // Told before the box is placed by the main form: that and the box take their places from their
  // windows. It returns whether the frames of both are known.
  std::function<bool()> before_placing;

  bool seen() const;
  void answer();

 private:
  void place_again();
  void changed(Element& element, PropertyId property) override;

  Console& console_;
  UserHands& hands_;
  std::int64_t since_ = 0;
  QTimer placing_;
  int placings_left_ = 0;
};

}  // namespace lineweir

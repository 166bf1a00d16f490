#pragma once

#include <QString>
#include <string_view>

#include "elements/control.h"

namespace lineweir {

// What an element of the main form looks like and how hands reach it.
enum class Look {
  // Is drawn with the key, strip, face or dial that it lies on, and has no drawing of its own.
  Nothing,
  Face,
  Panel,
  Cover,
  // Faces are drawn from it.
  FaceImage,
  Heading,
  PanelText,
  // Something that the user should see to.
  PanelWarning,
  PanelBanner,
  // A caller in one line, with the colour of the strip at its left end.
  CallerNote,
  Strip,
  RowText,
  // Where it is empty the sign of the line's state stands.
  RowStatus,
  // Digits that don't move when they change.
  RowTime,
  Mark,
  RowKey,
  PanelKey,
  // The key that takes the next caller; its line of light is the colour of the next caller's strip.
  NextKey,
  // Stand on a key and leave the mouse to it.
  KeyIcon,
  KeyCaption,
  DropCaption,
  HoldCaption,
  Clock,
  RedClock,
  ClockDigits,
  Countdown,
  ClockText,
  LargeDigits,
  LargeText,
  Lamp,
  Message,
  Entry,
};

struct ElementLook {
  std::string_view element;
  Look look;
  // What a screen reader says; %1 stands for the line's number, from 1.
  std::string_view spoken;
  // The same in producer mode, where that is something else.
  std::string_view spoken_to_producer = {};
};

// The look of an element by its name. An element that isn't in the table looks as its kind does.
const ElementLook& look_of(const Control& control);

// Whether a press of the element gives the telephone equipment a command, which needs a link.
bool commands_equipment(const Control& control);

// The name of an element as a screen reader says it.
QString spoken_name(const Control& control);

// The name under which a widget is found: the element's, with its index in an array.
QString object_name(const Element& element);

}  // namespace lineweir

#pragma once

#include <string>
#include <string_view>

#include "exchange/moment.h"
#include "studio/exchange_names.h"

namespace lineweir::studio {

// One line of the transcript: when, what kind of thing, and the thing.
struct Record {
  enum class Kind {
    Word,   // a command word from the console
    Noise,  // characters from the console that are no word
    Item,   // a status item, when the box has it to send; its characters follow at the line's pace
    Text,   // any other text from the box
    Event,  // something in the studio, as a script says it
    Seat,   // a command word from another seat
    Note,   // anything that a reader of the transcript would otherwise puzzle over
  };

  Moment at;
  Kind kind;
  std::string text;

  bool operator==(const Record&) const = default;
};

// "12.500 word N05". An event is written as in a script: "12.500 call 5".
std::string format_record(const Record& record);

// Printable ASCII as it is; every other byte, and the backslash, as \xNN.
std::string printable(std::string_view bytes);

}  // namespace lineweir::studio

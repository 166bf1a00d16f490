#pragma once

#include <string_view>

namespace lineweir {

class CallerDataEntry;
class CallerDataSender;
class LineTexts;
struct ConsoleState;

// Callers' details that come from other consoles.
class ReceivedData {
 public:
  ReceivedData(ConsoleState& state, const CallerDataSender& data_sender, LineTexts& line_texts,
               CallerDataEntry& caller_data)
      : state_(state),
        data_sender_(data_sender),
        line_texts_(line_texts),
        caller_data_(caller_data) {}

  // The call-back of the remote objects; lines count from 1. The details go into the row and the
  // record.
  void ReturnCallerData(std::string_view ReturnData, int ALinenumber);

  // Over the socket, lines from 0: the row shows the details, but the record doesn't hold them.
  void SrvCallerData(std::string_view Buffer, int LineNo);

 private:
  // Takes the details into the row and the record. False where there is nothing to take: the line
  // has no data any more, or this console sent the details itself.
  bool take(std::string_view text, int line);
  bool is_held(std::string_view text, int line) const;
  bool is_own(std::string_view sender) const;
  // The same without regard to blanks and code 0 at the ends, as servers pass names on.
  bool is_own_name(std::string_view sender) const;

  ConsoleState& state_;
  const CallerDataSender& data_sender_;
  LineTexts& line_texts_;
  CallerDataEntry& caller_data_;
};

}  // namespace lineweir

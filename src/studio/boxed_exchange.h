#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/auto_operator.h"
#include "exchange/caller_process.h"
#include "exchange/studio_event.h"
#include "exchange/switchboard.h"
#include "studio/exchange_names.h"
#include "studio/pacer.h"
#include "studio/record.h"
#include "studio/word_cutter.h"

namespace lineweir::studio {

struct BoxedExchangeOptions {
  int line_count = 10;  // 10 or 20
  int boxes = 1;        // interface boxes, each for a console of its own
  std::uint64_t seed = 1;
  CallerOptions callers;
  std::optional<AutoOperatorOptions> auto_operator;
  std::vector<TimedEvent> script;  // in the order of its times
};

// The telephone exchange with its interface boxes: takes the consoles' characters, gives the
// characters of its answers and reports at the pace of each serial line, and lets the studio's life
// go on. Every box reports every change; a question is answered by the box that was asked. Driven
// wholly by the times passed in, each not before the last (an earlier one counts as the last). What
// is due between two calls happens at its own time, so that the transcript doesn't depend on how
// often it is called; the same options and input give the same transcript.
class BoxedExchange {
 public:
  // Silence after which the beginning of a word that may be complete is complete: six characters'
  // time, which no serial adapter's delay within a word reaches.
  static constexpr Moment word_gap{50};

  explicit BoxedExchange(BoxedExchangeOptions options);

  void receive(std::string_view bytes, Moment now, int box = 0);
  void advance(Moment now);

  // Something happens that nobody could tell of beforehand, in the studio or at another seat.
  void happen_now(const StudioEvent& event, Moment now);

  // When advance() next has something to do; `never` once the studio is over and all is sent.
  Moment next_due() const;

  // The characters that are through the box's line, and the transcript, since the last call.
  std::string take_output(int box = 0);
  std::vector<Record> take_records();

  // Nothing is on its way through the box's line.
  bool is_silent(int box = 0) const;

  const Switchboard& lines() const { return lines_; }
  char letter(int line) const { return lines_.letter(line); }
  bool is_over() const { return over_; }

 private:
  struct Box {
    bool gap_matters() const { return cutter.idle_matters(); }
    Moment gap_end() const { return last_received + word_gap; }

    WordCutter cutter;
    Pacer pacer;
    Moment last_received{0};
  };

  Box& box_at(int box) { return boxes_[static_cast<std::size_t>(box)]; }
  Box* box_with_gap();
  Moment next_event() const;
  void run_due_event();
  void run_tokens(const std::vector<Token>& tokens, Box& box);
  void run_word(const std::string& text, Record::Kind kind, Box* asker);
  void answer(exchange::CommandWord word, Box& asker);
  void happen(const StudioEvent& event);
  void report(const LineChanges& changes);
  void send(const std::string& text, Box& box);
  void record(Record::Kind kind, std::string text);

  Switchboard lines_;
  std::vector<Box> boxes_;
  CallerProcess callers_;
  std::optional<AutoOperator> auto_operator_;
  std::vector<TimedEvent> script_;
  std::size_t script_next_ = 0;
  Moment now_{0};
  bool over_ = false;
  std::vector<Record> records_;
};

}  // namespace lineweir::studio

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "studio/auto_operator.h"
#include "studio/caller_process.h"
#include "studio/pacer.h"
#include "studio/record.h"
#include "studio/studio_event.h"
#include "studio/switchboard.h"
#include "studio/word_cutter.h"

namespace lineweir::studio {

struct ExchangeOptions {
  int line_count = 10;  // 10 or 20
  std::uint64_t seed = 1;
  CallerOptions callers;
  std::optional<AutoOperatorOptions> auto_operator;
  std::vector<TimedEvent> script;  // in the order of its times
};

// The telephone exchange with its interface box: takes the console's characters, gives the
// characters of its answers and reports at the pace of the serial line, and lets the studio's life
// go on. Driven wholly by the times passed in, each not before the last (an earlier one counts as
// the last). What is due between two calls happens at its own time, so that the transcript doesn't
// depend on how often it is called; the same options and input give the same transcript.
class Exchange {
 public:
  // Silence after which the beginning of a word that may be complete is complete: six characters'
  // time, which no serial adapter's delay within a word reaches.
  static constexpr Moment word_gap{50};

  explicit Exchange(ExchangeOptions options);

  void receive(std::string_view bytes, Moment now);
  void advance(Moment now);

  // When advance() next has something to do; `never` once the studio is over and all is sent.
  Moment next_due() const;

  // The characters that are through the line, and the transcript, since the last call.
  std::string take_output();
  std::vector<Record> take_records();

  const Switchboard& lines() const { return lines_; }
  char letter(int line) const { return lines_.letter(line); }
  bool is_over() const { return over_; }

 private:
  Moment next_event() const;
  void run_due_event();
  void run_tokens(const std::vector<Token>& tokens);
  void run_word(const std::string& text, Record::Kind kind);
  void answer(CommandWord word);
  void happen(const StudioEvent& event);
  void report(const LineChanges& changes);
  void send(Record::Kind kind, const std::string& text);
  void record(Record::Kind kind, std::string text);

  Switchboard lines_;
  WordCutter cutter_;
  Pacer pacer_;
  CallerProcess callers_;
  std::optional<AutoOperator> auto_operator_;
  std::vector<TimedEvent> script_;
  std::size_t script_next_ = 0;
  Moment now_{0};
  Moment last_received_{0};
  bool over_ = false;
  std::vector<Record> records_;
};

}  // namespace lineweir::studio

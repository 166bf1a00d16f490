#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "practice/practice_forms.h"
#include "practice/practice_port.h"
#include "practice/practice_results.h"

namespace lineweir {
struct Console;
}

namespace lineweir::practice {

// A practice show from the choice of its level to the page at its end, on a console whose port is
// the practice port.
class PracticeShow {
 public:
  // Both outlive it.
  PracticeShow(Console& console, PracticePort& port);
  ~PracticeShow();
  PracticeShow(const PracticeShow&) = delete;
  PracticeShow& operator=(const PracticeShow&) = delete;

  // To be called once, behind the console's start.
  void begin();

  bool runs() const { return level_ != nullptr; }

  LevelForm level_form;
  ScoreForm score_form;
  BandForm band;

  // Chance of the next show; set by tests.
  std::function<std::uint64_t()> seed;
  // Told of what comes without the focus being there: the words of a caller at the handset, and the
  // page's content, each in sentences.
  std::function<void(const std::string& text)> on_news;

 private:
  void wire_events();
  void ask_for_level();
  void show_last_time();
  void start();
  void end();
  void keep(const Result& result, const std::string& kept);
  void show_page(const Result& result, const std::optional<Result>& before);
  void begin_or_end();
  void change_role();
  // Brings the band to what is, and again in a moment.
  void tell();
  // The window in which a caller's data are typed may cover the band, so its title says the words
  // too.
  void tell_in_entry();
  void schedule_tell();
  Moment played() const;

  Console& console_;
  PracticePort& port_;
  // That of the show that runs; null while none does.
  const LevelRule* level_ = nullptr;
  Moment began_{0};
  platform::EventLoop::CallId next_end_ = 0;
  platform::EventLoop::CallId next_tell_ = 0;
};

}  // namespace lineweir::practice

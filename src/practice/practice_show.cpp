#include "practice/practice_show.h"

#include "base/text.h"
#include "base/time_text.h"
#include "core/console.h"
#include "practice/practice_band.h"
#include "practice/practice_plan.h"
#include "practice/practice_setup.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir::practice {
namespace {

constexpr Moment between_tellings{250};
constexpr double most_seeds = 1e9;

std::string last_time_text(const std::optional<Result>& last) {
  if (!last) return "You have not played this level yet.";
  return "Last time: " + std::to_string(last->answered) + " of " + std::to_string(last->calls) +
         " answered, longest wait " + minutes_text(last->longest_wait) + ", dead air " +
         minutes_text(last->dead_air) + ", dropped " + std::to_string(last->dropped) + ".";
}

std::string summary_of(const std::array<PageRow, page_row_count>& rows) {
  std::string text = "The practice show is over.";
  for (const PageRow& row : rows) {
    text += ' ' + row.name + ": " + row.now;
    if (!row.verdict.empty()) text += ", " + row.verdict;
    text += '.';
  }
  return text;
}

}  // namespace

PracticeShow::PracticeShow(Console& console, PracticePort& port) : console_(console), port_(port) {
  for (Form* form : {static_cast<Form*>(&level_form), static_cast<Form*>(&score_form),
                     static_cast<Form*>(&band)}) {
    form->letters = &console.services.letters;
  }
  seed = [&console] {
    return static_cast<std::uint64_t>(console.services.random.next() * most_seeds);
  };
  wire_events();
}

PracticeShow::~PracticeShow() {
  console_.services.loop.cancel(next_end_);
  console_.services.loop.cancel(next_tell_);
  console_.Lineweir.PracticeMenu.on_click.forget_handler();
}

void PracticeShow::wire_events() {
  Trace& trace = console_.trace;
  wire(level_form.StartButton.on_click, trace, "PracticeLevel_Start", [this] { start(); });
  wire(level_form.CancelButton.on_click, trace, "PracticeLevel_Cancel",
       [this] { level_form.unload(); });
  for (OptionButton* choice : level_form.choices()) {
    wire(choice->on_click, trace, "PracticeLevel_Choice", [this] { show_last_time(); });
  }
  wire(score_form.AgainButton.on_click, trace, "PracticeScore_Again", [this] {
    score_form.unload();
    ask_for_level();
  });
  wire(score_form.CloseButton.on_click, trace, "PracticeScore_Close",
       [this] { score_form.unload(); });
  wire(band.RoleButton.on_click, trace, "PracticeBand_Role", [this] { change_role(); });
  wire(band.ShowButton.on_click, trace, "PracticeBand_Show", [this] { begin_or_end(); });
  wire(console_.Lineweir.PracticeMenu.on_click, trace, "Lineweir_PracticeMenu_Click",
       [this] { begin_or_end(); });
}

void PracticeShow::begin() {
  set_up_for_practice(console_);
  tell();
  ask_for_level();
}

void PracticeShow::ask_for_level() {
  show_last_time();
  level_form.show();
  level_form.choices()[level_form.chosen()]->set_focus();
}

void PracticeShow::show_last_time() {
  const auto text = console_.services.files.read_short(std::string(results_file), longest_results);
  const LevelRule& level = levels[level_form.chosen()];
  level_form.LastLabel.caption = last_time_text(last_result(text.value_or(""), level.name));
}

void PracticeShow::start() {
  level_form.unload();
  score_form.unload();
  if (runs()) return;
  level_ = &levels[level_form.chosen()];
  began_ = console_.services.loop.now();
  port_.begin(*level_, seed());
  next_end_ = console_.services.loop.schedule(std::chrono::seconds(show_seconds(*level_)),
                                              [this] { end(); });
  tell();
  attempt(
      [&] {
        console_.show_plan.save_plan_as(
            std::string(practice_plan),
            plan_of(*level_, seconds_of_day(console_.services.clock.now())));
      },
      [&](const Failure& failure) {
        report_failure(console_.trace, "PracticeLevel_Start", failure);
      });
}

void PracticeShow::end() {
  if (!runs()) return;
  const LevelRule& level = *level_;
  console_.services.loop.cancel(next_end_);
  const Moment length = played();
  const Score score = score_of(port_.box().history(), level.parts, length);
  port_.end();
  level_ = nullptr;
  const std::string kept =
      console_.services.files.read_short(std::string(results_file), longest_results).value_or("");
  const Result result =
      result_of(score, level.name, date_time_text(console_.services.clock.now()), length);
  const auto before = last_result(kept, level.name);
  // A show in which nobody called yet says nothing.
  if (result.calls > 0) keep(result, kept);
  tell();
  show_page(result, before);
}

void PracticeShow::keep(const Result& result, const std::string& kept) {
  attempt(
      [&] {
        console_.services.files.replace(std::string(results_file), with_result(kept, result));
      },
      [&](const Failure& failure) {
        report_failure(console_.trace, "Practice_Keep", failure);
        console_.messages.ShowMessage(description_of(console_.services.letters, failure));
      });
}

void PracticeShow::show_page(const Result& result, const std::optional<Result>& before) {
  const auto rows = page_rows(result, before);
  score_form.ShowLabel.caption = before ? result.level + " show, beside that of " + before->date
                                        : result.level + " show, the first that you have played";
  score_form.BeforeHeading.visible = before.has_value();
  for (int i = 0; i < page_row_count; ++i) {
    const PageRow& row = rows[static_cast<std::size_t>(i)];
    score_form.RowName(i).caption = row.name;
    score_form.RowNow(i).caption = row.now;
    score_form.RowBefore(i).caption = row.before;
    score_form.RowVerdict(i).caption = row.verdict;
  }
  score_form.show();
  score_form.CloseButton.set_focus();
  if (on_news) on_news(summary_of(rows));
}

void PracticeShow::begin_or_end() {
  if (runs()) return end();
  ask_for_level();
}

void PracticeShow::change_role() {
  MainForm& form = console_.Lineweir;
  (form.StudioMode.checked ? form.ScreenerMode : form.StudioMode).on_click();
  tell();
}

void PracticeShow::tell() {
  MainForm& form = console_.Lineweir;
  band.ShowLabel.caption =
      runs() ? show_text(*level_, played()) : std::string("No show is running.");
  const std::string words = words_text(port_.box());
  if (on_news && !words.empty() && words != band.WordsLabel.caption.get()) on_news(words);
  band.WordsLabel.caption = words;
  tell_in_entry();
  band.RoleButton.caption = form.StudioMode.checked ? "&Go On as Screener" : "&Go On as Host";
  band.ShowButton.caption = runs() ? "End Sho&w" : "Ne&w Show";
  form.PracticeMenu.caption = runs() ? "End Pra&ctice Show" : "Pra&ctice Show";
  schedule_tell();
}

void PracticeShow::tell_in_entry() {
  constexpr std::string_view title = "Caller Data - Line ";
  Form& entry = console_.Form4;
  const std::string caption = entry.caption;
  if (!entry.visible || !caption.starts_with(title)) return;
  const int number = leading_number(std::string_view(caption).substr(title.size()));
  const std::string words = words_on(port_.box(), number - 1);
  entry.caption = std::string(title) + std::to_string(number) +
                  (words.empty() ? std::string() : " says: " + words);
}

void PracticeShow::schedule_tell() {
  platform::EventLoop& loop = console_.services.loop;
  loop.cancel(next_tell_);
  next_tell_ = loop.schedule(between_tellings, [this] { tell(); });
}

Moment PracticeShow::played() const { return console_.services.loop.now() - began_; }

}  // namespace lineweir::practice

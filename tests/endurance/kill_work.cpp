#include "endurance/kill_work.h"

#include <unistd.h>

#include <nlohmann/json.hpp>
#include <vector>

#include "base/text.h"
#include "driver/hands.h"

namespace lineweir::endurance {
namespace {

using nlohmann::json;
using namespace std::chrono_literals;

constexpr int draft_line = 9;
constexpr int longest_hot_list = 8;
constexpr int first_text_of_plan = first_event_entry;
constexpr auto draft_kept_after = 1200ms;

// In one piece, so that none is told by half.
void say(const json& what) {
  const std::string line = what.dump() + '\n';
  if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) ::_exit(1);
}

std::string numbered(const std::string& word, int number) {
  return word + ' ' + std::to_string(number);
}

}  // namespace

KillWork::KillWork(WorkedConsole& desk, std::uint32_t seed, int first_number)
    : desk_(desk), random_(seed), number_(first_number) {}

void KillWork::tell_found() {
  Console& console = desk_.console();
  if (!console.call_log.chosen()) desk_.choose_log();
  desk_.choose_hot_list();
  json found = {{"did", "start"},
                {"operator", std::string(trimmed(console.program.OperatorName))},
                {"warning", console.clock_state.Warning1},
                {"host", console.login.ServerHost},
                {"hot", console.FlashMessA.DBList1.list.get()},
                {"messages", desk_.messages()}};
  for (int entry = first_text_of_plan; entry <= show_entry_count; ++entry) {
    found["plan"].push_back(std::string(trimmed(console.show_plan.plan.ShowTexts(entry).text())));
  }
  driver::close(console, console.FlashMessA);
  say(found);
}

void KillWork::work() {
  finish_draft();
  for (;;) {
    change_callers();
    if (one_of(4)) save_settings();
    if (one_of(4)) save_plan();
    if (one_of(4)) change_hot_list();
    if (one_of(12)) leave_a_draft();
  }
}

void KillWork::let_wait_end() {
  finish_draft();
  // Who was on a line when the last life ended is logged as soon as that is reported.
  for (int line = 0; line < desk_.console().lines.LineCount; ++line) desk_.report(line, 'F');
  desk_.wait([this] { return desk_.log_takes_all(); });
  say({{"did", "end"}});
}

// A caller stays until the others have had their turn, so that a kill finds some on their lines.
void KillWork::change_callers() {
  line_ = (line_ + 1) % static_cast<int>(callers_.size());
  int& caller = callers_.at(static_cast<std::size_t>(line_));
  if (caller != 0) {
    desk_.report(line_, 'N');
    if (desk_.report(line_, 'F')) say({{"did", "call"}, {"number", caller}});
  }
  caller = next();
  desk_.report(line_, 'R');
  desk_.type_caller(line_, numbered("Caller", caller), numbered("555", caller));
  desk_.save_caller();
  say({{"did", "save"}, {"number", caller}});
}

void KillWork::save_settings() {
  const int number = next();
  Console& console = desk_.console();
  console.program.OperatorName = numbered("Operator", number);
  console.clock_state.Warning1 = number % 3000;
  console.clock_state.Warning2 = number % 3000;
  console.login.ServerHost = "host-" + std::to_string(number);
  say({{"does", "settings"}, {"number", number}});
  driver::click(console, {console.Lineweir, console.Lineweir.SaveSettingsMenu});
  say({{"did", "settings"}, {"number", number}});
}

void KillWork::save_plan() {
  const int number = next();
  ShowPlan plan;
  plan.ShowTimes(show_start_entry) = "00:00:00";
  plan.ShowTimes(show_end_entry) = "23:59:00";
  for (int entry = first_text_of_plan; entry <= show_entry_count; ++entry) {
    plan.ShowTexts(entry) = numbered("Plan", number);
  }
  say({{"does", "plan"}, {"number", number}});
  desk_.console().show_plan.save_plan(plan);
  say({{"did", "plan"}, {"number", number}});
}

void KillWork::change_hot_list() {
  Console& console = desk_.console();
  desk_.choose_hot_list();
  FlashMessageForm& form = console.FlashMessA;
  std::vector<std::string> entries = form.DBList1.list;
  const int choice = static_cast<int>(random_() % 3);
  const int count = static_cast<int>(entries.size());
  if (choice == 0 && count > 1) {
    entries.insert(entries.begin() + 1, entries.back());
    entries.pop_back();
    say({{"does", "hot"}, {"list", entries}});
    driver::drag(console, {form, form.DBList1}, count - 1, 1);
  } else if (choice == 1 || count >= longest_hot_list) {
    if (count == 0) return driver::close(console, form);
    entries.erase(entries.begin());
    say({{"does", "hot"}, {"list", entries}});
    driver::select(console, {form, form.DBList1}, 0);
    driver::click(console, {form, form.RemoveCurrent});
  } else {
    entries.push_back(numbered("Message", next()));
    say({{"does", "hot"}, {"list", entries}});
    driver::replace_text(console, form.Text1, entries.back());
    driver::click(console, {form, form.AddCurrent});
  }
  say({{"did", "hot"}, {"list", form.DBList1.list.get()}});
  driver::close(console, form);
}

// A caller who stays while the others come and go, and whose data nobody saves.
void KillWork::leave_a_draft() {
  const int number = next();
  desk_.report(draft_line, 'R');
  desk_.type_caller(draft_line, numbered("Draft", number), numbered("555", number));
  say({{"does", "draft"}, {"number", number}});
  desk_.pass(draft_kept_after);
  say({{"did", "draft"}, {"number", number}});
}

// What an earlier run has left is saved, and so comes into the log.
void KillWork::finish_draft() {
  Console& console = desk_.console();
  driver::key(console, '0', 4);
  const std::string name = console.Form4.TheText(1).text;
  if (!name.starts_with("Draft")) return driver::close(console, console.Form4);
  desk_.save_caller();
  say({{"did", "saved draft"}, {"name", name}});
}

}  // namespace lineweir::endurance

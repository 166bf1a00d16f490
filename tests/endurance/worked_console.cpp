#include "endurance/worked_console.h"

#include <unistd.h>

#include "driver/hands.h"
#include "lines/status_letters.h"

namespace lineweir::endurance {
namespace {

using namespace std::chrono_literals;

constexpr int alt = 4;
constexpr int name_entry = 1;
constexpr int number_entry = 6;
constexpr int message_key = 113;
// The writer of the log has time; the show's thread waits for no other program.
constexpr platform::Milliseconds no_wait = 0ms;
constexpr platform::Milliseconds log_wait = 1000ms;

int digit_key(int line) { return '0' + (line + 1) % 10; }

}  // namespace

WorkedConsole::WorkedConsole()
    : files_(std::make_shared<platform::DiskFiles>(folder_, letters_, &guard_)),
      databases_(folder_, letters_, no_wait, &guard_),
      journal_({.folder = folder_,
                .make_engine =
                    [this] {
                      return std::make_unique<platform::SqliteEngine>(folder_, letters_, log_wait,
                                                                      &guard_);
                    },
                .post = [this](std::function<void()> call) { loop_.post(std::move(call)); }}),
      user_files_({.files = files_,
                   .is_database =
                       [this](const std::string& path) { return databases_.is_database(path); }}),
      console_(services()) {
  console_.messages.on_shown = [this](const std::string& text) { messages_.push_back(text); };
  console_.startup.Main("");
  workstation_.comm1.open();
}

WorkedConsole::~WorkedConsole() = default;

platform::Services WorkedConsole::services() {
  const platform::Services scripted = workstation_.services();
  return {.loop = loop_,
          .clock = clock_,
          .random = scripted.random,
          .files = *files_,
          .user_files = user_files_,
          .dialogs = scripted.dialogs,
          .databases = databases_,
          .journal = journal_,
          .printer = scripted.printer,
          .attention_sound = scripted.attention_sound,
          .letters = letters_,
          .comm1 = scripted.comm1,
          .comm2 = scripted.comm2,
          .winsock1 = scripted.winsock1,
          .remote_objects = scripted.remote_objects,
          .process_number = static_cast<int>(::getpid()),
          .end_program = [] {}};
}

void WorkedConsole::pass(platform::Milliseconds span) {
  const platform::Milliseconds end = loop_.now() + span;
  wait([&] { return loop_.now() >= end; });
}

// The scripted port's own loop hands over what has come.
bool WorkedConsole::report(int line, char letter) {
  workstation_.comm1.arrive(std::string(1, letter) + "0" + std::to_string(line));
  workstation_.loop.run_pending();
  return wait([&] {
    const char shown = console_.lines.StatusLetter(line);
    return shown == letter || (letter == 'F' && shown == ' ');
  });
}

void WorkedConsole::type_caller(int line, const std::string& name, const std::string& number) {
  driver::key(console_, digit_key(line), alt);
  CallerDataForm& form = console_.Form4;
  driver::replace_text(console_, form.TheText(name_entry), name);
  driver::replace_text(console_, form.TheText(number_entry), number);
}

void WorkedConsole::save_caller() {
  driver::click(console_, {console_.Form4, console_.Form4.Command3D1});
}

void WorkedConsole::choose_log() {
  answer_file(log_name);
  driver::click(console_, {console_.Lineweir, console_.Lineweir.DatabasePathMenuItem});
}

void WorkedConsole::choose_hot_list() {
  driver::key(console_, message_key, 0);
  if (console_.FlashMessA.AddCurrent.enabled) return;
  answer_file(hot_list_name);
  driver::click(console_, {console_.FlashMessA, console_.FlashMessA.BrowseButton});
}

}  // namespace lineweir::endurance

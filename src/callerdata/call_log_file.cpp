#include "callerdata/call_log_file.h"

#include <optional>

#include "base/text.h"
#include "callerdata/call_log.h"
#include "callerdata/log_places.h"
#include "forms/call_log_columns.h"
#include "letters/path_text.h"
#include "screen/display_options.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/stored_path.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::string_view file_filter = "All Files (*.*)|*.*|Access Database Files (*.mdb)|*.mdb";
constexpr int mdb_filter = 2;

// The failure as one sentence for the user.
std::string sentence_of(const ConsoleState& state, const Failure& failure) {
  std::string sentence = description_of(state.services.letters, failure);
  if (failure.number() != failure_number::older_database_kind) return sentence;
  if (sentence.ends_with('.')) sentence.pop_back();
  return sentence +
         " and can't be the log, but its table \"Caller Records\" can be brought in as CSV: "
         "Show Database, Import.";
}

std::string mismatch_question(std::string_view in_database, std::string_view in_lineweir) {
  return "The title of the User definable field in the database (" + std::string(in_database) +
         ") does not match the title of the user definable field in Lineweir (" +
         std::string(in_lineweir) + ").  Do you wish to change Lineweir to match?";
}

}  // namespace

CallLogFile::CallLogFile(ConsoleState& state, DisplayOptions& display, CallLog& call_log)
    : state_(state), display_(display), call_log_(call_log) {
  wire(state.Lineweir.DatabasePathMenuItem.on_click, state_.trace,
       "Lineweir_DatabasePathMenuItem_Click", [this] { DatabasePathMenuItem_Click(); });
}

void CallLogFile::DatabasePathMenuItem_Click() {
  platform::FileQuestion question;
  question.title = "Open";
  question.filter = file_filter;
  question.filter_index = mdb_filter;
  question.default_path = state_.Lineweir.Data1.database_name;
  question.may_be_new = true;
  question.shown_title = "Choose or create the call log";
  question.shown_filter = "Call logs (*.mdb)|*.mdb|All files (*.*)|*.*";
  const auto file = state_.services.dialogs.ask_file(question);
  if (!file || trimmed(*file).empty()) return;
  const bool storable = attempt(
      [&] { require_storable(*file, longest_log_path); },
      [&](const Failure& failure) { refuse("Lineweir_DatabasePathMenuItem_Click", failure); });
  if (!storable || !open_or_create(*file)) return;
  compare_user_field();
  take_waiting_calls(*file);
}

void CallLogFile::take_waiting_calls(const std::string& file) {
  const Letters& letters = state_.services.letters;
  const std::string name = file_name(letters, file);
  for (const platform::LogTrouble& trouble : state_.services.journal.state().troubles) {
    if (trouble.file == name) continue;
    const std::string question = "Calls wait for the log '" + letters.from_utf8(trouble.file) +
                                 "', which can't be written. Put them into '" +
                                 letters.from_utf8(name) + "' instead?";
    if (state_.services.dialogs.ask_yes_no(question)) {
      state_.services.journal.redirect(trouble.file, name);
    }
  }
}

bool CallLogFile::open_or_create(const std::string& file) {
  std::optional<Failure> failed;
  const auto open = [&] {
    failed.reset();
    return attempt([&] { call_log_.choose(file); },
                   [&](const Failure& failure) { failed = failure; });
  };
  if (!open() && failed->number() == failure_number::database_not_found) {
    if (!CreateDatabase(file)) return false;
    open();
  } else if (failed && failed->number() == failure_number::no_such_table && finish(file)) {
    open();
  }
  if (failed) refuse("Lineweir_DatabasePathMenuItem_Click", *failed);
  return !failed;
}

bool CallLogFile::CreateDatabase(const std::string& TheFile) {
  return attempt([&] { make(TheFile); },
                 [&](const Failure& failure) { refuse("Lineweir_CreateDatabase", failure); });
}

bool CallLogFile::finish(const std::string& file) {
  return attempt([&] { make(file); }, [](const Failure&) {});
}

void CallLogFile::make(const std::string& file) {
  const Letters& letters = state_.services.letters;
  const auto name = trimmed(state_.Lineweir.CaptionLabel(user_column).caption);
  state_.services.databases.create(file)->create_table(std::string(call_log_table),
                                                       new_log_columns(letters.to_utf8(name)));
}

void CallLogFile::compare_user_field() {
  const auto& fields = call_log_.recordset().fields();
  const int place = require_log_columns(fields).of(user_named_field);
  const std::string name =
      state_.services.letters.from_utf8(fields[static_cast<std::size_t>(place)].name);
  const auto in_database = trimmed(name);
  const std::string caption = state_.Lineweir.CaptionLabel(user_column).caption;
  const auto in_lineweir = trimmed(caption);
  if (in_database == in_lineweir) return;
  if (state_.services.dialogs.ask_yes_no(mismatch_question(in_database, in_lineweir))) {
    display_.set_heading(user_column, in_database);
  }
}

void CallLogFile::use_stored(const std::string& file, const std::string& handler) {
  attempt([&] { call_log_.choose(file); },
          [&](const Failure& failure) {
            // It will be let go, or there will be room again: the calls wait for it.
            if (failure.number() == failure_number::database_in_use ||
                failure.number() == failure_number::disk_full) {
              report_failure(state_.trace, handler, failure);
              return call_log_.choose_unseen(file);
            }
            out_of_reach_ = file;
            state_.Lineweir.Data1.database_name = "";
            if (failure.number() != failure_number::database_not_found) {
              return refuse(handler, failure);
            }
            state_.messages.ShowMessage(
                "The Selected Database File for logging caller information cannot be found!");
          });
}

std::string CallLogFile::path_to_store() const {
  return call_log_.chosen() ? state_.Lineweir.Data1.database_name.get() : out_of_reach_;
}

void CallLogFile::refuse(const std::string& handler, const Failure& failure) {
  report_failure(state_.trace, handler, failure);
  state_.messages.ShowMessage(sentence_of(state_, failure));
}

}  // namespace lineweir

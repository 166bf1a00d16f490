#include "admin/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "admin/trouble.h"
#include "base/version.h"
#include "letters/utf8.h"

namespace lineweir::admin {
namespace {

constexpr const char* hint = "; --help tells what there is.";
constexpr const char* description = "Works on a running lineweir-server, or moves its store.";

constexpr const char* footer = R"(
WHEN is a date (2026-01-31), a date and a time of day ("2026-01-31 18:05"), or how long ago (30m, 2h,
7d). Lines count from 1. Rights have the names of the items that they enable:

  lineweir-admin user add anna --template screener --group 1
  lineweir-admin user right anna 1 +CallerDataAllowed -ExitMenu
  lineweir-admin calls --since 7d --csv > calls.csv
  lineweir-admin migrate sqlite:server.db postgresql:///lineweir

Ends with 0, or with 1 and a line on the standard error.
)";

// The words of a change of rights; a command line takes "-ExitMenu" for options of one letter.
std::vector<std::string> take_right_changes(std::vector<std::string>& words) {
  const std::array<std::string, 2> command = {"user", "right"};
  const auto at = std::search(words.begin(), words.end(), command.begin(), command.end());
  std::vector<std::string> changes;
  if (at == words.end()) return changes;
  const auto rest = at + std::ssize(command);
  const auto is_change = [](const std::string& word) {
    return word.size() > 1 && (word[0] == '+' || (word[0] == '-' && word[1] != '-'));
  };
  std::copy_if(rest, words.end(), std::back_inserter(changes), is_change);
  words.erase(std::remove_if(rest, words.end(), is_change), words.end());
  return changes;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

// The commands with what was typed for their fields.
class Words {
 public:
  explicit Words(Moment now) : now_(now), app_(description, "lineweir-admin") {
    app_.footer(footer);
    app_.set_help_flag("--help", "Shows this");
    app_.set_version_flag("--version", std::string("lineweir-admin ") + program_version,
                          "Shows the version");
    app_.fallthrough();
    app_.require_subcommand(1);
    app_.add_option("--socket", order_.socket, "The server's socket for administrators")
        ->capture_default_str();
    app_.add_flag("--json", order_.json, "Gives JSON");
    add_users();
    add_studio();
    add_records();
    add_whole_server();
  }

  std::variant<Order, Help> read(std::vector<std::string> words) {
    changes_ = take_right_changes(words);
    std::ranges::reverse(words);
    try {
      app_.parse(std::move(words));
    } catch (const CLI::CallForHelp&) {
      return Help{app_.help("", CLI::AppFormatMode::Normal)};
    } catch (const CLI::CallForVersion&) {
      return Help{app_.version() + "\n"};
    } catch (const CLI::RequiredError& error) {
      // A word that means nothing is why a command is missing.
      const std::vector<std::string> unknown = app_.remaining(true);
      if (unknown.empty()) throw Trouble(std::string(error.what()) + hint);
      throw Trouble("\"" + unknown.front() + "\" is no command" + hint);
    } catch (const CLI::ParseError& error) {
      throw Trouble(std::string(error.what()) + hint);
    }
    if (changes_given_ && !changes_.empty()) order_.request.values[Field::Changes] = changes_;
    for (const auto& fill : fill_) fill();
    return order_;
  }

 private:
  using App = CLI::App;

  App* add(App& parent, Command command, const std::string& name, const std::string& what) {
    App* added = parent.add_subcommand(name, what);
    added->final_callback([this, command] { order_.request.command = command; });
    return added;
  }
  App* add_family(const std::string& name, const std::string& what) {
    App* family = app_.add_subcommand(name, what);
    family->require_subcommand(1);
    return family;
  }

  // What is typed becomes the field's value if it was typed.
  template <class Typed>
  CLI::Option* take(App* command, const std::string& name, Field field, const std::string& what,
                    std::function<Value(const Typed&)> value) {
    auto typed = std::make_shared<Typed>();
    CLI::Option* option = command->add_option(name, *typed, what);
    fill_.emplace_back([this, typed, option, field, value = std::move(value)] {
      if (option->count() > 0) order_.request.values[field] = value(*typed);
    });
    return option;
  }
  CLI::Option* text(App* command, const std::string& name, Field field, const std::string& what) {
    return take<std::string>(command, name, field, what, [](const auto& typed) { return typed; });
  }
  // Several words without quotes are one text.
  CLI::Option* words(App* command, const std::string& name, Field field, const std::string& what) {
    return take<std::vector<std::string>>(command, name, field, what, joined);
  }
  CLI::Option* number(App* command, const std::string& name, Field field, const std::string& what) {
    const FieldRow& row = row_of(field);
    return take<std::int64_t>(command, name, field, what, [](const auto& typed) { return typed; })
        ->check(CLI::Range(row.least, row.most));
  }
  CLI::Option* name(App* command) {
    return text(command, "NAME", Field::Name, "The user")->required();
  }
  void caller_number(App* command) {
    text(command, "NUMBER", Field::Number, "The caller's number")->required();
  }
  CLI::Option* group(App* command) {
    return number(command, "GROUP", Field::Group, "The group's number")->required();
  }
  CLI::Option* only_group(App* command) {
    return number(command, "--group", Field::Group, "Only this group");
  }
  void line(App* command) {
    group(command);
    number(command, "LINE", Field::Line, "The line, from 1")->required();
  }
  void file(App* command, const std::string& what) {
    take<std::string>(command, "FILE", Field::File, what, [](const auto& typed) {
      if (typed.empty()) throw Trouble("The name of the file is empty.");
      return std::filesystem::absolute(typed).lexically_normal().string();
    })->required();
  }
  void password(App* command) {
    command->add_flag("--password-stdin", order_.password_from_input,
                      "Takes the password from the standard input");
  }

  void add_users() {
    App& user = *add_family("user", "Users and their rights");
    App* added = add(user, Command::UserAdd, "add", "Adds a user");
    name(added);
    text(added, "--template", Field::Template, "The rights at first: engineer, host or screener")
        ->required();
    const FieldRow& number_row = row_of(Field::Groups);
    take<std::vector<std::int64_t>>(added, "--group", Field::Groups,
                                    "A group that is open to the user; all without this",
                                    [](const auto& typed) { return typed; })
        ->check(CLI::Range(number_row.least, number_row.most))
        ->allow_extra_args(false);
    password(added);
    add(user, Command::UserList, "list", "Lists the users");
    App* changed = add(user, Command::UserPassword, "password", "Gives a user a new password");
    name(changed);
    password(changed);
    name(add(user, Command::UserLock, "lock", "Lets a user in no more"));
    name(add(user, Command::UserUnlock, "unlock", "Lets a user in again"));
    name(add(user, Command::UserRemove, "remove", "Removes a user"));
    App* right = add(user, Command::UserRight, "right",
                     "Shows a user's rights in a group, or changes them: +RIGHT -RIGHT");
    name(right);
    group(right);
    right->final_callback([this] {
      order_.request.command = Command::UserRight;
      changes_given_ = true;
    });
    App& profile = *add_family("profile", "What a user's console keeps on the server");
    name(add(profile, Command::ProfileShow, "show", "Shows a user's profile"));
    name(add(profile, Command::ProfileReset, "reset", "Empties a user's profile"));
  }

  void add_studio() {
    add(app_, Command::Seats, "seats", "Lists who is connected");
    group(add(app_, Command::Lines, "lines", "Lists a group's lines"));
    App* call = add(app_, Command::Call, "call", "A caller of a simulated exchange arrives");
    line(call);
    text(call, "--number", Field::Number, "The caller's number");
    line(add(app_, Command::HangUp, "hangup", "A caller of a simulated exchange leaves"));
    App* event = add(app_, Command::Event, "event", "Sets the texts of the show's times");
    group(event);
    text(event, "--last", Field::Last, "Since when the event runs");
    text(event, "--next", Field::Next, "When the next one begins");
    words(event, "TEXT", Field::Text, "The event");
    App* message = add(app_, Command::Message, "message", "Shows a message at all seats");
    words(message, "TEXT", Field::Text, "The message")->required();
    only_group(message);
  }

  void add_records() {
    App* calls = add(app_, Command::Calls, "calls", "Lists calls that have ended");
    take<std::string>(calls, "--since", Field::Since, "Calls that ended at WHEN or later",
                      [this](const std::string& typed) -> Value {
                        const auto moment = parse_when(typed, now_);
                        if (moment) return static_cast<std::int64_t>(moment->count());
                        throw Trouble("\"" + typed + "\" is no moment; 2026-01-31, \"2026-01-31 " +
                                      "18:05\", 30m, 2h and 7d are.");
                      });
    only_group(calls);
    calls->add_flag("--csv", order_.csv, "Gives comma-separated values with all fields");
    App& caller = *add_family("caller", "What is remembered of callers, by their numbers");
    add(caller, Command::CallerList, "list", "Lists of whom something is noted");
    caller_number(add(caller, Command::CallerShow, "show", "Shows what is known of a number"));
    App* flag = add(caller, Command::CallerFlag, "flag", "Notes something of a caller");
    caller_number(flag);
    text(flag, "FLAG", Field::Flag, "regular, careful or barred")->required();
    text(flag, "--reason", Field::Text, "Why");
    text(flag, "--until", Field::Until, "The last day on which it holds, 2026-12-31");
    caller_number(add(caller, Command::CallerClear, "clear", "Takes back what is noted"));
    App& audit = *add_family("audit", "What was done, by whom");
    add(audit, Command::AuditList, "list", "Lists all entries");
    add(audit, Command::AuditVerify, "verify", "Looks for entries that are missing or changed");
  }

  void add_whole_server() {
    App* shutdown = add(app_, Command::Shutdown, "shutdown", "Ends the server");
    number(shutdown, "--seconds", Field::Seconds, "From now; all seats are told");
    words(shutdown, "TEXT", Field::Text, "Why, for all seats");
    file(add(app_, Command::Backup, "backup", "Copies all that the server keeps"),
         "A file that isn't there yet");
    file(add(app_, Command::Restore, "restore", "Takes over a backup, into an empty store"),
         "A file of a backup");
    App* migration = app_.add_subcommand(
        "migrate", "Moves a whole store into an empty one, while no server works on either");
    auto typed = std::make_shared<Migration>();
    migration->add_option("FROM", typed->from, "The store, as the configuration names it")
        ->required();
    migration->add_option("TO", typed->to, "sqlite:FILE or postgresql://user@host/database")
        ->required();
    migration->final_callback([this, typed] { order_.migration = *typed; });
  }

  Moment now_;
  CLI::App app_;
  Order order_;
  std::vector<std::string> changes_;
  bool changes_given_ = false;
  std::vector<std::function<void()>> fill_;
};

}  // namespace

bool Order::needs_password() const {
  if (migration) return false;
  const CommandRow& row = row_of(request.command);
  return std::ranges::find(fields_of(row), Field::Password) != fields_of(row).end();
}

std::variant<Order, Help> read_command_line(std::vector<std::string> words, Moment now) {
  if (!std::ranges::all_of(words, is_utf8)) throw Trouble("The command line isn't UTF-8.");
  return Words(now).read(std::move(words));
}

}  // namespace lineweir::admin

#include "driver/outside.h"

#include "base/names.h"
#include "driver/refusal.h"

namespace lineweir::driver {
namespace {

constexpr int highest_failure = 65535;
constexpr int most_openings = 1000000;
constexpr std::string_view cancel = "cancel";

platform::ScriptedSerialPort& port(Session& session, const Arguments& arguments) {
  if (same_name(arguments.word(0), "Comm1")) return session.platform().comm1;
  if (same_name(arguments.word(0), "Comm2")) return session.platform().comm2;
  throw NotUnderstood("no such port: " + on_one_line(arguments.word(0)));
}

// The answer, or none for the word "cancel".
template <class Read>
auto answer(const Arguments& arguments, const Read& read) -> std::optional<decltype(read())> {
  if (arguments.word(0) == cancel) return std::nullopt;
  return read();
}

bool yes_or_no(const std::string& word) {
  if (word == "yes") return true;
  if (word == "no") return false;
  throw NotUnderstood("not yes, no or cancel: " + on_one_line(word));
}

Json asked_value(const platform::FileQuestion& question) {
  return {{"kind", "file"},
          {"title", text_value(question.title)},
          {"filter", text_value(question.filter)},
          {"default", text_value(question.default_path)}};
}

Json asked_value(const platform::InputQuestion& question) {
  return {{"kind", "input"},
          {"prompt", text_value(question.prompt)},
          {"default", text_value(question.default_text)}};
}

Json asked_value(const platform::YesNoQuestion& question) {
  return {{"kind", "question"}, {"text", text_value(question.text)}};
}

Json asked_value(const platform::FontChoice& font) {
  return {{"kind", "font"}, {"default", font_value(font)}};
}

}  // namespace

Result serial_in(Session& session, const Arguments& arguments) {
  auto& comm = port(session, arguments);
  const std::string characters = arguments.text(1);
  session.act([&] { comm.arrive(characters); });
  return done;
}

Result serial_reply(Session& session, const Arguments& arguments) {
  port(session, arguments).reply(arguments.text(1), arguments.text(2));
  return done;
}

Result serial_out(Session& session, const Arguments& arguments) {
  return texts_value(port(session, arguments).take_writes());
}

Result serial_fail(Session& session, const Arguments& arguments) {
  auto& comm = port(session, arguments);
  const int number = arguments.number(1, 1, highest_failure);
  comm.fail_openings(number, arguments.count() < 3 ? 1 : arguments.number(2, 0, most_openings));
  return done;
}

Result socket_accept(Session& session, const Arguments&) {
  session.platform().winsock1.accept_connections(true);
  return done;
}

Result socket_refuse(Session& session, const Arguments&) {
  session.platform().winsock1.accept_connections(false);
  return done;
}

Result socket_in(Session& session, const Arguments& arguments) {
  const std::string bytes = arguments.text(0);
  session.act([&] { session.platform().winsock1.arrive(bytes); });
  return done;
}

Result socket_reply(Session& session, const Arguments& arguments) {
  const int command = arguments.number(0, 0, 255);
  session.platform().winsock1.reply(command, arguments.text(1));
  return done;
}

Result socket_out(Session& session, const Arguments&) {
  return texts_value(session.platform().winsock1.take_writes());
}

Result socket_drop(Session& session, const Arguments&) {
  session.platform().winsock1.drop();
  return done;
}

Result socket_open(Session& session, const Arguments&) {
  MainForm& form = session.console().Lineweir;
  session.act([&] {
    session.platform().winsock1.stand_connected();
    form.uncheck_coms();
    form.NetworkConnectionOption.checked = false;
    form.WinsockMenu.checked = true;
  });
  return done;
}

Result remote_present(Session& session, const Arguments&) {
  session.platform().remote_objects.set_present(true);
  return done;
}

Result remote_absent(Session& session, const Arguments&) {
  session.platform().remote_objects.set_present(false);
  return done;
}

Result remote_result(Session& session, const Arguments& arguments) {
  session.platform().remote_objects.set_result(arguments.text_or_word(0),
                                               remote_value_of(arguments.value(1)));
  return done;
}

Result remote_calls(Session& session, const Arguments&) {
  Json calls = Json::array();
  for (const platform::RemoteCall& call : session.platform().remote_objects.take_calls()) {
    Json entry = {text_value(call.object), text_value(call.member)};
    for (const auto& argument : call.arguments) entry.push_back(remote_value(argument));
    calls.push_back(std::move(entry));
  }
  return calls;
}

Result remote_callback(Session& session, const Arguments& arguments) {
  const std::string method = arguments.text_or_word(0);
  std::vector<platform::RemoteValue> values;
  for (std::size_t i = 1; i < arguments.count(); ++i) {
    values.push_back(remote_value_of(arguments.value(i)));
  }
  session.act([&] { session.platform().remote_objects.call_back(method, values); });
  return done;
}

Result remote_open(Session& session, const Arguments&) {
  Console& console = session.console();
  MainForm& form = console.Lineweir;
  platform::ScriptedRemoteObjects& objects = session.platform().remote_objects;
  session.act([&] {
    objects.set_present(true);
    platform::RemoteObjects& seen = console.services.remote_objects;
    console.remote.SerialInputObject = seen.create("Quorlink.SerialInput");
    console.remote.CallbackServer = seen.create("Quorlink.CBServerClass");
    console.remote.connected = true;
    form.uncheck_coms();
    form.WinsockMenu.checked = false;
    form.NetworkConnectionOption.checked = true;
  });
  return done;
}

// Another program holds the log; the disk under it is full; neither is so any more.
Result log_lock(Session& session, const Arguments&) {
  session.platform().failing_databases.fail(failure_number::database_in_use);
  return done;
}

Result log_full(Session& session, const Arguments&) {
  session.platform().failing_databases.fail(failure_number::disk_full);
  return done;
}

Result log_free(Session& session, const Arguments&) {
  session.platform().failing_databases.fail(0);
  return done;
}

Result log_delete(Session& session, const Arguments&) {
  session.delete_file(session.console().Lineweir.Data1.database_name);
  return done;
}

// What waits for the log can't be kept; it can again.
Result journal_full(Session& session, const Arguments&) {
  session.act([&] {
    session.platform().journal.set_trouble("The calls can't be kept in " +
                                           session.platform().files.current_directory() +
                                           ": No space left on device.");
  });
  return done;
}

Result journal_free(Session& session, const Arguments&) {
  session.act([&] { session.platform().journal.set_trouble({}); });
  return done;
}

Result answer_file(Session& session, const Arguments& arguments) {
  session.platform().dialogs.answer_file(answer(arguments, [&] { return arguments.text(0); }));
  return done;
}

Result answer_input(Session& session, const Arguments& arguments) {
  session.platform().dialogs.answer_input(answer(arguments, [&] { return arguments.text(0); }));
  return done;
}

Result answer_question(Session& session, const Arguments& arguments) {
  session.platform().dialogs.answer_question(
      answer(arguments, [&] { return yes_or_no(arguments.text_or_word(0)); }));
  return done;
}

Result answer_font(Session& session, const Arguments& arguments) {
  session.platform().dialogs.answer_font(
      answer(arguments, [&] { return font_of(arguments.value(0)); }));
  return done;
}

Result dialogs(Session& session, const Arguments&) {
  Json asked = Json::array();
  for (const platform::AskedDialog& dialog : session.platform().dialogs.take_asked()) {
    asked.push_back(std::visit([](const auto& question) { return asked_value(question); }, dialog));
  }
  return asked;
}

Result clock_settings(Session& session, const Arguments&) {
  Json moments = Json::array();
  for (const platform::DateTime& moment : session.platform().clock.take_settings()) {
    moments.push_back(moment_value(moment));
  }
  return moments;
}

}  // namespace lineweir::driver

#include "driver/commands.h"

#include <array>
#include <climits>
#include <utility>

#include "driver/functions.h"
#include "driver/hands.h"
#include "driver/outside.h"
#include "driver/places.h"
#include "driver/refusal.h"
#include "driver/usage.h"
#include "driver/words.h"

namespace lineweir::driver {
namespace {

// A week.
constexpr int longest_advance = 7 * 24 * 60 * 60 * 1000;
constexpr int largest_window = 100000;

// Something that the user does to an element.
template <void (*Act)(Console&, const FoundElement&)>
Result hand(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const FoundElement found = find_element(console, arguments.word(0));
  session.act([&] { Act(console, found); });
  return done;
}

// The same with whole numbers behind it.
template <void (*Act)(Console&, const FoundElement&, int)>
Result hand(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const FoundElement found = find_element(console, arguments.word(0));
  const int number = arguments.number(1, INT_MIN, INT_MAX);
  session.act([&] { Act(console, found, number); });
  return done;
}

template <void (*Act)(Console&, const FoundElement&, int, int)>
Result hand(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const FoundElement found = find_element(console, arguments.word(0));
  const int first = arguments.number(1, INT_MIN, INT_MAX);
  const int second = arguments.number(2, INT_MIN, INT_MAX);
  session.act([&] { Act(console, found, first, second); });
  return done;
}

Result launch(Session& session, const Arguments& arguments) {
  session.launch(arguments.count() == 0 ? std::string() : arguments.text_or_word(0));
  return done;
}

Result quit(Session& session, const Arguments&) {
  Console& console = session.console();
  session.act([&] { close(console, console.Lineweir); });
  return done;
}

Result clock(Session& session, const Arguments& arguments) {
  platform::ScriptedSystemClock& clock = session.platform().clock;
  if (arguments.count() == 0) return moment_value(clock.now());
  clock.put(moment_of(arguments.value(0)));
  return done;
}

Result advance(Session& session, const Arguments& arguments) {
  session.advance(platform::Milliseconds(arguments.number(0, 0, longest_advance)));
  return done;
}

Result type_text(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const FoundElement found = find_element(console, arguments.word(0));
  const std::string text = text_of(arguments.value(1), text_kind(found.element));
  session.act([&] { type(console, found, text); });
  return done;
}

Result press_button(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const FoundElement found = find_element(console, arguments.word(0));
  session.act([&] { session.pressed = &press(console, found); });
  return done;
}

Result release_button(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const FoundElement found = find_element(console, arguments.word(0));
  const Control* const pressed = std::exchange(session.pressed, nullptr);
  session.act([&] { release(console, found, pressed); });
  return done;
}

Result press_key(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const int code = arguments.number(0, 0, 255);
  const int shift = arguments.number(1, 0, 7);
  session.act([&] { key(console, code, shift); });
  return done;
}

Result set(Session& session, const Arguments& arguments) {
  const Place place = find_place(session, arguments.word(0));
  const Json value = arguments.value(1);
  if (!place.set) throw NotUnderstood("can't be set: " + arguments.word(0));
  session.act([&] { place.set(value); });
  return done;
}

Result get(Session& session, const Arguments& arguments) {
  return find_place(session, arguments.word(0)).get();
}

Result resize_window(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  const int width = arguments.number(0, 1, largest_window);
  const int height = arguments.number(1, 1, largest_window);
  session.act([&] { resize(console, width, height); });
  return done;
}

template <FormWindowState State>
Result window_state(Session& session, const Arguments&) {
  Console& console = session.console();
  session.act([&] { set_window_state(console, State); });
  return done;
}

Result close_form(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  Form& form = find_form(console, arguments.word(0));
  session.act([&] { close(console, form); });
  return done;
}

Result forms(Session& session, const Arguments&) {
  Json names = Json::array();
  for (const Form* form : session.console().forms()) {
    if (form->visible) names.push_back(text_value(form->name()));
  }
  return names;
}

Result list(Session& session, const Arguments& arguments) {
  Console& console = session.console();
  return texts_value(element_paths(console, find_form(console, arguments.word(0))));
}

Result messages(Session& session, const Arguments&) { return texts_value(session.take_messages()); }

Result trace(Session& session, const Arguments&) { return texts_value(session.take_trace()); }

Result call(Session& session, const Arguments& arguments) {
  std::vector<Json> values;
  for (std::size_t i = 1; i < arguments.count(); ++i) values.push_back(arguments.value(i));
  return call_function(session, arguments.word(0), values);
}

Result expect(Session& session, const Arguments& arguments);

enum class Gives { Nothing, Value };

// A command by its usage. The function returns the value asked for, or nothing where the reply is
// "ok".
struct Command {
  std::string_view usage;
  Result (*run)(Session& session, const Arguments& arguments);
  Gives gives = Gives::Nothing;
};

constexpr std::array table = {
    Command{"launch [ARG]", launch},
    Command{"quit", quit},

    Command{"clock [MOMENT]", clock, Gives::Value},
    Command{"advance MS", advance},

    Command{"click PATH", hand<click>},
    Command{"dblclick PATH", hand<double_click>},
    Command{"rightclick PATH", hand<right_click>},
    Command{"press PATH", press_button},
    Command{"release PATH", release_button},
    Command{"key CODE SHIFT", press_key},
    Command{"type PATH TEXT", type_text},
    Command{"set PATH VALUE", set},
    Command{"focus PATH", hand<focus>},
    Command{"blur PATH", hand<blur>},
    Command{"select PATH N", hand<select>},
    Command{"cell PATH ROW COL", hand<select_cell>},
    Command{"drag PATH FROM TO", hand<drag>},
    Command{"resize WIDTH HEIGHT", resize_window},
    Command{"minimise", window_state<window_minimised>},
    Command{"restore", window_state<window_normal>},
    Command{"close FORM", close_form},

    Command{"get PATH", get, Gives::Value},
    Command{"expect PATH VALUE", expect},
    Command{"expect COMMAND ...", expect},
    Command{"forms", forms, Gives::Value},
    Command{"list FORM", list, Gives::Value},
    Command{"messages", messages, Gives::Value},
    Command{"trace", trace, Gives::Value},
    Command{"call NAME ...", call, Gives::Value},

    Command{"serial P in TEXT", serial_in},
    Command{"serial P reply TEXT TEXT", serial_reply},
    Command{"serial P out", serial_out, Gives::Value},
    Command{"serial P fail NUMBER [COUNT]", serial_fail},

    Command{"socket accept", socket_accept},
    Command{"socket refuse", socket_refuse},
    Command{"socket in BYTES", socket_in},
    Command{"socket reply CMD BYTES", socket_reply},
    Command{"socket out", socket_out, Gives::Value},
    Command{"socket drop", socket_drop},
    Command{"socket open", socket_open},

    Command{"remote present", remote_present},
    Command{"remote absent", remote_absent},
    Command{"remote result MEMBER VALUE", remote_result},
    Command{"remote calls", remote_calls, Gives::Value},
    Command{"remote callback METHOD ...", remote_callback},
    Command{"remote open", remote_open},

    Command{"log lock", log_lock},
    Command{"log full", log_full},
    Command{"log free", log_free},
    Command{"log delete", log_delete},
    Command{"journal full", journal_full},
    Command{"journal free", journal_free},

    Command{"answer file PATH", answer_file},
    Command{"answer input TEXT", answer_input},
    Command{"answer question YES_OR_NO", answer_question},
    Command{"answer font FONT", answer_font},
    Command{"dialogs", dialogs, Gives::Value},
    Command{"system", clock_settings, Gives::Value},
};

struct FoundCommand {
  const Command* command = nullptr;
  Arguments arguments;
};

// The first command that the words fit; without one, the nearest by its literal words, if any.
FoundCommand find_command(const std::vector<std::string>& words, std::string_view& nearest) {
  std::size_t most_literals = 0;
  for (const Command& command : table) {
    UsageMatch match = match_usage(command.usage, words);
    if (match.whole) return {&command, Arguments(std::move(match.parameters))};
    if (match.literals > most_literals) {
      most_literals = match.literals;
      nearest = command.usage;
    }
  }
  return {nullptr, Arguments({})};
}

Result value_of(Session& session, const std::vector<std::string>& words) {
  std::string_view nearest;
  const FoundCommand found = find_command(words, nearest);
  if (found.command != nullptr && found.command->gives == Gives::Value) {
    return found.command->run(session, found.arguments);
  }
  if (words.size() != 1) throw NotUnderstood("usage: expect PATH VALUE");
  return find_place(session, words.front()).get();
}

// What can't be read, as no console runs or the element isn't there, is not as expected.
Json expected_of(Session& session, const std::vector<std::string>& words) {
  try {
    return value_of(session, words).value_or(Json());
  } catch (const NotUnderstood&) {
    throw;
  } catch (const Refusal& refusal) {
    throw NotAsExpected(refusal.what());
  }
}

// Beside a path, a command that gives a value.
Result expect(Session& session, const Arguments& arguments) {
  const std::size_t last = arguments.count() - 1;
  if (last == 0) throw NotUnderstood("usage: expect PATH VALUE");
  const Json wanted = arguments.value(last);
  std::vector<std::string> words;
  for (std::size_t i = 0; i < last; ++i) words.push_back(arguments.word(i));
  const Json present = expected_of(session, words);
  if (present == wanted) return done;
  throw NotAsExpected("expected " + printed(wanted) + " got " + printed(present));
}

}  // namespace

std::optional<Json> run_command(Session& session, const std::vector<std::string>& words) {
  std::string_view nearest;
  const FoundCommand found = find_command(words, nearest);
  if (found.command != nullptr) return found.command->run(session, found.arguments);
  if (nearest.empty()) throw NotUnderstood("no such command: " + on_one_line(words.front()));
  throw NotUnderstood("usage: " + std::string(nearest));
}

}  // namespace lineweir::driver

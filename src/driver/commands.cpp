#include "driver/commands.h"

#include <array>
#include <climits>

#include "driver/functions.h"
#include "driver/hands.h"
#include "driver/outside.h"
#include "driver/places.h"
#include "driver/refusal.h"

namespace lineweir::driver {
namespace {

using Result = std::optional<Json>;
constexpr std::nullopt_t done = std::nullopt;

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
  const std::string text = arguments.text(1);
  session.act([&] { type(console, found, text); });
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

Result expect(Session& session, const Arguments& arguments) {
  const Json wanted = arguments.value(1);
  const Json present = find_place(session, arguments.word(0)).get();
  if (present == wanted) return done;
  throw NotAsExpected("expected " + printed(wanted) + " got " + printed(present));
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

constexpr std::array table = {
    Command{"launch [ARG]", launch},
    Command{"quit", quit},

    Command{"clock [MOMENT]", clock},
    Command{"advance MS", advance},

    Command{"click PATH", hand<click>},
    Command{"dblclick PATH", hand<double_click>},
    Command{"rightclick PATH", hand<right_click>},
    Command{"press PATH", hand<press>},
    Command{"release PATH", hand<release>},
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

    Command{"get PATH", get},
    Command{"expect PATH VALUE", expect},
    Command{"forms", forms},
    Command{"list FORM", list},
    Command{"messages", messages},
    Command{"trace", trace},
    Command{"call NAME ...", call},

    Command{"serial P in TEXT", serial_in},
    Command{"serial P reply TEXT TEXT", serial_reply},
    Command{"serial P out", serial_out},
    Command{"serial P fail NUMBER [COUNT]", serial_fail},

    Command{"socket accept", socket_accept},
    Command{"socket refuse", socket_refuse},
    Command{"socket in BYTES", socket_in},
    Command{"socket reply CMD BYTES", socket_reply},
    Command{"socket out", socket_out},
    Command{"socket drop", socket_drop},
    Command{"socket open", socket_open},

    Command{"remote present", remote_present},
    Command{"remote absent", remote_absent},
    Command{"remote result MEMBER VALUE", remote_result},
    Command{"remote calls", remote_calls},
    Command{"remote callback METHOD ...", remote_callback},
    Command{"remote open", remote_open},

    Command{"answer file PATH", answer_file},
    Command{"answer input TEXT", answer_input},
    Command{"answer question YES_OR_NO", answer_question},
    Command{"answer font FONT", answer_font},
    Command{"dialogs", dialogs},
    Command{"system", clock_settings},
};

}  // namespace

std::span<const Command> commands() { return table; }

}  // namespace lineweir::driver

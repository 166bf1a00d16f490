#include "server/admin_studio.h"

#include "base/text.h"
#include "lines/equipment_kinds.h"
#include "server/admin_names.h"

namespace lineweir::server {
namespace {

using admin::Field;
using nlohmann::json;

constexpr std::size_t longest_dialled_number = 40;
constexpr std::size_t longest_event_text = 100;
constexpr std::size_t longest_announcement = 1000;
constexpr const char* simulated = "simulated";

Group* group_of(const AdminServices& services, const admin::Request& request) {
  return services.seats.find_group(static_cast<int>(request.number(Field::Group)));
}

// A numbered handset position has a letter that nobody can read; consoles get it as P too.
std::string letter_text(char letter) {
  return std::string(1, code_of(letter) < first_position_code ? letter : 'P');
}

json row_of_line(const AdminServices& services, const Group& group, int line) {
  const GroupLine& state = group.lines().line(line);
  const auto& names = group.options().line_names;
  const auto place = static_cast<std::size_t>(line);
  const auto& data = group.caller_data().data(line);
  const platform::CallRecord* call = services.context.calls.find(group.number(), line);
  return {{"number", line + 1},
          {"name", place < names.size() ? names[place] : std::to_string(line + 1)},
          {"letter", letter_text(state.letter)},
          {"since", state.since.count()},
          {"user", state.worked_by},
          {"caller", data ? services.context.letters.to_utf8(data->fields.front()) : ""},
          {"caller_number", call == nullptr ? "" : call->number}};
}

// The group's line that a request of a simulated caller is about, from 0; otherwise what is told.
struct CallPlace {
  Group* group = nullptr;
  int line = 0;
  std::string refusal = {};
};

CallPlace call_place(const AdminServices& services, const admin::Request& request) {
  Group* group = group_of(services, request);
  if (group == nullptr) return {.refusal = no_such_group(request.number(Field::Group)).refusal};
  const int line = static_cast<int>(request.number(Field::Line)) - 1;
  const std::string name = "Line " + std::to_string(line + 1);
  if (!group->lines().exists(line)) {
    return {.refusal = name + " doesn't exist."};
  }
  if (group->options().exchange != simulated) {
    return {.refusal = "The group's exchange isn't simulated: its callers come by themselves."};
  }
  return {.group = group, .line = line};
}

}  // namespace

void list_seats(const AdminServices& services, const TellReply& tell) {
  AdminList::Rows rows;
  for (const Seat* seat : services.seats.all()) {
    rows.push_back({{"user", seat->user},
                    {"group", seat->group},
                    {"console", seat->console},
                    {"mode", seat->screener ? "screener" : "studio"},
                    {"address", seat->place()},
                    {"since", seat->since.count()}});
  }
  tell({.list = std::make_unique<AdminList>(std::move(rows))});
}

void list_lines(const AdminServices& services, const admin::Request& request,
                const TellReply& tell) {
  const Group* group = group_of(services, request);
  if (group == nullptr) return tell(no_such_group(request.number(Field::Group)));
  AdminList::Rows rows;
  for (int line = 0; line < group->lines().count(); ++line) {
    if (group->lines().exists(line)) rows.push_back(row_of_line(services, *group, line));
  }
  tell({.list = std::make_unique<AdminList>(std::move(rows))});
}

void make_call(const AdminServices& services, const admin::Request& request,
               const TellReply& tell) {
  const std::string number = request.text_or(Field::Number, "");
  if (auto why = why_not_shown(number, "The number", longest_dialled_number); !why.empty()) {
    return tell(refused(std::move(why)));
  }
  const CallPlace place = call_place(services, request);
  if (place.group == nullptr) return tell(refused(place.refusal));
  // A telephone exchange tells numbers in the consoles' letters.
  const std::string told = services.context.letters.from_utf8(number);
  if (place.group->lines().exchange().arrive(place.line, told)) return tell({});
  tell(refused("Line " + std::to_string(place.line + 1) + " isn't free."));
}

void end_call(const AdminServices& services, const admin::Request& request, const TellReply& tell) {
  const CallPlace place = call_place(services, request);
  if (place.group == nullptr) return tell(refused(place.refusal));
  if (place.group->lines().exchange().leave(place.line)) return tell({});
  tell(refused("Line " + std::to_string(place.line + 1) + " has no caller."));
}

void set_event(const AdminServices& services, const admin::Request& request,
               const TellReply& tell) {
  Group* group = group_of(services, request);
  if (group == nullptr) return tell(no_such_group(request.number(Field::Group)));
  std::array<std::string, 3> texts = group->show_times_texts();
  constexpr std::array text_fields = {Field::Last, Field::Next, Field::Text};
  if (request.values.size() == 1) return tell(refused("There is no text to set."));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    texts[i] = request.text_or(text_fields[i], texts[i]);
    if (auto why = why_not_shown(texts[i], "The text", longest_event_text); !why.empty()) {
      return tell(refused(std::move(why)));
    }
  }
  group->set_show_times(texts);
  tell_done(services, tell);
}

void tell_everybody(const AdminServices& services, const admin::Request& request,
                    const TellReply& tell) {
  const std::string& text = request.text(Field::Text);
  auto why = text.empty() ? "The message is empty."
                          : why_not_shown(text, "The message", longest_announcement);
  if (!why.empty()) return tell(refused(std::move(why)));
  if (request.values.contains(Field::Group)) {
    const Group* group = group_of(services, request);
    if (group == nullptr) return tell(no_such_group(request.number(Field::Group)));
    group->tell_persons(text);
  } else {
    for (Seat* seat : services.seats.all()) seat->tell_person(text);
  }
  services.context.audit.note(administrator, "message", text);
  tell({});
}

}  // namespace lineweir::server

#include "server/admin_callers.h"

#include <utility>

#include "adminlink/admin_columns.h"
#include "base/iso_date.h"
#include "base/telephone_number.h"
#include "server/admin_names.h"
#include "server/caller_memory.h"
#include "wire/caller_known.h"

namespace lineweir::server {
namespace {

using admin::Field;
using nlohmann::json;

AdminReply no_number() {
  return refused("A caller is known by a number of at least " +
                 std::to_string(least_digits_of_number) + " digits.");
}

json::object_t row_of(const platform::FlaggedCaller& caller) {
  return {{"number", caller.number}, {"flag", std::string(name_of(caller.flag))},
          {"reason", caller.reason}, {"until", caller.until},
          {"by", caller.by},         {"at", caller.at.count()}};
}

// Why the texts of the request can't be noted; empty where they can.
std::string why_not_noted(const AdminServices& services, const admin::Request& request) {
  if (!find_caller_flag(request.text(Field::Flag)) || request.text(Field::Flag) == "none") {
    return "A flag is \"regular\", \"careful\" or \"barred\".";
  }
  const std::string until = request.text_or(Field::Until, "");
  if (!until.empty() && !iso_date_of(until)) {
    return in_quotes(until) + " is no date; 2026-12-31 is.";
  }
  const Context& context = services.context;
  if (!until.empty() && until < iso_date_text(context.clock.local(context.clock.now()))) {
    return "The last day " + until + " is over already.";
  }
  const std::string number = request.text(Field::Number);
  if (auto why = why_not_shown(number, "The number", longest_caller_number); !why.empty())
    return why;
  return why_not_shown(request.text_or(Field::Text, ""), "The reason", flag_reason_length);
}

}  // namespace

void list_callers(const AdminServices& services, const TellReply& tell) {
  AdminList::Rows rows;
  for (const auto& [key, caller] : services.context.memory.all()) rows.push_back(row_of(caller));
  tell({.list = std::make_unique<AdminList>(std::move(rows))});
}

void show_caller(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell) {
  const std::string number = request.text(Field::Number);
  const std::string key = telephone_key(number);
  if (key.empty()) return tell(no_number());
  // Behind what waits, where that comes; a mere look needs no more.
  when_kept_or_late(services, [&services, tell, number, key](bool) {
    services.context.memory.ask(
        key, while_there(services, [&services, tell, number,
                                    key](const std::optional<platform::CallerHistory>& history) {
          if (!history)
            return tell(refused("The store can't be read; the server's log tells why."));
          platform::FlaggedCaller none;
          none.number = number;
          const platform::FlaggedCaller* const noted = services.context.memory.find(key);
          json::object_t row = row_of(noted == nullptr ? none : *noted);
          row["calls"] = history->calls;
          row["on_air"] = history->on_air;
          row["last_on_air"] = history->last_on_air.count();
          row["name"] = history->name;
          row["city"] = history->city;
          tell({.list = std::make_unique<AdminList>(AdminList::Rows{std::move(row)})});
        }));
  });
}

void flag_caller(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell) {
  const std::string number = request.text(Field::Number);
  const std::string key = telephone_key(number);
  if (key.empty()) return tell(no_number());
  if (auto why = why_not_noted(services, request); !why.empty()) {
    return tell(refused(std::move(why)));
  }
  services.context.memory.note({.key = key,
                                .number = number,
                                .flag = *find_caller_flag(request.text(Field::Flag)),
                                .reason = request.text_or(Field::Text, ""),
                                .until = request.text_or(Field::Until, ""),
                                .by = administrator});
  tell_done(services, tell);
}

void clear_caller(const AdminServices& services, const admin::Request& request,
                  const TellReply& tell) {
  const std::string number = request.text(Field::Number);
  const auto noted = services.context.memory.all().find(telephone_key(number));
  if (noted == services.context.memory.all().end()) {
    return tell(refused("Nothing is noted of the number " + in_quotes(number) + "."));
  }
  platform::FlaggedCaller cleared = noted->second;
  cleared.flag = CallerFlag::None;
  cleared.by = administrator;
  services.context.memory.note(std::move(cleared));
  tell_done(services, tell);
}

}  // namespace lineweir::server

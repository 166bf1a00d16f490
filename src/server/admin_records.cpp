#include "server/admin_records.h"

#include "adminlink/admin_columns.h"

namespace lineweir::server {
namespace {

using admin::Field;
using nlohmann::json;

// Read from the store at a time.
constexpr std::size_t piece = 200;

constexpr const char* not_read = "The store can't be read; the server's log tells why.";

json row_of_call(const platform::CallRecord& call) {
  json row = {{"id", call.id},
              {"group", call.group},
              {"line", call.line + 1},
              {"number", call.number},
              {"began", call.began.count()},
              {"answered", call.answered.count()},
              {"aired", call.aired.count()},
              {"ended", call.ended.count()},
              {"told_by", call.told_by}};
  for (std::size_t i = 0; i < call.told.size(); ++i) {
    row[std::string(admin::call_columns[admin::first_told_column + i].key)] = call.told[i];
  }
  json steps = json::array();
  for (const platform::CallStep& step : call.steps) {
    steps.push_back({{std::string(admin::key::at), step.at.count()},
                     {std::string(admin::key::user), step.user},
                     {std::string(admin::key::action), step.action}});
  }
  row[std::string(admin::key::steps)] = std::move(steps);
  return row;
}

json row_of_entry(const platform::AuditEntry& entry) {
  return {{"number", entry.number},       {"at", entry.event.at.count()},
          {"user", entry.event.user},     {"action", entry.event.action},
          {"detail", entry.event.detail}, {"hash", entry.hash}};
}

// The records as rows. `go_on` takes the last record and makes the filter go on behind it.
template <class Records, class Row, class GoOn>
std::optional<AdminList::Rows> rows_of(const std::optional<Records>& records, const Row& row,
                                       const GoOn& go_on) {
  if (!records) return std::nullopt;
  AdminList::Rows rows;
  for (const auto& record : *records) rows.push_back(row(record));
  if (!records->empty()) go_on(records->back());
  return rows;
}

// What is read then lacks nothing that the server knows.
void when_whole(const AdminServices& services, const TellReply& tell, std::function<void()> read) {
  when_kept_or_late(services, [tell, read = std::move(read)](bool kept) {
    if (kept) return read();
    tell(refused("The store can't be written now: what is newest isn't in it yet."));
  });
}

}  // namespace

void list_calls(const AdminServices& services, const admin::Request& request,
                const TellReply& tell) {
  const auto filter = std::make_shared<platform::CallFilter>();
  filter->group = static_cast<int>(request.number_or(Field::Group, 0));
  filter->since = platform::Moment{request.number_or(Field::Since, 0)};
  filter->limit = piece;
  const auto read = [&store = services.store, filter](AdminList::Told told) {
    store.calls(*filter, [filter, told = std::move(told)](const auto& calls) {
      told(rows_of(calls, row_of_call, [&](const platform::CallRecord& last) {
        filter->after = {.ended = last.ended, .id = last.id};
      }));
    });
  };
  when_whole(services, tell, [tell, read] { tell({.list = std::make_unique<AdminList>(read)}); });
}

void list_audit(const AdminServices& services, const TellReply& tell) {
  const auto filter = std::make_shared<platform::AuditFilter>();
  filter->limit = piece;
  const auto read = [&store = services.store, filter](AdminList::Told told) {
    store.audit(*filter, [filter, told = std::move(told)](const auto& entries) {
      told(rows_of(entries, row_of_entry,
                   [&](const platform::AuditEntry& last) { filter->after = last.number; }));
    });
  };
  when_whole(services, tell, [tell, read] { tell({.list = std::make_unique<AdminList>(read)}); });
}

void verify_audit(const AdminServices& services, const TellReply& tell) {
  when_whole(services, tell, [&store = services.store, tell] {
    store.verify_audit([tell](const std::optional<platform::AuditVerdict>& verdict) {
      if (!verdict) return tell(refused(not_read));
      tell({.answer = {{std::string(admin::key::entries), verdict->entries},
                       {std::string(admin::key::first_wrong), verdict->first_wrong},
                       {std::string(admin::key::last_hash), verdict->last_hash}}});
    });
  });
}

// A store that was deleted while it is open can still be copied, so that nothing is waited for that
// may never come.
void back_up(const AdminServices& services, const admin::Request& request, const TellReply& tell) {
  const std::string file = request.text(Field::File);
  when_kept_or_late(services, [&services, file, tell](bool kept) {
    services.store.backup(
        file, while_there(services, [&services, file, tell, kept](const std::string& failure) {
          if (!failure.empty()) return tell(refused(failure));
          services.context.audit.note(administrator, "backup made", file);
          if (kept) return tell_done(services, tell);
          tell(refused("The backup was made; what the store can't take now isn't in it."));
        }));
  });
}

void restore_backup(const AdminServices& services, const admin::Request& request,
                    const TellReply& tell) {
  const std::string file = request.text(Field::File);
  const auto restored = [&services, file, tell](bool read) {
    services.context.audit.note(administrator, "backup restored", file);
    if (read) return tell_done(services, tell);
    tell(refused("The backup is in the store, which can't be read now: start the server anew."));
  };
  when_kept(services, tell, [&services, file, tell, restored] {
    services.store.restore(
        file, while_there(services, [&services, tell, restored](const std::string& failure) {
          if (!failure.empty()) return tell(refused(failure));
          services.read_store_again(restored);
        }));
  });
}

}  // namespace lineweir::server

#include <limits>

#include "driver/state_table.h"
#include "forms/call_log_columns.h"
#include "state/guard.h"

namespace lineweir::driver {
namespace {

void append_ports(std::vector<StateName>& names) {
  const auto append = [&names](const char* open, const char* number, auto port) {
    names.push_back({open,
                     [=](Session& session, const Indices&) -> Json {
                       return port(session.console()).is_open();
                     },
                     [=](Session& session, const Indices&, const Json& value) {
                       platform::SerialPort& comm = port(session.console());
                       if (!truth_of(value)) return comm.close();
                       if (!comm.is_open()) comm.open();
                     }});
    names.push_back({number,
                     [=](Session& session, const Indices&) -> Json {
                       return port(session.console()).comm_port();
                     },
                     [=](Session& session, const Indices&, const Json& value) {
                       port(session.console()).set_comm_port(number_of(value));
                     }});
  };
  append("Comm1.PortOpen", "Comm1.CommPort",
         [](Console& c) -> platform::SerialPort& { return c.services.comm1; });
  append("Comm2.PortOpen", "Comm2.CommPort",
         [](Console& c) -> platform::SerialPort& { return c.services.comm2; });
}

// The rows that the chosen call log holds; none where it can't be opened. A database's text is
// UTF-8.
std::vector<std::vector<std::string>> logged_rows(Session& session) {
  Console& console = session.console();
  std::vector<std::vector<std::string>> rows;
  attempt(
      [&] {
        const auto database = console.services.databases.open(console.Lineweir.Data1.database_name);
        const auto recordset = database->open_recordset(std::string(call_log_table));
        platform::RowScan all{false, std::nullopt, std::numeric_limits<int>::max(), {}};
        for (int i = 0; i < static_cast<int>(recordset->fields().size()); ++i) {
          all.columns.push_back(i);
        }
        recordset->scan(all, [&](platform::RowId, auto values) {
          auto& row = rows.emplace_back();
          for (const std::string_view text : values)
            row.push_back(console.services.letters.from_utf8(text));
        });
      },
      [](const Failure&) {});
  return rows;
}

void append_logged_rows(std::vector<StateName>& names) {
  names.push_back(
      {"Data1.Recordset.Count",
       [](Session& session, const Indices&) -> Json { return logged_rows(session).size(); },
       nullptr});
  names.push_back({"Data1.Recordset()",
                   [](Session& session, const Indices& indices) {
                     const auto rows = logged_rows(session);
                     if (indices.size() != 1) throw NotUnderstood("one index is wanted");
                     return texts_value(at(rows, indices[0]));
                   },
                   nullptr});
}

}  // namespace

void append_service_states(std::vector<StateName>& names) {
  append_ports(names);
  append_logged_rows(names);
}

}  // namespace lineweir::driver

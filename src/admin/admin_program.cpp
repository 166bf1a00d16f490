#include "admin/admin_program.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "admin/admin_socket.h"
#include "admin/command_line.h"
#include "admin/migration.h"
#include "admin/password_entry.h"
#include "admin/report.h"
#include "admin/table.h"
#include "admin/trouble.h"
#include "adminlink/admin_columns.h"
#include "letters/utf8.h"

namespace lineweir::admin {
namespace {

using Json = nlohmann::json;

constexpr std::chrono::seconds usual_patience{60};
constexpr std::chrono::seconds long_patience{3600};

Moment now() {
  return std::chrono::duration_cast<Moment>(std::chrono::system_clock::now().time_since_epoch());
}

void take_password(Order& order) {
  if (!order.needs_password()) return;
  std::string password = order.password_from_input ? read_password_line()
                                                   : ask_password(order.request.text(Field::Name));
  if (!is_utf8(password)) throw Trouble("The password isn't UTF-8.");
  order.request.values[Field::Password] = std::move(password);
}

// The server's answer to a request, which it didn't refuse.
Json answer_to(AdminSocket& socket, const Request& request) {
  const bool is_long = row_of(request.command).is_long;
  const std::string line = socket.ask(line_of(request), is_long ? long_patience : usual_patience);
  Json answer = Json::parse(line);
  if (answer.at(key::ok).get<bool>()) {
    answer.erase(std::string(key::ok));
    return answer;
  }
  throw Trouble(answer.at(key::error).get<std::string>());
}

void report_list(AdminSocket& socket, const Order& order, std::ostream& out) {
  const ReportForm form = order.json  ? ReportForm::Json
                          : order.csv ? ReportForm::Csv
                                      : ReportForm::Table;
  // Nothing is printed of a list that is refused.
  Json answer = answer_to(socket, order.request);
  ListReport report(out, order.request.command, form);
  report.add(answer.at(key::rows).get_ref<const Json::array_t&>());
  while (answer.at(key::more).get<bool>()) {
    answer = answer_to(socket, {.command = Command::More});
    report.add(answer.at(key::rows).get_ref<const Json::array_t&>());
  }
  report.finish();
}

void carry_out_at_server(Order order, std::ostream& out) {
  take_password(order);
  AdminSocket socket(order.socket);
  if (!columns_of(order.request.command).empty()) {
    report_list(socket, order, out);
  } else {
    report_answer(out, order.request.command, answer_to(socket, order.request), order.json);
  }
}

void carry_out(Order order, std::ostream& out) {
  if (order.migration) {
    migrate(*order.migration, order.json, out);
  } else {
    carry_out_at_server(std::move(order), out);
  }
  out.flush();
  if (!out) throw Trouble("The output can't be written.");
}

int fail(std::ostream& errors, std::string_view why) {
  // One line, whatever the server or the system says.
  errors << "lineweir-admin: " << shown_text(why) << std::endl;
  return 1;
}

}  // namespace

int run(const std::vector<std::string>& words, std::ostream& out, std::ostream& errors) {
  try {
    const auto read = read_command_line(words, now());
    if (const auto* help = std::get_if<Help>(&read)) {
      out << help->text;
    } else {
      carry_out(std::get<Order>(read), out);
    }
    return 0;
  } catch (const Json::exception&) {
    return fail(errors, "What answers is no server of this tool.");
  } catch (const std::exception& error) {
    return fail(errors, error.what());
  }
}

}  // namespace lineweir::admin

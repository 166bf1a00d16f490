#include "simulation/seat.h"

#include "base/text.h"
#include "forms/call_log_columns.h"
#include "platform/services_with.h"
#include "state/settings_record.h"
#include "wire/password_scramble.h"

namespace lineweir::simulation {
namespace {

constexpr const char* log_file = "CALLS.LWL";
constexpr std::string_view user_column_title = "User";
constexpr int first_process_number = 100;

}  // namespace

Seat::Seat(platform::VirtualEventLoop& loop, Network& network, Transcript& transcript, int number,
           SeatLink link, std::uint64_t seed, SeatIdentity identity)
    : transcript_(transcript),
      name_("seat " + std::to_string(number)),
      number_(number),
      link_(link),
      identity_(std::move(identity)),
      workstation_(loop),
      chance_(seed),
      socket_(network, name_) {
  workstation_.files.replace(std::string(settings_file_name), first_settings());
  workstation_.databases.create(log_file)->create_table(
      std::string(call_log_table), new_log_columns(std::string(user_column_title)));
}

void Seat::start(std::string_view command_line) {
  note("starts");
  workstation_.restart();
  socket_.restart();
  console_.emplace(services());
  console_->trace.on_line = [this](const std::string& line) {
    if (line.find(" Error - ") == std::string::npos) return;
    note(line);
    failures_.push_back(line);
  };
  console_->messages.on_shown = [this](const std::string& text) {
    note("message \"" + text + '"');
  };
  workstation_.loop.run([&] { console_->startup.Main(std::string(command_line)); });
  started_ = true;
}

void Seat::lose_power() {
  note("loses its power");
  remove_console();
}

bool Seat::take_away_ended() {
  if (!running() || !workstation_.ended) return false;
  note("has ended");
  remove_console();
  return true;
}

std::map<std::string, int> Seat::logged() const {
  std::map<std::string, int> times;
  for (const auto& row : workstation_.databases.rows(log_file, call_log_table)) {
    const auto& columns =
        workstation_.databases.find(log_file)->tables.at(std::string(call_log_table)).columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i].name == "Caller Name") ++times[std::string(trimmed(row[i]))];
    }
  }
  return times;
}

platform::Services Seat::services() {
  return platform::services_with(
      workstation_.services(),
      {.random = &chance_, .winsock1 = &socket_, .process_number = first_process_number + number_});
}

std::string Seat::first_settings() const {
  SettingsRecord record;
  const bool serial = link_ == SeatLink::SerialBox;
  record.CommPort = serial ? 1 : connection_socket;
  record.PortState = serial;
  record.DatabasePath = log_file;
  // Who has none goes by the user's.
  if (identity_.user.empty()) record.OperatorName = "Operator " + std::to_string(number_);
  record.LogFieldOn.fill(true);
  record.GroupNumber = identity_.group;
  record.UserName = identity_.user;
  record.UserPassword = pass_encode(identity_.password, 0).value_or("");
  record.Warning1 = 30;
  record.Warning2 = 10;
  record.ColumnOrder.fill(column_not_listed);
  record.ModeCode = number_ % 2 == 0 ? 2 : 1;
  record.MessageFontName = "Sans";
  record.MessageFontSize = 8;
  record.ServerHost = identity_.servers;
  record.ServerPort = server_port;
  record.MitelPhoneChoice = 1;
  record.WindowHeight = 6970;
  record.WindowWidth = 9420;
  return encode_settings(record);
}

void Seat::remove_console() {
  started_ = false;
  console_.reset();
  workstation_.restart();
  socket_.restart();
}

}  // namespace lineweir::simulation

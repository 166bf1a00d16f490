#pragma once

#include <stdexcept>
#include <string>

namespace lineweir {

// The one way in which anything below a handler fails: a number that a handler can tell apart and
// a description, in UTF-8, for the trace. Numbers below 1000 are the language's, 3000s the database
// engine's, 8000s the serial port's and 40000s the socket's.
class Failure : public std::runtime_error {
 public:
  Failure(int number, const std::string& description)
      : std::runtime_error(description), number_(number) {}

  int number() const { return number_; }

 private:
  int number_;
};

namespace failure_number {
inline constexpr int invalid_argument = 5;
inline constexpr int overflow = 6;
inline constexpr int out_of_range = 9;
inline constexpr int type_mismatch = 13;
inline constexpr int device_unavailable = 68;
inline constexpr int permission_denied = 70;
inline constexpr int file_access = 75;
inline constexpr int path_not_found = 76;
inline constexpr int object_not_set = 91;
inline constexpr int no_such_element = 340;
inline constexpr int element_already_loaded = 360;
inline constexpr int no_such_class = 429;
inline constexpr int no_such_member = 438;
inline constexpr int no_answer = 462;
inline constexpr int no_row_begun = 3020;
inline constexpr int no_such_row = 3021;
inline constexpr int database_not_found = 3024;
inline constexpr int disk_full = 3026;
inline constexpr int database_read_only = 3027;
inline constexpr int database_io = 3043;
inline constexpr int database_damaged = 3049;
inline constexpr int no_such_table = 3078;
inline constexpr int field_name_taken = 3191;
inline constexpr int database_exists = 3204;
inline constexpr int database_in_use = 3260;
inline constexpr int no_such_field = 3265;
inline constexpr int not_a_database = 3343;
inline constexpr int older_database_kind = 3344;
inline constexpr int bad_port_number = 8002;
inline constexpr int port_already_open = 8005;
inline constexpr int bad_port_identifier = 8006;
inline constexpr int port_hardware_missing = 8010;
inline constexpr int port_settings_refused = 8011;
inline constexpr int port_not_open = 8012;
inline constexpr int port_device_not_open = 8013;
inline constexpr int dialog_cancelled = 32755;
inline constexpr int socket_wrong_state = 40006;
}  // namespace failure_number

}  // namespace lineweir

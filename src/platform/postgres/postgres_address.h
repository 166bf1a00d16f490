#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::platform {

// One of the places at which a database may be.
struct PostgresHost {
  // A name, an address, or the folder of a socket.
  std::string name;
  // Of the network; empty where the name is a folder, or must still be looked up.
  std::string address;
  std::string port;

  friend bool operator==(const PostgresHost&, const PostgresHost&) = default;
};

// Where a database is and who asks it, as a URL tells that:
//
//   postgresql://lineweir@db.example/studio
//   postgresql:///studio                       by the socket of this machine
//   postgresql://lineweir@one,two/studio       whichever of these takes writes
//
// It may hold a password, which nothing here tells but options().
class PostgresAddress {
 public:
  // What a URL has to be, for people.
  static constexpr std::string_view form =
      "\"postgresql://user@host/database\", with %40 for \"@\" and the like in a password";

  // Whether somebody means a database by that, right or wrong.
  static bool is_meant(std::string_view text);
  // Nothing where it is no such URL. Why is not told, since the text may hold a password.
  static std::optional<PostgresAddress> read(const std::string& url);

  // For sentences: "the database 'studio' on 'db.example'".
  const std::string& shown() const { return shown_; }
  // Who asks; empty where the URL doesn't tell.
  std::string user() const;
  const std::vector<PostgresHost>& hosts() const { return hosts_; }
  // All that libpq is told but the hosts.
  const std::map<std::string, std::string>& options() const { return options_; }

 private:
  PostgresAddress() = default;

  std::string shown_;
  std::vector<PostgresHost> hosts_;
  std::map<std::string, std::string> options_;
};

}  // namespace lineweir::platform

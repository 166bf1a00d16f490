#pragma once

#include <iosfwd>
#include <string>

namespace lineweir::admin {

// Two stores, each as the server's configuration names one: "sqlite:FILE" or a database's URL.
struct Migration {
  std::string from;
  std::string to;
};

// Moves all that one store holds into the other, which is empty, and tells what it was. No server
// works on them meanwhile. Where it can't be done Trouble or a Failure is thrown, and the second
// store is as empty as it was.
void migrate(const Migration& migration, bool as_json, std::ostream& out);

}  // namespace lineweir::admin

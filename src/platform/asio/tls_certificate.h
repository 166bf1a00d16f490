#pragma once

#include <string>
#include <vector>

namespace lineweir::platform {

// What a console may know this machine by: names and addresses.
struct MachineNames {
  std::vector<std::string> names;
  std::vector<std::string> addresses;
};

MachineNames names_of_this_machine();

// Makes a key (EC P-256, readable for its owner alone) and a certificate for it that is signed by
// itself and holds for 30 years. Files of these names are replaced. Throws std::runtime_error.
void make_certificate(const std::string& certificate_file, const std::string& key_file,
                      const MachineNames& machine);

}  // namespace lineweir::platform

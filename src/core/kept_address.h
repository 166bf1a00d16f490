#pragma once

#include <string>
#include <string_view>

namespace lineweir {

struct LoginState;
struct SettingsRecord;

// The settings' record has room for one server of 20 characters. There stands the first one; the
// whole address, where it says more, stands in the text of further settings.

// Puts the first server into the record.
void keep_first_server(const LoginState& login, SettingsRecord& record);

// The further settings with the whole address where the record can't hold it, and without one
// otherwise.
std::string with_whole_address(const LoginState& login, std::string_view further);

// Puts the whole address into the place of the first server, where there is one that begins with
// that server: a record that names another one was changed since, and holds.
void take_whole_address(std::string_view further, SettingsRecord& record);

}  // namespace lineweir

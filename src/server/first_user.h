#pragma once

#include <string>
#include <string_view>

#include "platform/random_numbers.h"
#include "platform/store_records.h"

namespace lineweir::server {

// The user of a new store.
inline constexpr std::string_view first_user_name = "engineer";

// An engineer in every group.
platform::Account first_account(const std::string& password_hash);

// Letters and digits that nobody takes for one another, as many as a console's field takes.
std::string random_password(platform::RandomNumbers& random);

}  // namespace lineweir::server

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir::server {

// What new users may do, by their work.
enum class RightsTemplate { Engineer, Host, Screener };

// "engineer", "host" or "screener".
std::optional<RightsTemplate> find_rights_template(std::string_view name);

// As they go over the wire.
std::string rights_of(RightsTemplate work);

}  // namespace lineweir::server

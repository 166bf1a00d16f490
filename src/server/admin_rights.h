#pragma once

#include <string>
#include <variant>
#include <vector>

#include "adminlink/admin_request.h"
#include "server/admin_reply.h"

namespace lineweir::server {

// The rights with the changes made, one behind the other: "+" or "-" and the name of a right; "+"
// and the name of a template for all that it allows and no more; "-all" for a group that is closed
// to the user. Or why that can't be, as a sentence. Rights that are no_rights are none.
struct ChangedRights {
  std::string rights = {};
  std::string refusal = {};
};
ChangedRights changed_rights(std::string rights, const std::vector<std::string>& changes);

// Shows the rights of a user in a group, as they are behind the changes that the request may hold.
void show_or_change_rights(const AdminServices& services, const admin::Request& request,
                           const TellReply& tell);

}  // namespace lineweir::server

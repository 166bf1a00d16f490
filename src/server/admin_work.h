#pragma once

#include "adminlink/admin_request.h"
#include "server/admin_reply.h"

namespace lineweir::server {

// Does what an administrator's tool asks for; "more" is not among it. What is told may come behind
// the end of the one who asked, who looks after that.
void carry_out(const AdminServices& services, const admin::Request& request, const TellReply& tell);

}  // namespace lineweir::server

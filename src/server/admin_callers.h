#pragma once

#include "adminlink/admin_request.h"
#include "server/admin_reply.h"

// What an administrator does with what the station remembers of callers. Each tells its reply once.
namespace lineweir::server {

// Of whom something is noted.
void list_callers(const AdminServices& services, const TellReply& tell);
// What is noted of a number, and what its calls come to.
void show_caller(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell);
void flag_caller(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell);
void clear_caller(const AdminServices& services, const admin::Request& request,
                  const TellReply& tell);

}  // namespace lineweir::server

#pragma once

#include "adminlink/admin_request.h"
#include "server/admin_reply.h"

// What an administrator sees and does of the groups and their seats. Each tells its reply once.
namespace lineweir::server {

void list_seats(const AdminServices& services, const TellReply& tell);
void list_lines(const AdminServices& services, const admin::Request& request,
                const TellReply& tell);
// A caller of a simulated exchange arrives, or leaves.
void make_call(const AdminServices& services, const admin::Request& request, const TellReply& tell);
void end_call(const AdminServices& services, const admin::Request& request, const TellReply& tell);
// The texts of the show's times; those that the request doesn't hold stay.
void set_event(const AdminServices& services, const admin::Request& request, const TellReply& tell);
void tell_everybody(const AdminServices& services, const admin::Request& request,
                    const TellReply& tell);

}  // namespace lineweir::server

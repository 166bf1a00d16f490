#pragma once

#include "adminlink/admin_request.h"
#include "server/admin_reply.h"

// What an administrator does with what is kept. Each tells its reply once.
namespace lineweir::server {

void list_calls(const AdminServices& services, const admin::Request& request,
                const TellReply& tell);
void list_audit(const AdminServices& services, const TellReply& tell);
void verify_audit(const AdminServices& services, const TellReply& tell);
void back_up(const AdminServices& services, const admin::Request& request, const TellReply& tell);
void restore_backup(const AdminServices& services, const admin::Request& request,
                    const TellReply& tell);

}  // namespace lineweir::server

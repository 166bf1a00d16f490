#pragma once

#include <string>

#include "adminlink/admin_request.h"
#include "server/admin_reply.h"

// What an administrator does with users. Each tells its reply once.
namespace lineweir::server {

void add_user(const AdminServices& services, const admin::Request& request, const TellReply& tell);
void list_users(const AdminServices& services, const TellReply& tell);
void change_password(const AdminServices& services, const admin::Request& request,
                     const TellReply& tell);
void lock_user(const AdminServices& services, const admin::Request& request, const TellReply& tell);
// Also one who was locked by wrong passwords.
void unlock_user(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell);
void remove_user(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell);

void show_profile(const AdminServices& services, const admin::Request& request,
                  const TellReply& tell);
void reset_profile(const AdminServices& services, const admin::Request& request,
                   const TellReply& tell);

}  // namespace lineweir::server

#pragma once

#include <functional>
#include <memory>

#include "platform/connection.h"
#include "server/admin_services.h"

namespace lineweir::server {

// An administrator's tool on the server's own socket.
class AdminSession {
 public:
  AdminSession(std::unique_ptr<platform::Connection> connection, AdminServices services,
               std::function<void(AdminSession&)> on_over);
  ~AdminSession();

 private:
  std::unique_ptr<platform::Connection> connection_;
  AdminServices services_;
  std::function<void(AdminSession&)> on_over_;
};

}  // namespace lineweir::server

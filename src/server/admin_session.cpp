#include "server/admin_session.h"

namespace lineweir::server {

AdminSession::AdminSession(std::unique_ptr<platform::Connection> connection, AdminServices services,
                           std::function<void(AdminSession&)> on_over)
    : connection_(std::move(connection)),
      services_(std::move(services)),
      on_over_(std::move(on_over)) {
  connection_->on_end = [this](platform::ConnectionEnd) { on_over_(*this); };
}

AdminSession::~AdminSession() = default;

}  // namespace lineweir::server

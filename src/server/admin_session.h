#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/connection.h"
#include "server/admin_services.h"

namespace lineweir::server {

class AdminList;
struct AdminReply;

// An administrator's tool on the server's own socket. One request is worked on at a time; the next
// line waits for its answer.
class AdminSession {
 public:
  // It is to be destroyed once it is over, from the loop.
  AdminSession(std::unique_ptr<platform::Connection> connection, const AdminServices& services,
               std::function<void(AdminSession&)> on_over);
  ~AdminSession();
  AdminSession(const AdminSession&) = delete;
  AdminSession& operator=(const AdminSession&) = delete;

 private:
  void receive(std::string_view bytes);
  void read_lines();
  void handle(std::string_view line);
  void answer(AdminReply reply);
  void answer_page();
  void send_line(std::string line);
  void finish();

  std::unique_ptr<platform::Connection> connection_;
  const AdminServices& services_;
  std::function<void(AdminSession&)> on_over_;
  std::string received_;
  bool working_ = false;
  bool reading_ = false;
  bool over_ = false;
  // What the tool may ask for more of.
  std::unique_ptr<AdminList> list_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server

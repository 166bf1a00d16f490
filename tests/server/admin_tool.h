#pragma once

#include <nlohmann/json.hpp>

#include "adminlink/admin_request.h"
#include "server/server_room.h"

namespace lineweir::server {

// An administrator's tool as far as it is lines.
class AdminTool {
 public:
  explicit AdminTool(ServerRoom& room);
  ~AdminTool();
  AdminTool(const AdminTool&) = delete;
  AdminTool& operator=(const AdminTool&) = delete;

  void send_bytes(const std::string& bytes);
  // The answers that have come since the last call.
  std::vector<nlohmann::json> take();

  // Asks and waits for the answer; null where none comes within ten seconds.
  nlohmann::json ask(const admin::Request& request);
  // The reason why it is refused; empty where it is done.
  std::string refusal(const admin::Request& request);
  // All rows of a list.
  std::vector<nlohmann::json> rows(const admin::Request& request);

  bool is_open() const { return !line_->ended_by_server; }
  // The end came behind everything that the server had sent.
  bool heard_to_the_end() const { return !is_open() && line_->sent_to_the_end; }
  void hang_up();

 private:
  ServerRoom& room_;
  std::shared_ptr<LineState> line_;
};

// A list of so many takes several answers.
inline constexpr int calls_of_many_pages = 450;

// Puts them into the store: from number 1 on, each a moment later than the one before, ended 1000
// moments behind its beginning, of the groups 2 and 1 by turns.
void store_calls_of_many_pages(ServerRoom& room);

}  // namespace lineweir::server

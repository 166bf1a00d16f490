#include "server/admin_session.h"

#include <utility>

#include "adminlink/admin_columns.h"
#include "server/admin_work.h"

namespace lineweir::server {
namespace {

using nlohmann::json;

std::string refusal_line(const std::string& sentence) {
  return dumped({{std::string(admin::key::ok), false}, {std::string(admin::key::error), sentence}});
}

}  // namespace

AdminSession::AdminSession(std::unique_ptr<platform::Connection> connection,
                           const AdminServices& services,
                           std::function<void(AdminSession&)> on_over)
    : connection_(std::move(connection)), services_(services), on_over_(std::move(on_over)) {
  connection_->on_bytes = [this](std::string_view bytes) { receive(bytes); };
  connection_->on_end = [this](platform::ConnectionEnd) { finish(); };
}

AdminSession::~AdminSession() = default;

void AdminSession::receive(std::string_view bytes) {
  if (over_) return;
  received_ += bytes;
  read_lines();
  if (over_ || received_.size() <= admin::longest_request) return;
  send_line(refusal_line("The request is too long."));
  connection_->close_when_sent();
  finish();
}

void AdminSession::read_lines() {
  // An answer may come at once; it doesn't nest.
  if (std::exchange(reading_, true)) return;
  while (!working_ && !over_) {
    const auto end = received_.find('\n');
    if (end == std::string::npos) break;
    const std::string line = received_.substr(0, end);
    received_.erase(0, end + 1);
    handle(line);
  }
  reading_ = false;
}

void AdminSession::handle(std::string_view line) {
  auto read = admin::read_request(line);
  if (const auto* sentence = std::get_if<std::string>(&read)) {
    return send_line(refusal_line(*sentence));
  }
  if (!services_.is_serving()) {
    return send_line(refusal_line(services_.ends_in()
                                      ? "The server is ending."
                                      : "The server waits for its store, which can't be read."));
  }
  const auto& request = std::get<admin::Request>(read);
  working_ = true;
  if (request.command == admin::Command::More && list_) return answer_page();
  list_.reset();
  carry_out(services_, request, [this, alive = std::weak_ptr(alive_)](AdminReply reply) {
    if (alive.lock() && !over_) answer(std::move(reply));
  });
}

void AdminSession::answer(AdminReply reply) {
  if (reply.list) {
    list_ = std::move(reply.list);
    return answer_page();
  }
  working_ = false;
  if (!reply.refusal.empty()) {
    send_line(refusal_line(reply.refusal));
  } else {
    reply.answer[std::string(admin::key::ok)] = true;
    send_line(dumped(reply.answer));
  }
  if (reply.last) {
    connection_->close_when_sent();
    finish();
    reply.last();
    return;
  }
  read_lines();
}

void AdminSession::answer_page() {
  list_->next_page([this](std::optional<std::string> page) {
    working_ = false;
    send_line(page ? std::move(*page)
                   : refusal_line("The store can't be read; the server's log tells why."));
    read_lines();
  });
}

void AdminSession::send_line(std::string line) { connection_->send(line += '\n'); }

void AdminSession::finish() {
  if (std::exchange(over_, true)) return;
  list_.reset();
  on_over_(*this);
}

}  // namespace lineweir::server

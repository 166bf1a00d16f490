#include "server/admin_tool.h"

#include "adminlink/admin_columns.h"

namespace lineweir::server {

using nlohmann::json;

AdminTool::AdminTool(ServerRoom& room)
    : room_(room), line_(std::make_shared<LineState>(room.loop)) {
  room_.server->accept_admin(std::make_unique<ServerEnd>(line_, "local"));
}

AdminTool::~AdminTool() { hang_up(); }

void AdminTool::send_bytes(const std::string& bytes) {
  room_.loop.schedule(platform::Milliseconds{0}, [line = line_, bytes] {
    if (line->server_end != nullptr) line->server_end->on_bytes(bytes);
  });
  room_.wait(platform::Milliseconds{1});
}

std::vector<json> AdminTool::take() {
  std::vector<json> answers;
  const std::string text = std::exchange(line_->to_console, {});
  std::size_t begin = 0;
  for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
    answers.push_back(json::parse(text.substr(begin, end - begin)));
    begin = end + 1;
  }
  return answers;
}

json AdminTool::ask(const admin::Request& request) {
  send_bytes(admin::line_of(request) + '\n');
  for (int i = 0; i < 100 && line_->to_console.empty(); ++i) {
    room_.wait(std::chrono::milliseconds(100));
  }
  const auto answers = take();
  return answers.size() == 1 ? answers.front() : json();
}

std::string AdminTool::refusal(const admin::Request& request) {
  const json answer = ask(request);
  if (answer.is_null()) return "no answer";
  return answer.at("ok").get<bool>() ? "" : answer.at("error").get<std::string>();
}

std::vector<json> AdminTool::rows(const admin::Request& request) {
  std::vector<json> rows;
  json answer = ask(request);
  for (;;) {
    const auto page = answer.at("rows");
    rows.insert(rows.end(), page.begin(), page.end());
    if (!answer.at("more").get<bool>()) return rows;
    answer = ask({.command = admin::Command::More});
  }
}

void AdminTool::hang_up() {
  if (line_->server_end == nullptr) return;
  line_->server_end->on_end(platform::ConnectionEnd::Gone);
  room_.wait(platform::Milliseconds{1});
}

void store_calls_of_many_pages(ServerRoom& room) {
  std::vector<platform::StoreChange> calls;
  for (int i = 1; i <= calls_of_many_pages; ++i) {
    platform::CallRecord call;
    call.id = i;
    call.group = i % 2 + 1;
    call.began = platform::Moment{i};
    call.ended = platform::Moment{1000 + i};
    call.told.fill(std::string(90, 'x'));
    calls.emplace_back(call);
  }
  room.store.write(calls, [](bool) {});
}

}  // namespace lineweir::server

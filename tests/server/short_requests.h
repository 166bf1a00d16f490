#pragma once

#include <string>
#include <vector>

#include "server/admin_tool.h"

// What administrators ask, in short, and what they look at behind it.
namespace lineweir::test {

using admin::Command;
using admin::Field;
using admin::Request;
using nlohmann::json;
using server::AdminTool;
using server::ServerRoom;

using Texts = std::vector<std::string>;
using Numbers = std::vector<std::int64_t>;

inline Request of_user(Command command, const std::string& name) {
  return {command, {{Field::Name, name}}};
}

inline Request user_add(const std::string& name, const std::string& work = "host",
                        const std::string& password = "pass word") {
  return {Command::UserAdd,
          {{Field::Name, name}, {Field::Template, work}, {Field::Password, password}}};
}

inline Request new_password(const std::string& name, const std::string& password) {
  return {Command::UserPassword, {{Field::Name, name}, {Field::Password, password}}};
}

inline Request right(const std::string& name, std::int64_t group, const Texts& changes = {}) {
  Request request{Command::UserRight, {{Field::Name, name}, {Field::Group, group}}};
  if (!changes.empty()) request.values[Field::Changes] = changes;
  return request;
}

inline Request of_line(Command command, std::int64_t group, std::int64_t line) {
  return {command, {{Field::Group, group}, {Field::Line, line}}};
}

inline Request text(Command command, Field field, const std::string& value) {
  return {command, {{field, value}}};
}

inline json row_named(const std::vector<json>& rows, const std::string& name) {
  for (const json& row : rows) {
    if (row.at("name") == name) return row;
  }
  return {};
}

// What the audit tells of a tool's work, each as "what: of what".
inline Texts administrators_entries(AdminTool& tool) {
  Texts entries;
  for (const json& row : tool.rows({Command::AuditList})) {
    if (row.at("user") != "(admin)") continue;
    entries.push_back(row.at("action").get<std::string>() + ": " +
                      row.at("detail").get<std::string>());
  }
  return entries;
}

inline bool is_let_in(ServerRoom& room, const std::string& user, const std::string& password) {
  auto console = room.connect();
  console->log_in(user, password);
  return console->take_last(ServerCommand::SrvPasswordResult).AltInfo == 'T';
}

}  // namespace lineweir::test

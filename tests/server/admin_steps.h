#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "server/admin_tool.h"

namespace lineweir::server {

// Administrators' tools that ask a server whatever bytes tell: requests of all commands with right
// and wrong fields, lines that are none, while the store fails and the server begins again. Every
// line must be answered once, in the form that all answers have, and what was said to be done must
// be in the store.
class AdminSteps {
 public:
  explicit AdminSteps(std::span<const std::uint8_t> bytes);
  ~AdminSteps();

  // False as soon as something is wrong; `fault` tells what.
  bool play();
  const std::string& fault() const { return fault_; }

 private:
  std::uint8_t next();
  int below(int count) { return next() % count; }
  std::string text();
  admin::Value value(const admin::FieldRow& field);
  admin::Request request();
  std::string any_line();

  void take_step();
  void ask();
  void begin_again();
  void look_at(const nlohmann::json& answer, admin::Command command);
  void look_at_store();
  void require(bool holds, const std::string& what);

  std::span<const std::uint8_t> bytes_;
  ServerRoom room_;
  std::unique_ptr<FrameConsole> seat_;
  std::unique_ptr<AdminTool> tool_;
  bool store_fails_ = false;
  std::string fault_;
};

}  // namespace lineweir::server

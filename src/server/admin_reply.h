#pragma once

#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "server/admin_list.h"
#include "server/admin_services.h"

namespace lineweir::server {

// Who has done what an administrator's tool asked for, in the audit.
inline constexpr const char* administrator = "(admin)";

// What came of a request.
struct AdminReply {
  // Why it wasn't done, as a sentence; empty where it was.
  std::string refusal = {};
  // What is told besides that it was done.
  nlohmann::json::object_t answer = {};
  // In place of that.
  std::unique_ptr<AdminList> list = nullptr;
  // Done when the answer is on its way. The connection ends then.
  std::function<void()> last = {};
};

// Called once, at once or from the loop.
using TellReply = std::function<void(AdminReply reply)>;

inline AdminReply refused(std::string sentence) { return {.refusal = std::move(sentence)}; }
inline AdminReply no_such_group(std::int64_t group) {
  return refused("There is no group " + std::to_string(group) + " here.");
}

// Runs `next` when all that was changed so far is in the store, or some seconds later with false.
void when_kept_or_late(const AdminServices& services, std::function<void(bool kept)> next);

// Runs `next` when all that was changed so far is in the store; where that isn't so within some
// seconds a refusal is told instead that says so.
void when_kept(const AdminServices& services, const TellReply& tell, std::function<void()> next);

// Tells that something was done, when it is kept.
void tell_done(const AdminServices& services, const TellReply& tell);

}  // namespace lineweir::server

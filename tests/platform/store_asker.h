#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/store.h"

namespace lineweir {

// Asks a store and waits for what it tells.
class StoreDesk {
 public:
  virtual ~StoreDesk() = default;

  virtual platform::Store& store() = 0;
  virtual bool run_until(const std::function<bool()>& condition) = 0;
  // The same store in another server.
  virtual void begin_again() = 0;
  // A store that holds nothing.
  virtual void begin_empty() = 0;
  // The name of a file for a backup.
  virtual std::string file(const std::string& name) = 0;

  std::optional<platform::StoredState> load() {
    return told<std::optional<platform::StoredState>>(
        [this](auto done) { store().load(std::move(done)); });
  }
  bool write(std::vector<platform::StoreChange> changes) {
    return told<bool>([&](auto done) { store().write(std::move(changes), std::move(done)); });
  }
  std::optional<std::vector<platform::CallRecord>> calls(const platform::CallFilter& filter = {}) {
    return told<std::optional<std::vector<platform::CallRecord>>>(
        [&](auto done) { store().calls(filter, std::move(done)); });
  }
  std::optional<std::vector<platform::AuditEntry>> audit(const platform::AuditFilter& filter = {}) {
    return told<std::optional<std::vector<platform::AuditEntry>>>(
        [&](auto done) { store().audit(filter, std::move(done)); });
  }
  std::optional<platform::CallerHistory> history(const std::string& key) {
    return told<std::optional<platform::CallerHistory>>(
        [&](auto done) { store().caller_history(key, std::move(done)); });
  }
  std::optional<std::size_t> forget(platform::Moment before, platform::Store::Forgetting what,
                                    std::size_t limit = platform::no_limit) {
    return told<std::optional<std::size_t>>(
        [&](auto done) { store().forget(before, what, limit, std::move(done)); });
  }
  std::optional<platform::AuditVerdict> verify() {
    return told<std::optional<platform::AuditVerdict>>(
        [this](auto done) { store().verify_audit(std::move(done)); });
  }
  std::string backup(const std::string& name) {
    return told<std::string>([&](auto done) { store().backup(name, std::move(done)); });
  }
  std::string restore(const std::string& name) {
    return told<std::string>([&](auto done) { store().restore(name, std::move(done)); });
  }

 private:
  template <class Answer, class Ask>
  Answer told(const Ask& ask) {
    std::optional<Answer> answer;
    ask([&answer](Answer given) { answer.emplace(std::move(given)); });
    if (!run_until([&] { return answer.has_value(); })) throw std::runtime_error("no answer");
    return *answer;
  }
};

// Records with something in every field.
inline platform::Account full_account(const std::string& name) {
  return {.name = name,
          .password_hash = "$argon2id$of " + name,
          .rights = {{0, std::string("\1\2\0\4\5\6\7\x08\x09\x0a\x0b\x0c", 12)},
                     {7, std::string(12, '\xFE')}},
          .profile = std::string("1\3\0\xFF profile", 12),
          .locked = true,
          .last_seen = platform::Moment{1'700'000'000'123}};
}

inline platform::CallRecord full_call(std::int64_t id) {
  const platform::Moment began{1'700'000'000'000 + id * 60'000};
  platform::CallRecord call{.id = id,
                            .group = 2,
                            .line = 0,
                            .number = "0555 01",
                            .began = began,
                            .answered = began + platform::Moment{5'000},
                            .aired = began + platform::Moment{9'000},
                            .ended = began + platform::Moment{50'000},
                            .told_by = "Zoë",
                            .told = {},
                            .steps = {}};
  for (std::size_t i = 0; i < call.told.size(); ++i) call.told[i] = "field '" + std::to_string(i);
  call.steps = {{.at = began, .user = "", .action = "ring"},
                {.at = began + platform::Moment{5'000}, .user = "Zoë", .action = "answer"}};
  return call;
}

inline platform::FlaggedCaller full_flag(const std::string& key) {
  return {.key = key,
          .number = "+" + key,
          .flag = CallerFlag::Careful,
          .reason = "it's \"loud\"",
          .until = "2026-12-31",
          .by = "Zoë",
          .at = platform::Moment{1'700'000'000'321}};
}

inline platform::AuditEvent event(int number) {
  return {.id = "event-" + std::to_string(number),
          .at = platform::Moment{1'700'000'000'000 + number},
          .user = "Zoë",
          .action = "on air",
          .detail = "line " + std::to_string(number) + "'; DROP TABLE audit; --"};
}

}  // namespace lineweir

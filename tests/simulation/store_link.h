#pragma once

#include <memory>

#include "platform/scripted/scripted_lease.h"
#include "platform/scripted/scripted_store.h"
#include "simulation/server_cable.h"

namespace lineweir::simulation {

// The store as one process has it that leads in an epoch: behind a cable, and with writes that the
// store refuses once another one leads. What isn't answered in time is told to have failed, and the
// store does no more of it later.
class StoreLink final : public platform::Store {
 public:
  static constexpr Milliseconds answered_within{3000};

  // `loop` is the process's own, all outlive the link.
  StoreLink(platform::ScriptedStore& store, const platform::LeaseOffice& office,
            platform::EventLoop& loop, const Cable& cable, platform::Epoch epoch);
  StoreLink(const StoreLink&) = delete;
  StoreLink& operator=(const StoreLink&) = delete;

  void load(std::function<void(std::optional<platform::StoredState> state)> done) override;
  void write(std::vector<platform::StoreChange> changes,
             std::function<void(bool written)> done) override;
  void calls(const platform::CallFilter& filter,
             std::function<void(std::optional<std::vector<platform::CallRecord>>)> done) override;
  void audit(const platform::AuditFilter& filter,
             std::function<void(std::optional<std::vector<platform::AuditEntry>>)> done) override;
  void caller_history(const std::string& key,
                      std::function<void(std::optional<platform::CallerHistory>)> done) override;
  void forget(platform::Moment before, Forgetting what, std::size_t limit,
              std::function<void(std::optional<std::size_t>)> done) override;
  void verify_audit(std::function<void(std::optional<platform::AuditVerdict>)> done) override;
  void backup(const std::string& file, std::function<void(std::string failure)> done) override;
  void restore(const std::string& file, std::function<void(std::string failure)> done) override;
  std::size_t waiting() const override { return waiting_; }

 private:
  template <class Answer>
  void ask(std::function<void(std::function<void(Answer)>)> question,
           std::function<void(Answer)> done);

  platform::ScriptedStore& store_;
  const platform::LeaseOffice& office_;
  platform::EventLoop& loop_;
  const Cable& cable_;
  platform::Epoch epoch_;
  std::size_t waiting_ = 0;
  // Writes of a session that has failed are not done behind its end.
  std::shared_ptr<int> session_ = std::make_shared<int>(0);
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::simulation
